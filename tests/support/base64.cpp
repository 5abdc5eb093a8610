#include "support/base64.h"

namespace test {

std::string base64(NSData* data) {
  static constexpr char kDigits[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const auto* bytes = static_cast<const unsigned char*>(send(data, NSData::bytes));
  std::string text;
  for (std::size_t i = 0; i < send(data, NSData::length); i += 3) {
    unsigned group = 0;
    for (std::size_t j = 0; j < 3; ++j)
      group = group << 8 | (i + j < send(data, NSData::length) ? bytes[i + j] : 0U);
    for (std::size_t j = 0; j < 4; ++j)
      text += i + j > send(data, NSData::length) ? '=' : kDigits[group >> (18 - 6 * j) & 63];
  }
  return text;
}

}  // namespace test
