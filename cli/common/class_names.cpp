#include "common/class_names.h"

#include <set>

#include "runtime/runtime.h"

namespace varnix::cli {

std::vector<std::string> classNames() {
  std::set<std::string> names;
  for (const auto& method : host::runtime::allMethods()) names.insert(method.className);
  return {names.begin(), names.end()};
}

}  // namespace varnix::cli
