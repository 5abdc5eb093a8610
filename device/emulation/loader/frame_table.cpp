#include "loader/frame_table.h"

#include <map>

#include "macho/bytes.h"

namespace varnix::device {

namespace {

/// How addresses are written: as they are.
constexpr uint8_t kAbsolute = 0;
constexpr uint8_t kDefineCfa = 0x0c, kOffset = 0x80, kOffsetExtended = 0x05;
constexpr uint8_t kFramePointer = 29, kLinkRegister = 30;
/// Offsets count multiples of this, from the caller's stack pointer.
constexpr int kDataAlignment = -8;
constexpr size_t kAlignment = 8;

/// An entry; its length is written before it.
void addEntry(Writer& out, Writer entry) {
  // The length includes the padding, whose zeros are instructions that do nothing.
  while ((entry.size() + 4) % kAlignment != 0) entry.u8(0);
  out.u32(static_cast<uint32_t>(entry.size()));
  out.bytes(entry.written());
}

/// What frames with the same personality routine share; zero for those without one.
Writer common(uint64_t routine) {
  Writer entry;
  entry.u32(0);  // the common entry, which has no range of its own
  entry.u8(1);   // version
  // A length follows, then the routine; each range has a table of handlers.
  entry.text(routine == 0 ? "" : "zPL");
  entry.uleb(1);  // instructions are counted in bytes
  entry.sleb(kDataAlignment);
  entry.u8(kLinkRegister);  // where calls return to
  if (routine != 0) {
    entry.uleb(10);
    entry.u8(kAbsolute);
    entry.u64(routine);
    entry.u8(kAbsolute);
  }
  entry.u8(kDefineCfa);
  entry.uleb(kFramePointer);
  entry.uleb(16);
  entry.u8(kOffset | kFramePointer);
  entry.uleb(2);
  entry.u8(kOffset | kLinkRegister);
  entry.uleb(1);
  return entry;
}

Writer range(const CodeFrame& frame, uint64_t base, size_t distanceToCommon) {
  Writer entry;
  entry.u32(static_cast<uint32_t>(distanceToCommon));
  entry.u64(base + frame.start);
  entry.u64(frame.size);
  if (frame.personality != 0) {
    entry.uleb(8);
    entry.u64(frame.handlers == 0 ? 0 : base + frame.handlers);
  }
  uint64_t place = 3;
  for (const uint8_t number : frame.saved) {
    if (number < 64) {
      entry.u8(kOffset | number);
    } else {
      entry.u8(kOffsetExtended);
      entry.uleb(number);
    }
    entry.uleb(place++);
  }
  return entry;
}

}  // namespace

std::vector<uint8_t> frameTable(std::span<const CodeFrame> frames, uint64_t base,
                                const std::function<uint64_t(uint64_t offset)>& routineAt) {
  Writer out;
  std::map<uint64_t, size_t> placeOfCommon;
  for (const CodeFrame& frame : frames) {
    const auto [found, isNew] = placeOfCommon.emplace(frame.personality, out.size());
    if (isNew) addEntry(out, common(frame.personality == 0 ? 0 : routineAt(frame.personality)));
    addEntry(out, range(frame, base, out.size() + 4 - found->second));
  }
  out.u32(0);
  return out.take();
}

}  // namespace varnix::device
