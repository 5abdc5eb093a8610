#include "Foundation/strings_file.h"

#include <charconv>
#include <optional>

#include "Foundation/file_contents.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "Foundation/utf16.h"

namespace host {
namespace {

/// Reads pairs of texts. The property list library of this system has no reader for this form.
class StringsReader {
 public:
  explicit StringsReader(std::string_view text) : rest_(text) {}

  /// Nil if the text has another form.
  NSDictionary* read() {
    NSMutableDictionary* table = NSMutableDictionary::dictionary();
    while (skipBlanks() && !rest_.empty()) {
      const auto key = readText();
      if (!key) return nullptr;
      auto value = key;  // what stands alone means itself
      if (take('=')) value = readText();
      if (!value || !take(';')) return nullptr;
      NSString* keyText = makeString(*key);
      NSString* valueText = makeString(*value);
      if (keyText == nullptr || valueText == nullptr) return nullptr;
      send(table, NSMutableDictionary::setObjectForKey, valueText, keyText);
    }
    return isBroken_ ? nullptr : table;
  }

 private:
  /// False behind a comment that does not end.
  bool skipBlanks() {
    constexpr std::string_view kBlanks = " \t\r\n\f\v";
    while (true) {
      rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
      std::string_view end;
      if (rest_.starts_with("//")) end = "\n";
      else if (rest_.starts_with("/*")) end = "*/";
      else return true;
      const std::size_t at = rest_.find(end, 2);
      isBroken_ = at == rest_.npos && end != "\n";
      if (isBroken_) return false;
      rest_.remove_prefix(std::min(at, rest_.size() - end.size()) + end.size());
    }
  }
  bool take(char wanted) {
    if (!skipBlanks() || !rest_.starts_with(wanted)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  std::optional<std::string> readText() {
    if (!skipBlanks()) return {};
    if (rest_.starts_with('"')) return readQuoted();
    std::size_t length = 0;
    while (length < rest_.size() && isPlain(rest_[length])) ++length;
    if (length == 0) return {};
    std::string word(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return word;
  }
  static bool isPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("_$/:.-").find(c) != std::string_view::npos;
  }
  std::optional<std::string> readQuoted() {
    rest_.remove_prefix(1);
    std::string text;
    while (!rest_.empty() && rest_.front() != '"') {
      if (rest_.front() != '\\') {
        text += rest_.front();
        rest_.remove_prefix(1);
      } else if (!readEscape(text)) {
        return {};
      }
    }
    if (rest_.empty()) return {};
    rest_.remove_prefix(1);
    return text;
  }
  bool readEscape(std::string& text) {
    if (rest_.size() < 2) return false;
    const char kind = rest_[1];
    rest_.remove_prefix(2);
    if (kind == 'U' || kind == 'u') return readUnits(text);
    constexpr std::string_view kNames = "abfnrtv";
    constexpr std::string_view kMeanings = "\a\b\f\n\r\t\v";
    const std::size_t at = kNames.find(kind);
    text += at == kNames.npos ? kind : kMeanings[at];
    return true;
  }
  /// Four hexadecimal digits: a unit of UTF-16, or the first of a pair.
  bool readUnits(std::string& text) {
    std::string units = "\xfe\xff";
    if (!readUnit(units)) return false;
    constexpr unsigned char kFirstOfPair = 0xd8;
    if ((static_cast<unsigned char>(units[2]) & 0xfc) == kFirstOfPair) {
      if (!rest_.starts_with("\\U") && !rest_.starts_with("\\u")) return false;
      rest_.remove_prefix(2);
      if (!readUnit(units)) return false;
    }
    const auto utf8 = utf8FromUtf16(units);
    if (!utf8) return false;
    text += *utf8;
    return true;
  }
  bool readUnit(std::string& units) {
    constexpr std::size_t kDigits = 4;
    if (rest_.size() < kDigits) return false;
    unsigned unit = 0;
    const std::string digits(rest_.substr(0, kDigits));
    const char* end = digits.data() + kDigits;
    const auto read = std::from_chars(digits.data(), end, unit, 16);
    if (read.ec != std::errc() || read.ptr != end) return false;
    rest_.remove_prefix(kDigits);
    units += static_cast<char>(unit >> 8);
    units += static_cast<char>(unit);
    return true;
  }

  std::string_view rest_;
  bool isBroken_ = false;
};

}  // namespace

NSDictionary* stringsFromData(std::string_view bytes) {
  if (bytes.size() > kMaximumBytes) return nullptr;
  const bool isList = bytes.starts_with("bplist") || bytes.find("<plist") != bytes.npos;
  if (isList) {
    if (auto* table = objc::as<NSDictionary>(propertyListFromData(bytes))) return table;
  }
  if (isUtf16(bytes)) {
    const auto text = utf8FromUtf16(bytes);
    return text ? StringsReader(*text).read() : nullptr;
  }
  constexpr std::string_view kMark = "\xef\xbb\xbf";
  if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
  return StringsReader(bytes).read();
}

NSDictionary* stringsFromFile(const std::string& path) {
  const auto contents = fileContents(path, kMaximumBytes);
  return contents ? stringsFromData(*contents) : nullptr;
}

}  // namespace host
