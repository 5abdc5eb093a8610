#if defined(__arm__)

#include "abi/code_memory.h"
#include "abi/native.h"
#include "abi/way_out.h"
#include "abi/word_bridge.h"

// In functions_arm.S.
extern "C" void varnix_leaveLibrary();

namespace varnix::device {

NativeSignature readNativeSignature(std::string_view encoding) {
  return readWordSignature(encoding);
}

void* bridge(const NativeSignature& call, Direction direction, void* target) {
  if (target == nullptr) return nullptr;
  if (call.isShifted())
    return placeCode(bridgeCode(call, direction, reinterpret_cast<uintptr_t>(target)));
  return direction == Direction::toLinux ? wayOut(target) : target;
}

void* wayOut(void* function) {
  return placeCode({
      0xe59fc000,  // ldr ip, [pc]: the word after the next instruction
      0xe59ff000,  // ldr pc, [pc]: the word after that
      reinterpret_cast<uintptr_t>(function),
      reinterpret_cast<uintptr_t>(&varnix_leaveLibrary),
  });
}

}  // namespace varnix::device

#endif
