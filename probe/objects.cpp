#include "probe/objects.h"

namespace varnix::probe {

Strong<NSObject> make(Class cls) {
  return Strong<NSObject>::adopt(send<NSObject*>(send<NSObject*>(cls, "alloc"_sel), "init"_sel));
}

Strong<NSObject> make(const char* className) { return make(objc_getClass(className)); }

}  // namespace varnix::probe
