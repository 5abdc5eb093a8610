#include "macho/version.h"

#include <cctype>

#include "macho/error.h"

namespace varnix::device {

uint32_t parseVersion(std::string_view text) {
  uint32_t parts[3] = {}, most[3] = {0xffff, 0xff, 0xff};
  size_t part = 0;
  bool hasDigit = false;
  for (const char c : text) {
    if (c == '.' && hasDigit && part < 2) {
      ++part;
      hasDigit = false;
    } else if (std::isdigit(static_cast<unsigned char>(c)) != 0) {
      parts[part] = parts[part] * 10 + static_cast<uint32_t>(c - '0');
      hasDigit = true;
      if (parts[part] > most[part]) throw Error("not a version: " + std::string(text));
    } else {
      throw Error("not a version: " + std::string(text));
    }
  }
  if (!hasDigit) throw Error("not a version: " + std::string(text));
  return parts[0] << 16 | parts[1] << 8 | parts[2];
}

std::string versionText(uint32_t version) {
  return std::to_string(version >> 16) + "." + std::to_string(version >> 8 & 0xff) + "." +
         std::to_string(version & 0xff);
}

}  // namespace varnix::device
