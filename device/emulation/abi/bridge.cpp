#include "abi/bridge.h"

#include "macho/bytes.h"
#include "macho/error.h"

namespace varnix::device {

namespace {

enum Register : uint32_t { kX9 = 9, kX16 = 16, kX29 = 29, kSp = 31 };

constexpr uint32_t kPushFrame = 0xa9bf7bfd;  // stp x29, x30, [sp, #-16]!
constexpr uint32_t kSetFrame = 0x910003fd;   // mov x29, sp
constexpr uint32_t kDropStack = 0x910003bf;  // mov sp, x29
constexpr uint32_t kPopFrame = 0xa8c17bfd;   // ldp x29, x30, [sp], #16
constexpr uint32_t kReturn = 0xd65f03c0;
constexpr uint32_t kJump = 0xd61f0000, kCall = 0xd63f0000;
constexpr uint32_t kFrameSize = 16;

/// sxtb, sxth, uxtb or uxth of a register in place.
uint32_t extend(Small small, uint32_t number) {
  const uint32_t code = small == Small::signed8     ? 0x13001c00
                        : small == Small::signed16  ? 0x13003c00
                        : small == Small::unsigned8 ? 0x53001c00
                                                    : 0x53003c00;
  return code | number << 5 | number;
}

/// Loads or stores x9, w9 or its lower part, at an offset from a base. The offset is a multiple of
/// the size.
uint32_t access(bool isLoad, uint32_t size, uint32_t base, uint32_t offset) {
  const uint32_t code = size == 8   ? 0xf9000000
                        : size == 4 ? 0xb9000000
                        : size == 2 ? 0x79000000
                                    : 0x39000000;
  return code | (isLoad ? 0x00400000U : 0U) | (offset / size) << 10 | base << 5 | kX9;
}

class Code {
 public:
  void add(uint32_t instruction) { words_.push_back(instruction); }

  void copyStack(const CallSignature& call, Direction direction) {
    const bool toLinux = direction == Direction::toLinux;
    const uint32_t size = toLinux ? call.linuxStackSize : call.deviceStackSize;
    // Offsets up to this limit easily fit their fields.
    if (size > 2048 || call.deviceStackSize > 2048) throw Error("too many arguments on the stack");
    add(0xd1000000 | static_cast<uint32_t>(alignUp(size, 16)) << 10 | kSp << 5 | kSp);
    for (const StackArgument& each : call.stack) {
      uint32_t from = kFrameSize + (toLinux ? each.deviceOffset : each.linuxOffset);
      uint32_t to = toLinux ? each.linuxOffset : each.deviceOffset;
      for (uint32_t left = each.size; left != 0;) {
        uint32_t piece = 8;
        while (piece > left || from % piece != 0 || to % piece != 0) piece /= 2;
        add(access(true, piece, kX29, from));
        add(access(false, piece, kSp, to));
        from += piece;
        to += piece;
        left -= piece;
      }
    }
  }

  /// Loads the target, whose place is known only after everything else is written.
  void loadTarget() {
    load_ = words_.size();
    add(0);
  }

  std::vector<uint32_t> finish(uint64_t target) {
    if (words_.size() % 2 != 0) add(0);
    const auto distance = static_cast<uint32_t>(words_.size() - load_);
    words_[load_] = 0x58000000 | distance << 5 | kX16;
    add(static_cast<uint32_t>(target));
    add(static_cast<uint32_t>(target >> 32));
    return std::move(words_);
  }

 private:
  std::vector<uint32_t> words_;
  size_t load_ = 0;
};

}  // namespace

bool needsBridge(const CallSignature& call, Direction direction) {
  const bool extends =
      direction == Direction::toLinux ? call.result != Small::none : call.hasSmallArgument();
  return extends || call.hasPackedStack();
}

std::vector<uint32_t> bridgeCode(const CallSignature& call, Direction direction, uint64_t target) {
  Code code;
  if (direction == Direction::toDevice) {
    for (uint32_t i = 0; i < call.registers.size(); ++i)
      if (call.registers[i] != Small::none) code.add(extend(call.registers[i], i));
  }
  const bool extendsResult = direction == Direction::toLinux && call.result != Small::none;
  if (!extendsResult && !call.hasPackedStack()) {
    code.loadTarget();
    code.add(kJump | kX16 << 5);
    return code.finish(target);
  }
  code.add(kPushFrame);
  code.add(kSetFrame);
  if (!call.stack.empty()) code.copyStack(call, direction);
  code.loadTarget();
  code.add(kCall | kX16 << 5);
  if (extendsResult) code.add(extend(call.result, 0));
  code.add(kDropStack);
  code.add(kPopFrame);
  code.add(kReturn);
  return code.finish(target);
}

}  // namespace varnix::device
