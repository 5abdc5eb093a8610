// JSON as the commands print it.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace varnix::cli {

/// Keys stay in the order in which they were set.
using Json = nlohmann::ordered_json;

/// One line, or indented. Bytes that are no UTF-8 are replaced.
template <class AnyJson>
std::string dump(const AnyJson& value, int indent = -1) {
  return value.dump(indent, ' ', false, AnyJson::error_handler_t::replace);
}

}  // namespace varnix::cli
