#include "rules/rule.h"

#include <algorithm>
#include <charconv>

namespace varnix::device {

std::string hex(uint64_t number) {
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
  return "0x" + std::string(digits, end);
}

std::string printable(std::string_view text) {
  std::string result(text);
  std::replace_if(result.begin(), result.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
  return result;
}

}  // namespace varnix::device
