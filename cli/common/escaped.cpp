#include "common/escaped.h"

#include <algorithm>
#include <cstdio>

namespace varnix::cli {

namespace {

std::string hexadecimal(unsigned value) {
  char text[16];
  std::snprintf(text, sizeof text, "\\x%02x", value);
  return text;
}

bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

/// The number of bytes in the character that begins the text; 0 if it is not UTF-8. Overlong
/// encodings are left to the terminal.
std::size_t lengthOfCharacter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  const std::size_t length = first < 0x80             ? 1
                             : (first & 0xE0) == 0xC0 ? 2
                             : (first & 0xF0) == 0xE0 ? 3
                             : (first & 0xF8) == 0xF0 ? 4
                                                      : 0;
  if (length > text.size()) return 0;
  const auto rest = text.substr(1, length == 0 ? 0 : length - 1);
  return std::all_of(rest.begin(), rest.end(), isContinuation) ? length : 0;
}

/// The control characters above 127 take two bytes.
bool isControl(std::string_view character) {
  const auto byte = static_cast<unsigned char>(character.back());
  if (character.size() == 1) return byte < ' ' || byte == 127;
  return character.size() == 2 && character[0] == '\xC2' && byte < 0xA0;
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t length = lengthOfCharacter(text);
    const auto character = text.substr(0, std::max<std::size_t>(length, 1));
    if (character == "\n") result += "\\n";
    else if (character == "\t") result += "\\t";
    else if (length == 0 || isControl(character))
      result += hexadecimal(static_cast<unsigned char>(character.back()));
    else result += character;
    text.remove_prefix(character.size());
  }
  return result;
}

}  // namespace varnix::cli
