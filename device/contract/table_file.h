// Tab-separated files: a row a line, "#" begins a comment line.
#pragma once

#include <string>
#include <vector>

namespace varnix::device {

struct Row {
  std::size_t line;  ///< Counted from 1.
  std::vector<std::string> fields;
};

/// Throws Error, with path and line, for a row that has not as many fields or an empty one.
std::vector<Row> readRows(const std::string& path, std::size_t fields);

}  // namespace varnix::device
