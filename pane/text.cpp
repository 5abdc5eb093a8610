#include "text.h"

#include "pages/VNXFrontPage.h"

namespace varnix::pane {

NSString* text(NSString* key) {
  constexpr NSString* kNone = nullptr;
  return send(NSBundle::bundleForClass(objc::classOf<VNXFrontPage>()), NSBundle::localizedString,
              key, kNone, "Varnix"_ns);
}

NSString* text(NSString* key, const char* name) {
  return text(NSString::stringWithFormat("%@.%@"_ns, key, NSString::stringWithUTF8String(name)));
}

}  // namespace varnix::pane
