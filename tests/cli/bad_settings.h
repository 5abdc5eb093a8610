// Broken settings files.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// {"enabled": true, "global_color": "#1e88e5", "cc_color_type": 2, "a_enabled": false}, binary.
inline constexpr std::string_view kBinarySettings{
    "bplist00\xd4\x01\x02\x03\x04\x05\x06\x07\x08"
    "Ya_enabled]cc_color_typeWenabled\\global_color\x08\x10\x02\x09W#1e88e5"
    "\x08\x11\x1b\x29\x31\x3e\x3f\x41\x42"
    "\x00\x00\x00\x00\x00\x00\x01\x01\x00\x00\x00\x00\x00\x00\x00\x09\x00\x00\x00\x00\x00\x00\x00"
    "\x00\x00\x00\x00\x00\x00\x00\x00\x4a",
    115};

/// The same as XML.
inline constexpr std::string_view kXmlSettings{
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n"
    "\t<key>a_enabled</key>\n\t<false/>\n\t<key>cc_color_type</key>\n\t<integer>2</integer>\n"
    "\t<key>enabled</key>\n\t<true/>\n\t<key>global_color</key>\n\t<string>#1e88e5</string>\n"
    "</dict>\n</plist>\n"};

/// A few of the bytes changed; the same seed always changes the same ones.
inline std::string mutated(std::string_view bytes, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::string result(bytes);
  for (std::uint32_t i = 0; i <= seed % 4; ++i) {
    result[random() % result.size()] = static_cast<char>(random());
  }
  return result;
}

inline std::string randomBytes(std::uint32_t seed, std::size_t length) {
  std::mt19937 random(seed);
  std::string result(length, '\0');
  for (char& byte : result) byte = static_cast<char>(random());
  return result;
}

inline std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  result.reserve(text.size() * times);
  while (times-- > 0) result += text;
  return result;
}

/// A dictionary with a value of that many nested arrays.
inline std::string nestedXml(std::size_t depth) {
  return "<plist><dict><key>global_color</key>" + repeated("<array>", depth) +
         repeated("</array>", depth) + "</dict></plist>";
}

/// A binary list: array 0 holds array 1, and so on.
inline std::string nestedBinary(std::uint32_t depth) {
  auto number = [](std::uint64_t value, int bytes) {
    std::string text;
    while (bytes-- > 0) text += static_cast<char>(value >> (8 * bytes) & 0xff);
    return text;
  };
  std::string file = "bplist00";
  std::string offsets;
  for (std::uint32_t i = 0; i < depth; ++i) {
    offsets += number(file.size(), 4);
    file += i + 1 < depth ? '\xa1' + number(i + 1, 4) : std::string("\xa0");
  }
  const std::size_t table = file.size();
  return file + offsets + std::string(6, '\0') + "\x04\x04" + number(depth, 8) + number(0, 8) +
         number(table, 8);
}

/// One value of every kind that a property list can hold, as XML.
inline const std::vector<std::string> kKinds = {
    "<true/>",
    "<false/>",
    "<integer>2</integer>",
    "<integer>-9223372036854775808</integer>",
    "<integer>18446744073709551615</integer>",
    "<real>1e300</real>",
    "<real>nan</real>",
    "<string></string>",
    "<string>2</string>",
    "<string>#12</string>",
    "<string>\xF0\x9F\x8E\xA8 %@ %n</string>",
    "<data>AQID</data>",
    "<data></data>",
    "<date>2015-01-02T03:04:05Z</date>",
    "<array/>",
    "<array><string>#123456</string></array>",
    "<dict/>",
    "<dict><key>a</key><array/></dict>",
};

}  // namespace test
