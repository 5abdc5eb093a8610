#include "pick/displayed_text.h"

#include <vector>

#include "Foundation/text.h"
#include "objc/autorelease_pool.h"

namespace varnix::cli::pick {

namespace {

constexpr std::size_t kLongest = 4;  // bytes in a character

bool isCharacter(std::string_view bytes) { return host::makeString(bytes) != nullptr; }

bool isControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  return first < ' ' || first == 127 ||
         (first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0);
}

/// The well-formed character at the start of the bytes; empty if there is none.
std::string_view firstCharacter(std::string_view bytes) {
  for (std::size_t length = 1; length <= std::min(kLongest, bytes.size()); ++length) {
    if (isCharacter(bytes.substr(0, length))) return bytes.substr(0, length);
  }
  return {};
}

}  // namespace

std::string displayedText(std::string_view bytes) {
  const objc::AutoreleasePool pool;
  std::string result;
  while (!bytes.empty()) {
    const std::string_view character = firstCharacter(bytes);
    const bool isShown = !character.empty() && !isControl(character);
    result += isShown ? character : std::string_view("\uFFFD");
    bytes.remove_prefix(character.empty() ? 1 : character.size());
  }
  return result;
}

std::string shortenedInTheMiddle(const std::string& utf8,
                                 const std::function<bool(const std::string&)>& fits) {
  if (fits(utf8)) return utf8;
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    if ((static_cast<unsigned char>(utf8[i]) & 0xC0) != 0x80) starts.push_back(i);
  }
  for (std::size_t kept = starts.size() / 2; kept > 0; --kept) {
    std::string candidate =
        utf8.substr(0, starts[kept]) + "\u2026" + utf8.substr(starts[starts.size() - kept]);
    if (fits(candidate)) return candidate;
  }
  return "\u2026";
}

}  // namespace varnix::cli::pick
