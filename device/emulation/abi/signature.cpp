#include "abi/signature.h"

#include <algorithm>

#include "macho/bytes.h"
#include "macho/error.h"

namespace varnix::device {

namespace {

/// A type as it travels.
struct Type {
  uint32_t size = 0, alignment = 1;
  Small small = Small::none;
  char scalar = 0;     ///< Of a structure with members of one kind: theirs. Zero where they differ.
  uint32_t count = 0;  ///< Scalars within.
  bool isStructure = false, isBlock = false;

  bool isFloating() const { return scalar == 'd' || scalar == 'f'; }
  /// Up to four equal floating-point numbers have registers of their own.
  bool travelsAsFloats() const { return isFloating() && count <= 4; }
};

constexpr uint32_t kRegisters = 8;

class Encoding {
 public:
  explicit Encoding(std::string_view text) : text_(text) {}

  bool atEnd() const { return at_ == text_.size(); }

  /// One type, and the offset that may stand behind it.
  Type next() {
    Type type = value(0);
    while (!atEnd() && (isDigit(text_[at_]) || text_[at_] == '-' || text_[at_] == '+')) ++at_;
    return type;
  }

 private:
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }
  char take() {
    if (atEnd()) throw Error("a type encoding that is cut short");
    return text_[at_++];
  }
  bool takeIf(char c) {
    if (atEnd() || text_[at_] != c) return false;
    ++at_;
    return true;
  }

  static Type scalar(char code, uint32_t size, Small small = Small::none) {
    return {size, std::max(size, 1U), small, code, 1, false, false};
  }

  Type value(int depth) {
    if (depth > 16) throw Error("a type encoding that is too deep");
    char code = take();
    while (std::string_view("rnNoORVA").find(code) != std::string_view::npos) code = take();
    switch (code) {
      case 'v':
        return scalar('v', 0);
      case 'B':
        return scalar('i', 1, Small::unsigned8);
      case 'c':
        return scalar('i', 1, Small::signed8);
      case 'C':
        return scalar('i', 1, Small::unsigned8);
      case 's':
        return scalar('i', 2, Small::signed16);
      case 'S':
        return scalar('i', 2, Small::unsigned16);
      case 'i':
      case 'I':
      case 'l':
      case 'L':
        return scalar('i', 4);
      case 'f':
        return scalar('f', 4);
      case 'd':
        return scalar('d', 8);
      case 'q':
      case 'Q':
      case '#':
      case ':':
      case '*':
      case '?':
        return scalar('i', 8);
      case '@':
        return object();
      case '^':
        return pointer(depth);
      case '{':
        return structure(depth);
      default:
        throw Error("a type encoding that is not known here: " + std::string(text_));
    }
  }

  Type object() {
    Type type = scalar('i', 8);
    type.isBlock = takeIf('?');
    if (takeIf('"')) {
      while (take() != '"') {
      }
    }
    return type;
  }

  Type pointer(int depth) {
    // The pointed-to structure may be without members.
    if (!atEnd() && text_[at_] == '{') skipBraces();
    else value(depth + 1);
    return scalar('i', 8);
  }

  void skipBraces() {
    int open = 0;
    do {
      const char c = take();
      open += c == '{' ? 1 : c == '}' ? -1 : 0;
    } while (open != 0);
  }

  Type structure(int depth) {
    while (take() != '=') {
    }
    Type whole;
    whole.isStructure = true;
    while (!takeIf('}')) {
      if (takeIf('"')) {
        while (take() != '"') {
        }
        continue;
      }
      const Type member = value(depth + 1);
      if (whole.count == 0) whole.scalar = member.scalar;
      else if (whole.scalar != member.scalar) whole.scalar = 0;
      whole.count += member.count;
      whole.alignment = std::max(whole.alignment, member.alignment);
      whole.size = static_cast<uint32_t>(alignUp(whole.size, member.alignment)) + member.size;
    }
    whole.size = static_cast<uint32_t>(alignUp(whole.size, whole.alignment));
    return whole;
  }

  std::string_view text_;
  size_t at_ = 0;
};

/// Hands out registers, then places on the stack.
class Assignment {
 public:
  explicit Assignment(CallSignature& call) : call_(call) {}

  void add(const Type& type) {
    if (type.size == 0) throw Error("an argument without a size");
    if (type.travelsAsFloats()) return floats(type);
    // A large structure lies in memory, and its address travels.
    if (type.isStructure && type.size > 16) return words({8, 8, Small::none, 'i', 1, false, false});
    words(type);
  }

 private:
  void floats(const Type& type) {
    if (floats_ + type.count <= kRegisters) {
      floats_ += type.count;
    } else {
      floats_ = kRegisters;
      push(type);
    }
  }

  void words(const Type& type) {
    const uint32_t count = (type.size + 7) / 8;
    if (words_ + count > kRegisters) {
      words_ = kRegisters;
      return push(type);
    }
    call_.registers[words_] = type.isStructure ? Small::none : type.small;
    call_.blocks[words_] = type.isBlock;
    words_ += count;
  }

  void push(const Type& type) {
    // A structure that is no row of floats is padded to whole words on both.
    const bool packed = !type.isStructure || type.travelsAsFloats();
    const auto alignment = packed ? type.alignment : 8U;
    const auto size = packed ? type.size : static_cast<uint32_t>(alignUp(type.size, 8));
    StackArgument argument;
    argument.size = size;
    argument.deviceOffset = static_cast<uint32_t>(alignUp(call_.deviceStackSize, alignment));
    argument.linuxOffset = call_.linuxStackSize;
    call_.deviceStackSize = argument.deviceOffset + size;
    call_.linuxStackSize += static_cast<uint32_t>(alignUp(size, 8));
    call_.stack.push_back(argument);
  }

  CallSignature& call_;
  uint32_t words_ = 0, floats_ = 0;
};

}  // namespace

bool CallSignature::hasSmallArgument() const {
  return std::any_of(registers.begin(), registers.end(),
                     [](Small small) { return small != Small::none; });
}

bool CallSignature::hasPackedStack() const {
  return std::any_of(stack.begin(), stack.end(), [](const StackArgument& each) {
    return each.deviceOffset != each.linuxOffset;
  });
}

CallSignature readSignature(std::string_view text) {
  Encoding encoding(text);
  CallSignature call;
  const Type result = encoding.next();
  call.result = result.isStructure ? Small::none : result.small;
  Assignment assignment(call);
  while (!encoding.atEnd()) assignment.add(encoding.next());
  return call;
}

}  // namespace varnix::device
