#include "Foundation/property_list_node.h"

#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string_view>

namespace host::plist {

namespace {

constexpr double kFirst = -63145699200;  // 0000-01-01
constexpr double kEnd = 252455616000;    // 10000-01-01
constexpr std::chrono::sys_days kReferenceDate = std::chrono::January / 1 / std::chrono::year(2001);

constexpr std::size_t kHeaderSize = 8;
constexpr unsigned char kSixteenByteInteger = 0x14;

struct FreeBinary {
  void operator()(char* bytes) const { plist_to_bin_free(bytes); }
};

/// The object's marker and contents in binary form: the only place where a node's value stands
/// whole. Slow, so it is for rare values.
std::string binaryForm(plist_t scalar) {
  char* bytes = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(scalar, &bytes, &length);
  const std::unique_ptr<char, FreeBinary> owner(bytes);
  if (bytes == nullptr || length <= kHeaderSize) return {};
  return {bytes + kHeaderSize, length - kHeaderSize};
}

Tree parse(std::string_view xml) {
  plist_t node = nullptr;
  plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &node);
  return Tree(node);
}

}  // namespace

std::optional<double> seconds(plist_t date) {
  std::int32_t whole = 0;
  std::int32_t micro = 0;
  plist_get_date_val(date, &whole, &micro);
  using Limits = std::numeric_limits<std::int32_t>;
  // A value without a whole number reads as one of these; which one depends on the processor.
  const bool isDoubtful = whole == 0 || whole == Limits::min() || whole == Limits::max();
  if (micro == 0 && !isDoubtful) return whole;
  const std::string bytes = binaryForm(date);
  if (bytes.size() <= sizeof(std::uint64_t)) return {};
  std::uint64_t bits = 0;
  for (std::size_t i = 1; i <= sizeof bits; ++i)
    bits = bits << 8 | static_cast<unsigned char>(bytes[i]);
  const auto value = std::bit_cast<double>(bits);
  if (!(value >= kFirst && value < kEnd)) return {};
  return value;
}

Tree dateNode(double seconds) {
  if (!(seconds >= kFirst && seconds < kEnd)) return {};
  const double whole = std::floor(seconds);
  if (std::abs(whole) < std::numeric_limits<std::int32_t>::max()) {
    return Tree(plist_new_date(static_cast<std::int32_t>(whole), 0));
  }
  // Not through time_t, which has 32 bits on some systems.
  const auto moment = kReferenceDate + std::chrono::seconds(static_cast<std::int64_t>(whole));
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(moment - day);
  char words[64];
  std::snprintf(words, sizeof words, "<date>%04d-%02u-%02uT%02d:%02d:%02dZ</date>",
                static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
  return parse(words);
}

bool isUnsigned(plist_t integer) {
  const std::string bytes = binaryForm(integer);
  return !bytes.empty() && static_cast<unsigned char>(bytes.front()) == kSixteenByteInteger;
}

Tree unsignedNode(std::uint64_t value) {
  return parse("<integer>" + std::to_string(value) + "</integer>");
}

}  // namespace host::plist
