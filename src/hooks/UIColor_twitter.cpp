#include "hooks/UIColor_twitter.h"

#include "hooks/shared_manager.h"

namespace varnix::twitter {

UIColor* dyedColor(Class, SEL) { return dye(); }

}  // namespace varnix::twitter
