#if defined(__aarch64__)

#include "abi/bridge.h"
#include "abi/code_memory.h"
#include "abi/native.h"

namespace varnix::device {

NativeSignature readNativeSignature(std::string_view encoding) { return readSignature(encoding); }

void* bridge(const NativeSignature& call, Direction direction, void* target) {
  if (target == nullptr || !needsBridge(call, direction)) return target;
  return placeCode(bridgeCode(call, direction, reinterpret_cast<uintptr_t>(target)));
}

}  // namespace varnix::device

#endif
