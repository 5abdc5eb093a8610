// What a surface answers, as JSON.
#pragma once

#include <nlohmann/json.hpp>

#include "surfaces/surfaces.h"

namespace varnix::cli {

/// Keys stay in the order in which they were set.
using Json = nlohmann::ordered_json;

inline Json answerJson(const host::surfaces::Answer& answer) {
  if (const bool* truth = std::get_if<bool>(&answer)) return *truth;
  if (const auto* color = std::get_if<std::string>(&answer)) return *color;
  return nullptr;
}

/// "#rrggbbaa"; null for nil and for what is no colour.
inline Json colorJson(NSObject* color) { return answerJson(host::surfaces::colorAnswer(color)); }

/// One line, or indented. Bytes that are no UTF-8 are replaced.
inline std::string dump(const Json& value, int indent = -1) {
  return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace varnix::cli
