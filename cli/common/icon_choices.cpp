#include "common/icon_choices.h"

#include "common/errors.h"

namespace varnix::cli {

/// An identifier contains no equals sign, so the first one ends it.
std::map<std::string, std::string> iconsFrom(const std::vector<std::string>& choices) {
  std::map<std::string, std::string> icons;
  for (const std::string& choice : choices) {
    const std::size_t end = choice.find('=');
    if (end == choice.npos || end == 0 || end + 1 == choice.size()) {
      throw UsageError("not an identifier and a file, ID=FILE", choice);
    }
    icons[choice.substr(0, end)] = choice.substr(end + 1);
  }
  return icons;
}

}  // namespace varnix::cli
