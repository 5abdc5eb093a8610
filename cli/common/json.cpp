#include "common/json.h"

namespace varnix::cli {

namespace {

template <class AnyJson>
std::string dumped(const AnyJson& value, int indent) {
  return value.dump(indent, ' ', false, AnyJson::error_handler_t::replace);
}

}  // namespace

std::string dump(const Json& value, int indent) { return dumped(value, indent); }

std::string dump(const SortedJson& value, int indent) { return dumped(value, indent); }

}  // namespace varnix::cli
