#include "loader/unwind_info.h"

#include <map>

#include "macho/error.h"

namespace varnix::device {

namespace {

constexpr uint32_t kVersion = 1;
constexpr uint32_t kRegularPage = 2, kCompressedPage = 3;
constexpr uint32_t kHasHandlers = 0x40000000, kPersonalityShift = 28, kPersonalityMask = 3;
constexpr uint32_t kModeMask = 0x0f000000, kFrameless = 0x02000000, kFrame = 0x04000000;
constexpr size_t kMostFunctions = 1 << 20;

/// Pairs of registers by their bit, in the order in which they lie below x29.
struct Pair {
  uint32_t bit;
  uint8_t first;  ///< DWARF's number of the first; the second's is the next.
};
constexpr Pair kPairs[] = {{0x001, 19}, {0x002, 21}, {0x004, 23}, {0x008, 25}, {0x010, 27},
                           {0x100, 72}, {0x200, 74}, {0x400, 76}, {0x800, 78}};

Reader contents(const ImageFile& image, const ImageSection& section) {
  for (const ImageSegment& segment : image.segments) {
    const uint64_t offset = section.address - segment.address;
    if (section.address < segment.address || offset > segment.fileSize) continue;
    if (section.size > segment.fileSize - offset) break;
    return image.bytes.part(segment.fileOffset + offset, section.size);
  }
  throw Error("unwind information without bytes");
}

/// Where each function begins, and how it saves registers.
struct Entry {
  uint64_t start;
  uint32_t encoding;
};

class Table {
 public:
  explicit Table(Reader bytes) : bytes_(bytes) {
    if (bytes.u32(0) != kVersion) throw Error("unwind information of an unknown version");
    for (uint32_t i = 0; i < bytes.u32(16); ++i)
      personalities.push_back(bytes.u32(bytes.u32(12) + uint64_t{4} * i));
    const uint32_t index = bytes.u32(20), count = bytes.u32(24);
    if (count == 0) throw Error("unwind information without an end");
    // The last entry says where the last page's functions end.
    for (uint32_t i = 0; i + 1 < count; ++i) page(index + uint64_t{12} * i);
    const uint64_t last = index + uint64_t{12} * (count - 1);
    add(bytes.u32(last), 0);
    readHandlers(bytes.u32(index + 8), bytes.u32(last + 8));
  }

  std::vector<Entry> entries;
  std::vector<uint32_t> personalities;    ///< Where in the image the pointers to them are.
  std::map<uint64_t, uint32_t> handlers;  ///< By the function's start.

 private:
  void page(uint64_t index) {
    const uint32_t start = bytes_.u32(index);
    const uint64_t at = bytes_.u32(index + 4);
    const uint32_t kind = bytes_.u32(at);
    const uint64_t first = at + bytes_.u16(at + 4);
    const uint32_t count = bytes_.u16(at + 6);
    for (uint32_t i = 0; i < count; ++i) {
      if (kind == kRegularPage) {
        add(bytes_.u32(first + uint64_t{8} * i), bytes_.u32(first + uint64_t{8} * i + 4));
      } else if (kind == kCompressedPage) {
        const uint32_t entry = bytes_.u32(first + uint64_t{4} * i);
        add(start + (entry & 0xffffff), encoding(at, entry >> 24));
      } else {
        throw Error("a page of unwind information of an unknown kind");
      }
    }
  }

  /// Pairs of a function's start and its table's.
  void readHandlers(uint64_t from, uint64_t to) {
    if (to < from || to - from > 8 * kMostFunctions) throw Error("handlers that are out of order");
    for (; from < to; from += 8) handlers[bytes_.u32(from)] = bytes_.u32(from + 4);
  }

  /// The first numbers are the encodings that all pages share.
  uint32_t encoding(uint64_t page, uint32_t number) const {
    const uint32_t shared = bytes_.u32(8);
    if (number < shared) return bytes_.u32(bytes_.u32(4) + uint64_t{4} * number);
    if (number - shared >= bytes_.u16(page + 10)) throw Error("an encoding that is not there");
    return bytes_.u32(page + bytes_.u16(page + 8) + uint64_t{4} * (number - shared));
  }

  void add(uint64_t start, uint32_t encoding) {
    if (entries.size() == kMostFunctions) throw Error("more than a million functions");
    if (!entries.empty() && start < entries.back().start)
      throw Error("functions that are out of order");
    entries.push_back({start, encoding});
  }

  Reader bytes_;
};

/// Fills in how a function looks at exceptions.
void addHandlers(CodeFrame& frame, uint32_t encoding, const Table& table, uint64_t imageSize) {
  const uint32_t number = encoding >> kPersonalityShift & kPersonalityMask;
  if (number == 0) return;
  if (number > table.personalities.size()) throw Error("a personality routine that is not there");
  frame.personality = table.personalities[number - 1];
  if (imageSize < 8 || frame.personality == 0 || frame.personality > imageSize - 8)
    throw Error("a personality routine outside the image");
  if ((encoding & kHasHandlers) == 0) return;
  const auto found = table.handlers.find(frame.start);
  if (found == table.handlers.end()) throw Error("handlers that are not there");
  if (found->second >= imageSize) throw Error("handlers outside the image");
  frame.handlers = found->second;
}

std::vector<uint8_t> savedBy(uint32_t encoding) {
  std::vector<uint8_t> saved;
  for (const Pair& pair : kPairs) {
    if ((encoding & pair.bit) == 0) continue;
    saved.push_back(pair.first);
    saved.push_back(static_cast<uint8_t>(pair.first + 1));
  }
  return saved;
}

}  // namespace

std::vector<CodeFrame> readUnwindInfo(const ImageFile& image) {
  const ImageSection* section = image.section("__unwind_info");
  if (section == nullptr || image.architecture != Architecture::arm64) return {};
  const Table table(contents(image, *section));
  if (table.entries.back().start > image.size) throw Error("a function outside the image");
  std::vector<CodeFrame> frames;
  for (size_t i = 0; i + 1 < table.entries.size(); ++i) {
    const auto& [start, encoding] = table.entries[i];
    const uint32_t mode = encoding & kModeMask;
    if (mode == kFrame) {
      frames.push_back({start, table.entries[i + 1].start - start, savedBy(encoding)});
      addHandlers(frames.back(), encoding, table, image.size);
    } else if (mode != kFrameless && encoding != 0) {
      throw Error("a function whose frame is described elsewhere");
    }
  }
  return frames;
}

}  // namespace varnix::device
