#include "contract/table_file.h"

#include <algorithm>
#include <sstream>

#include "macho/error.h"
#include "macho/files.h"

namespace varnix::device {

std::vector<Row> readRows(const std::string& path, std::size_t fields) {
  std::vector<Row> rows;
  std::istringstream lines(readTextFile(path));
  std::size_t number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    if (line.empty() || line[0] == '#') continue;
    Row row{number, {}};
    std::istringstream columns(line);
    for (std::string field; std::getline(columns, field, '\t');) row.fields.push_back(field);
    const bool isWhole = std::none_of(row.fields.begin(), row.fields.end(),
                                      [](const std::string& field) { return field.empty(); });
    if (row.fields.size() != fields || !isWhole)
      throw Error(path + ":" + std::to_string(number) + ": not " + std::to_string(fields) +
                  " fields, separated by tabs");
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace varnix::device
