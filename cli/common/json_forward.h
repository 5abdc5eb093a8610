// JSON as the commands print it, for code that only passes it on: the full header takes the
// compiler two seconds a file.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace varnix::cli {

/// Keys stay in the order in which they were set.
using Json = nlohmann::ordered_json;
/// Keys are in alphabetical order.
using SortedJson = nlohmann::json;

/// One line, or indented. Bytes that are not UTF-8 are replaced.
std::string dump(const Json& value, int indent = -1);
std::string dump(const SortedJson& value, int indent = -1);

}  // namespace varnix::cli
