// Type encodings as registers see them: types that differ only in meaning are the same.
#pragma once

#include <cctype>
#include <string>
#include <vector>

namespace test {

/// One word for each type: "pointer" for objects and all other addresses, "byte", "int", "long", a
/// structure's name in braces, else the type's letter.
class RegisterKinds {
 public:
  /// In the shorthand of facts/methods.tsv, "^" alone means a pointer.
  enum class Form { runtime, shorthand };

  RegisterKinds(std::string types, Form form) : types_(std::move(types)), form_(form) {}

  std::vector<std::string> all() {
    std::vector<std::string> kinds;
    while (at_ < types_.size()) kinds.push_back(next());
    return kinds;
  }

 private:
  static bool isOneOf(char letter, const char* letters) {
    return letter != '\0' && std::string(letters).find(letter) != std::string::npos;
  }
  char peek() const { return at_ < types_.size() ? types_[at_] : '\0'; }

  std::string next() {
    while (isOneOf(peek(), "rnNoORV")) ++at_;
    const std::string kind = one();
    // The offset on a stack.
    while (std::isdigit(static_cast<unsigned char>(peek())) != 0) ++at_;
    return kind;
  }
  std::string one() {
    const char letter = peek();
    ++at_;
    if (letter == '@' && peek() == '?') ++at_;
    if (letter == '^' && form_ == Form::runtime) next();
    // A function's address.
    else if (letter == '^' && peek() == '?') ++at_;
    if (letter == '{') return structure();
    if (isOneOf(letter, "@#:*^?")) return "pointer";
    if (isOneOf(letter, "cCB")) return "byte";
    if (isOneOf(letter, "iIlL")) return "int";
    if (isOneOf(letter, "qQ")) return "long";
    return {letter};
  }
  std::string structure() {
    const std::size_t start = at_ - 1;
    for (int depth = 1; depth > 0 && at_ < types_.size(); ++at_) {
      if (types_[at_] == '{') ++depth;
      if (types_[at_] == '}') --depth;
    }
    const std::string whole = types_.substr(start, at_ - start);
    return whole.substr(0, whole.find_first_of("=}")) + "}";
  }

  std::string types_;
  Form form_;
  std::size_t at_ = 0;
};

/// Whether a method's types here match the facts, which are for 32 bits. On a wider system an
/// NSInteger is a long and a CGFloat a double.
inline bool areSameToRegisters(const std::string& here, const std::string& facts) {
  auto mine = RegisterKinds(here, RegisterKinds::Form::runtime).all();
  const auto theirs = RegisterKinds(facts, RegisterKinds::Form::shorthand).all();
  // The receiver and the selector are not in the facts.
  if (mine.size() < 3) return false;
  mine.erase(mine.begin() + 1, mine.begin() + 3);
  if (mine.size() != theirs.size()) return false;
  for (std::size_t i = 0; i < mine.size(); ++i) {
    const bool isWider = sizeof(void*) == 8 && ((theirs[i] == "int" && mine[i] == "long") ||
                                                (theirs[i] == "f" && mine[i] == "d"));
    if (mine[i] != theirs[i] && !isWider) return false;
  }
  return true;
}

}  // namespace test
