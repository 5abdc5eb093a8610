#include "contract/types.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "macho/error.h"
#include "objc/agreement.h"

namespace varnix::device {
namespace {

/// Structures that cross a message. All their members are CGFloats.
struct Structure {
  std::string_view name;
  std::size_t members;
};
constexpr std::array kStructures{Structure{"CGPoint", 2}, Structure{"CGSize", 2},
                                 Structure{"CGRect", 4}, Structure{"UIEdgeInsets", 4}};

const Structure* structureNamed(std::string_view name) {
  const auto* found = std::find_if(kStructures.begin(), kStructures.end(),
                                   [&](const Structure& known) { return known.name == name; });
  return found == kStructures.end() ? nullptr : found;
}

constexpr std::string_view kQualifiers = "rnNoORVA";
constexpr std::string_view kLetters = "vcCBsSiIlLqQfd#:*";

/// Takes values off the front of an encoding.
class Scanner {
 public:
  Scanner(const std::string& text, bool isFact) : text_(text), isFact_(isFact) {}

  std::vector<std::string> all() {
    std::vector<std::string> values;
    while (at_ < text_.size()) {
      const std::size_t begin = at_;
      pass();
      values.push_back(text_.substr(begin, at_ - begin));
      while (at_ < text_.size() && text_[at_] >= '0' && text_[at_] <= '9') ++at_;
    }
    return values;
  }

 private:
  [[noreturn]] void refuse() const { throw Error("types that cannot be read: " + text_); }
  bool take(char c) {
    if (at_ == text_.size() || text_[at_] != c) return false;
    ++at_;
    return true;
  }

  void pass() {
    while (at_ < text_.size() && kQualifiers.find(text_[at_]) != kQualifiers.npos) ++at_;
    if (take('@')) {
      take('?');
    } else if (take('^')) {
      // Facts do not say what a pointer points to.
      if (!take('?') && !isFact_) pass();
    } else if (take('{')) {
      passStructure();
    } else if (at_ < text_.size() && kLetters.find(text_[at_]) != kLetters.npos) {
      ++at_;
    } else {
      refuse();
    }
  }

  void passStructure() {
    const std::size_t begin = at_;
    for (int open = 1; open > 0; ++at_) {
      if (at_ == text_.size()) refuse();
      if (text_[at_] == '{') ++open;
      if (text_[at_] == '}') --open;
    }
    if (isFact_ && structureNamed(text_.substr(begin, at_ - begin - 1)) == nullptr) refuse();
  }

  const std::string& text_;
  const bool isFact_;
  std::size_t at_ = 0;
};

struct Wider {
  std::string_view narrow, wide;
};
constexpr std::array kWider{Wider{"i", "q"}, Wider{"I", "Q"}, Wider{"f", "d"}};

/// The kind of a pointer-sized value: an object 'o', a selector ':', other data '^'; else ' '.
char handleKind(const std::string& value) {
  const char type = value[value.find_first_not_of(kQualifiers)];
  if (type == '@' || type == '#') return 'o';
  if (type == ':') return ':';
  return type == '^' || type == '*' ? '^' : ' ';
}

struct Word {
  std::string_view letter, word;
};
constexpr std::array kWords{Word{"v", "void"},      Word{"c", "BOOL"},
                            Word{"C", "BOOL"},      Word{"B", "BOOL"},
                            Word{"i", "int"},       Word{"I", "unsigned int"},
                            Word{"q", "long long"}, Word{"Q", "unsigned long long"},
                            Word{"f", "float"},     Word{"d", "double"},
                            Word{"@", "object"},    Word{"@?", "block"},
                            Word{"#", "class"},     Word{":", "selector"},
                            Word{"*", "string"}};

}  // namespace

std::vector<std::string> valuesOfEncoding(const std::string& types) {
  std::vector<std::string> values = Scanner(types, false).all();
  if (values.size() < 3 || values[1] != "@" || values[2] != ":")
    throw Error("not a method's types: " + types);
  values.erase(values.begin() + 1, values.begin() + 3);
  return values;
}

std::vector<std::string> valuesOfFact(const std::string& types) {
  std::vector<std::string> values = Scanner(types, true).all();
  if (values.empty()) throw Error("types without a result");
  return values;
}

std::string widened(const std::string& value, Width width) {
  const bool isWide = width == Width::wide;
  if (value[0] == '{') {
    const std::string name = value.substr(1, value.size() - 2);
    return "{" + name + "=" + std::string(structureNamed(name)->members, isWide ? 'd' : 'f') + "}";
  }
  if (value == "^") return "^v";
  for (const Wider& each : kWider)
    if (isWide && each.narrow == value) return std::string(each.wide);
  return value;
}

bool travelAlike(const std::string& one, const std::string& other) {
  // Asked first, since the comparison gives pointers this machine's size.
  return handleKind(one) == handleKind(other) &&
         objc::agree(("v" + one).c_str(), ("v" + other).c_str());
}

std::string inWords(const std::string& value) {
  const std::size_t begin = value.find_first_not_of(kQualifiers);
  const std::string bare = begin == value.npos ? value : value.substr(begin);
  if (bare[0] == '{') return bare.substr(1, bare.find_first_of("=}") - 1);
  if (bare == "^?") return "function";
  if (bare[0] == '^') return "pointer";
  for (const Word& known : kWords)
    if (known.letter == bare) return std::string(known.word);
  return bare;
}

std::string methodInWords(const std::string& types) {
  const std::vector<std::string> values = valuesOfEncoding(types);
  std::string text = inWords(values[0]) + " (";
  for (std::size_t i = 1; i < values.size(); ++i) text += (i > 1 ? ", " : "") + inWords(values[i]);
  return text + ")";
}

}  // namespace varnix::device
