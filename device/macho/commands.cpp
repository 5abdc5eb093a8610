#include "macho/commands.h"

#include <string>

#include "macho/format.h"

namespace varnix::device {

CommandError tooSmall(uint32_t index, uint32_t length) {
  return {CommandError::Kind::tooSmall, "load command #" + std::to_string(index) + " length (" +
                                            std::to_string(length) + ") too small"};
}

void forEachCommand(Reader file, const std::function<void(const LoadCommand&)>& each) {
  const uint64_t start =
      file.u32(0) == macho::kMagic64 ? macho::kHeaderSize64 : macho::kHeaderSize32;
  const uint32_t count = file.u32(16), room = file.u32(20);
  uint64_t at = 0;
  for (uint32_t i = 0; i < count; ++i) {
    // Without this check, a command after the last would take its size from other bytes.
    const uint32_t size = file.u32(start + at + 4);
    if (size < 8) throw tooSmall(i, size);
    if (size > room || at > room - size)
      throw CommandError(CommandError::Kind::leavesHeader,
                         "load command #" + std::to_string(i) + " length (" + std::to_string(size) +
                             ") would exceed sizeofcmds (" + std::to_string(room) + ")");
    each({i, file.u32(start + at), start + at, file.part(start + at, size)});
    at += size;
  }
}

}  // namespace varnix::device
