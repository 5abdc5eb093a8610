// Tab-separated files: one row per line, "#" begins a comment line.
#pragma once

#include <string>
#include <vector>

namespace varnix::device {

struct Row {
  std::size_t line;  ///< Counted from 1.
  std::vector<std::string> fields;
};

/// Throws Error, with path and line, for a row with another number of fields or an empty field.
std::vector<Row> readRows(const std::string& path, std::size_t fields);

}  // namespace varnix::device
