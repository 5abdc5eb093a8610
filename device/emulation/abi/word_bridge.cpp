#include "abi/word_bridge.h"

#include "macho/bytes.h"
#include "macho/error.h"

namespace varnix::device {

namespace {

// Registers and stack lie in one row, from r4 on.
constexpr uint32_t kPushArguments = 0xe92d000f;  // push {r0-r3}
constexpr uint32_t kPushR4 = 0xe92d4010;         // push {r4, lr}
constexpr uint32_t kSetR4 = 0xe28d4008;          // add r4, sp, #8
constexpr uint32_t kLowerStack = 0xe24dd000;     // sub sp, sp, #
constexpr uint32_t kEvenStack = 0xe3cdd007;      // bic sp, sp, #7
constexpr uint32_t kLoad = 0xe5940000;           // ldr r0, [r4, #]
constexpr uint32_t kStore = 0xe58dc000;          // str ip, [sp, #]
constexpr uint32_t kLoadTarget = 0xe59fc010;     // ldr ip, [pc, #16]: after the last instruction
constexpr uint32_t kEnd[] = {
    0xe12fff3c,  // blx ip
    0xe244d008,  // sub sp, r4, #8
    0xe8bd4010,  // pop {r4, lr}
    0xe28dd010,  // add sp, sp, #16
    0xe12fff1e,  // bx lr
};
constexpr uint32_t kScratch = 12, kWordRegisters = 4;

uint32_t load(uint32_t number, uint32_t word) { return kLoad | number << 12 | word * kWord; }

}  // namespace

std::vector<uint32_t> bridgeCode(const WordSignature& call, Direction direction, uint32_t target) {
  const auto count = static_cast<uint32_t>(call.places.size());
  const auto size =
      static_cast<uint32_t>(alignUp((count == 0 ? 0 : call.places.back() + 1) * kWord, 8));
  // The size is an immediate of eight bits.
  if (size > 248) throw Error("too many arguments on the stack");
  std::vector<uint32_t> code = {kPushArguments, kPushR4, kSetR4, kLowerStack | size, kEvenStack};
  for (uint32_t i = 0; i < count; ++i) {
    const bool toLinux = direction == Direction::toLinux;
    const uint32_t from = toLinux ? i : call.places[i];
    const uint32_t to = toLinux ? call.places[i] : i;
    if (to < kWordRegisters) {
      code.push_back(load(to, from));
    } else {
      code.push_back(load(kScratch, from));
      code.push_back(kStore | (to - kWordRegisters) * kWord);
    }
  }
  code.push_back(kLoadTarget);
  code.insert(code.end(), std::begin(kEnd), std::end(kEnd));
  code.push_back(target);
  return code;
}

}  // namespace varnix::device
