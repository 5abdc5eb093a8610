#include "abi/signature.h"

#include <algorithm>

#include "macho/bytes.h"
#include "macho/error.h"

namespace varnix::device {

namespace {

constexpr uint32_t kArgumentRegisters = 8;

/// Up to four equal floating-point numbers travel in registers of their own.
bool travelsAsFloats(const Type& type) {
  return (type.scalar == 'd' || type.scalar == 'f') && type.count <= 4;
}

/// Hands out registers, then places on the stack.
class Assignment {
 public:
  explicit Assignment(CallSignature& call) : call_(call) {}

  void add(const Type& type) {
    if (type.size == 0) throw Error("an argument without a size");
    if (type.hasUnion) throw Error("a union as an argument");
    if (travelsAsFloats(type)) return floats(type);
    // A large structure is in memory, and its address is passed.
    if (type.isStructure && type.size > 16)
      return words({.size = 8, .alignment = 8, .scalar = 'i', .count = 1});
    words(type);
  }

 private:
  void floats(const Type& type) {
    if (floats_ + type.count <= kArgumentRegisters) {
      floats_ += type.count;
    } else {
      floats_ = kArgumentRegisters;
      push(type);
    }
  }

  void words(const Type& type) {
    const uint32_t count = (type.size + 7) / 8;
    if (words_ + count > kArgumentRegisters) {
      words_ = kArgumentRegisters;
      return push(type);
    }
    call_.registers[words_] = type.isStructure ? Small::none : type.small;
    call_.blocks[words_] = type.isBlock;
    words_ += count;
  }

  void push(const Type& type) {
    // On both systems, a structure other than a row of floats is padded to whole words.
    const bool packed = !type.isStructure || travelsAsFloats(type);
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
  Encoding encoding(text, 8);
  CallSignature call;
  const Type result = encoding.next();
  call.result = result.isStructure ? Small::none : result.small;
  Assignment assignment(call);
  while (!encoding.atEnd()) assignment.add(encoding.next());
  return call;
}

}  // namespace varnix::device
