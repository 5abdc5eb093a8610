#include "process/unwinding.h"

#include <cstring>
#include <vector>

#if defined(__aarch64__)
extern "C" void __register_frame(void* table);
#endif

namespace varnix::device {

void describeFrames([[maybe_unused]] std::span<const CodeFrame> frames,
                    [[maybe_unused]] const void* base) {
#if defined(__aarch64__)
  if (frames.empty()) return;
  const auto routineAt = [base](uint64_t offset) {
    uint64_t routine = 0;
    std::memcpy(&routine, static_cast<const char*>(base) + offset, sizeof routine);
    return routine;
  };
  auto* table =
      new std::vector<uint8_t>(frameTable(frames, reinterpret_cast<uintptr_t>(base), routineAt));
  __register_frame(table->data());
#endif
}

}  // namespace varnix::device
