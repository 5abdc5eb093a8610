#include "common/class_names.h"

#include <set>

#include "common/errors.h"

namespace varnix::cli {

std::vector<std::string> classNames() {
  std::set<std::string> names;
  for (const auto& method : host::runtime::allMethods()) names.insert(method.className);
  return {names.begin(), names.end()};
}

Class classNamed(const char* name) {
  Class cls = objc_getClass(name);
  if (cls == nullptr) throw Failure("this process has no such class", name);
  return cls;
}

}  // namespace varnix::cli
