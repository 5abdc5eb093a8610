// Follows the parsing library's own reading of XML tag by tag, its treatment of quotes and comments
// included: a scanner that saw a comment where the library sees tags could be led past the limits.
#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "Foundation/property_list.h"
#include "Foundation/property_list_guard.h"

namespace host {

namespace {

constexpr std::string_view kSpace = " \t\r\n";

/// The library searches a dictionary for each key that is added, and moves a text's rest for each
/// entity in it. Beyond so many steps a file would keep it busy for seconds.
constexpr std::uint64_t kMaximumSteps = std::uint64_t{1} << 30;
constexpr std::uint64_t kBytesInAStep = 16;

class XmlGuard {
 public:
  explicit XmlGuard(std::string_view text) : text_(text) {}

  bool accepts() {
    // Text ends at a zero for some of the library's functions and not for others.
    if (text_.find('\0') != std::string_view::npos) return false;
    Next next = Next::more;
    while (next == Next::more) next = readTag();
    return next == Next::end && (!inPropertyList_ || readLastTag());
  }

 private:
  /// What follows a tag. At the end of the outermost element the library stops reading; what it
  /// refuses need not be told apart from what is refused here.
  enum class Next { more, end, refused };

  struct Container {
    std::uint64_t keys = 0;
  };

  bool atEnd() const { return at_ >= text_.size(); }
  std::string_view rest() const { return text_.substr(at_); }

  bool moveTo(std::size_t position) {
    at_ = std::min(position, text_.size());
    return !atEnd();
  }
  bool moveToAny(std::string_view characters) {
    return moveTo(text_.find_first_of(characters, at_));
  }
  bool movePast(std::string_view words) {
    const std::size_t found = text_.find(words, at_);
    if (found == std::string_view::npos) return false;
    at_ = found + words.size();
    return true;
  }

  /// Stops at one of the characters outside double quotes.
  bool moveToUnquoted(std::string_view characters) {
    while (!atEnd() && characters.find(text_[at_]) == std::string_view::npos) {
      if (text_[at_] == '"' && !moveTo(text_.find('"', at_ + 1))) return false;
      ++at_;
    }
    return !atEnd();
  }

  Next readTag() {
    if (!moveTo(text_.find_first_not_of(kSpace, at_))) return Next::end;
    if (text_[at_] != '<') return Next::refused;
    ++at_;
    if (rest().starts_with('?')) return readInstruction() ? Next::more : Next::refused;
    if (rest().starts_with("!--")) {
      at_ += 3;
      return movePast("-->") ? Next::more : Next::refused;
    }
    if (rest().starts_with("!DOCTYPE")) return readDocumentType() ? Next::more : Next::refused;
    return readElement();
  }

  /// After the outermost element, where the library no longer looks: a file that was cut off there
  /// may have been cut off anywhere.
  bool readLastTag() {
    constexpr std::string_view kLast = "</plist";
    while (moveTo(text_.find_first_not_of(kSpace, at_)) && !rest().starts_with(kLast)) {
      const bool comment = rest().starts_with("<!--");
      if (!comment && !rest().starts_with("<?")) return false;
      if (!movePast(comment ? "-->" : "?>")) return false;
    }
    return !atEnd() && moveTo(text_.find_first_not_of(kSpace, at_ + kLast.size())) &&
           text_[at_] == '>';
  }

  bool readInstruction() {
    while (moveToUnquoted("?")) {
      if (rest().starts_with("?>")) {
        at_ += 2;
        return true;
      }
      ++at_;
    }
    return false;
  }

  /// No declarations are allowed: nobody needs entities in a property list.
  bool readDocumentType() {
    if (!moveToUnquoted("[>") || text_[at_] == '[') return false;
    ++at_;
    return true;
  }

  Next readElement() {
    const std::size_t begin = at_;
    if (!moveToAny(" \r\n\t<>")) return Next::refused;
    std::string_view name = text_.substr(begin, at_ - begin);
    if (text_[at_] != '>' && (!moveToUnquoted("<>") || text_[at_] != '>')) return Next::refused;
    const bool empty = text_[at_ - 1] == '/';
    if (empty) name = name.substr(0, std::min(name.size(), at_ - 1 - begin));
    ++at_;
    if (name == "plist" || name == "/plist") {
      inPropertyList_ = name == "plist" && !empty;
      return Next::more;
    }
    if (name.starts_with('/')) return close();
    const bool container = name == "dict" || name == "array";
    if (!container && std::find(kTexts.begin(), kTexts.end(), name) == kTexts.end())
      return Next::refused;
    if (++nodes_ > kMaximumNodes) return Next::refused;
    if (!container) {
      if (!empty && !readText(name)) return Next::refused;
      return nodes_ == 1 ? Next::end : Next::more;
    }
    // An empty outermost container is not closed, and what follows still goes into it.
    if (empty && nodes_ > 1) return Next::more;
    open_.emplace_back();
    return open_.size() <= kMaximumDepth ? Next::more : Next::refused;
  }

  Next close() {
    if (open_.empty()) return Next::refused;
    open_.pop_back();
    return open_.empty() ? Next::end : Next::more;
  }

  /// Up to the end of the element; comments and CDATA sections may stand in the text.
  bool readText(std::string_view name) {
    const std::size_t begin = at_;
    while (true) {
      if (!movePast("<") || atEnd()) return false;
      if (text_[at_] == '/') break;
      const bool comment = rest().starts_with("!--");
      if (!comment && !rest().starts_with("![CDATA[")) return false;
      at_ += comment ? 3 : 8;
      if (!movePast(comment ? "-->" : "]]>")) return false;
    }
    const std::string_view contents = text_.substr(begin, at_ - begin);
    const auto entities =
        static_cast<std::uint64_t>(std::count(contents.begin(), contents.end(), '&'));
    steps_ += entities * contents.size() / kBytesInAStep;
    if (name == "key" && !open_.empty()) {
      steps_ += open_.back().keys++ * (1 + contents.size() / kBytesInAStep);
    }
    ++at_;
    if (!rest().starts_with(name)) return false;
    at_ += name.size();
    if (!moveTo(text_.find_first_not_of(kSpace, at_)) || text_[at_] != '>') return false;
    ++at_;
    return steps_ <= kMaximumSteps;
  }

  static constexpr std::array<std::string_view, 8> kTexts{"string", "key",   "integer", "real",
                                                          "true",   "false", "data",    "date"};

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t nodes_ = 0;
  std::uint64_t steps_ = 0;
  bool inPropertyList_ = false;
  std::vector<Container> open_;
};

}  // namespace

bool isSafeXmlPropertyList(std::string_view text) { return XmlGuard(text).accepts(); }

}  // namespace host
