#include "objc/agreement.h"

#include <cstddef>
#include <cstdint>

namespace objc {

namespace {

/// The numbers of one value, in memory order: a scalar is one, a structure has those of its
/// members.
struct Value {
  struct Number {
    char kind;  ///< 'i' for integers and pointers, 'f' for floating point, 'v' for nothing
    std::uint8_t size;
    bool operator==(const Number&) const = default;
  };
  static constexpr std::size_t kMost = 16;

  Number numbers[kMost]{};
  std::size_t count = 0;
  bool isObject = false;

  bool add(char kind, std::size_t size) {
    if (count == kMost) return false;
    numbers[count++] = {kind, static_cast<std::uint8_t>(size)};
    return true;
  }
  bool isNothing() const { return count == 1 && numbers[0].kind == 'v'; }
  bool operator==(const Value& other) const {
    if (count != other.count) return false;
    for (std::size_t i = 0; i < count; ++i) {
      if (numbers[i] != other.numbers[i]) return false;
    }
    return true;
  }
};

/// Reads an encoding value by value.
class Reader {
 public:
  explicit Reader(const char* text) : at_(text) {}

  bool isAtEnd() const { return *at_ == '\0'; }

  /// False if it cannot be read.
  bool next(Value& value) {
    if (!read(value, 0)) return false;
    // The offset in the frame, which the receiver's own ABI decides.
    while (*at_ == '-' || *at_ == '+' || isDigit(*at_)) ++at_;
    return true;
  }

 private:
  static constexpr int kDeepest = 8;
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }

  bool read(Value& value, int depth) {
    while (isQualifier(*at_)) ++at_;
    const char type = *at_ == '\0' ? '\0' : *at_++;
    switch (type) {
      case 'v':
        return value.add('v', 0);
      case 'c':
      case 'C':
      case 'B':
        return value.add('i', 1);
      case 's':
      case 'S':
        return value.add('i', 2);
      case 'i':
      case 'I':
      case 'l':  // 32 bits wherever the compiler still emits it
      case 'L':
        return value.add('i', 4);
      case 'q':
      case 'Q':
        return value.add('i', 8);
      case 'f':
        return value.add('f', 4);
      case 'd':
        return value.add('f', 8);
      case '@':
        return readObject(value);
      case '#':
      case ':':
      case '*':
        return value.add('i', sizeof(void*));
      case '^':
        return value.add('i', sizeof(void*)) && skip(depth);
      case '{':
        return readStructure(value, depth);
      default:
        return false;
    }
  }

  /// "@", "@?" or "@"Name"".
  bool readObject(Value& value) {
    value.isObject = true;
    if (*at_ == '?') ++at_;
    if (*at_ == '"') {
      do ++at_;
      while (*at_ != '\0' && *at_ != '"');
      if (*at_ == '\0') return false;
      ++at_;
    }
    return value.add('i', sizeof(void*));
  }

  /// What a pointer points to does not matter.
  bool skip(int depth) {
    if (*at_ == '?') return ++at_, true;
    if (*at_ != '{' && *at_ != '(' && *at_ != '[') {
      Value ignored;
      return depth < kDeepest && read(ignored, depth + 1);
    }
    int open = 0;
    do {
      if (*at_ == '\0') return false;
      if (*at_ == '{' || *at_ == '(' || *at_ == '[') ++open;
      if (*at_ == '}' || *at_ == ')' || *at_ == ']') --open;
      ++at_;
    } while (open > 0);
    return true;
  }

  bool readStructure(Value& value, int depth) {
    while (*at_ != '\0' && *at_ != '=' && *at_ != '}') ++at_;
    // Without its members we know nothing about it.
    if (*at_ != '=' || depth == kDeepest) return false;
    ++at_;
    while (*at_ != '}') {
      if (*at_ == '\0' || !read(value, depth + 1)) return false;
    }
    ++at_;
    value.isObject = false;
    return true;
  }

  static bool isQualifier(char c) {
    for (const char* known = "rnNoORVA"; *known != '\0'; ++known) {
      if (c == *known) return true;
    }
    return false;
  }

  const char* at_;
};

/// Whether their result can serve as ours. If they return nothing, our pointer holds whatever was
/// in the register, and goes to a caller that ignores it.
bool resultsAgree(const Value& theirs, const Value& ours) {
  return theirs == ours || (theirs.isNothing() && ours.isObject);
}

}  // namespace

bool agree(const char* theirs, const char* ours) {
  if (theirs == nullptr || ours == nullptr) return true;
  Reader one(theirs);
  Reader other(ours);
  // Result, receiver and selector: a shorter text is not a method's encoding.
  constexpr int kFewest = 3;
  for (int i = 0; !one.isAtEnd() || !other.isAtEnd(); ++i) {
    if (i < kFewest && (one.isAtEnd() || other.isAtEnd())) return true;
    Value a;
    Value b;
    // The encoding that has ended has too few arguments, unless the other cannot be read.
    if (!one.isAtEnd() && !one.next(a)) return true;
    if (!other.isAtEnd() && !other.next(b)) return true;
    if (i == 0 ? !resultsAgree(a, b) : !(a == b)) return false;
  }
  return true;
}

}  // namespace objc
