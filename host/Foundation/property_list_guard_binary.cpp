// A binary property list is a table of objects that refer to each other by number, so it can
// contain itself, and a few bytes can stand for any number of objects. Every object reached from
// the top is looked at once; what it expands to is the sum of what its parts expand to.
#include <cstdint>
#include <vector>

#include "Foundation/property_list.h"
#include "Foundation/property_list_guard.h"

namespace host {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;
constexpr std::size_t kMaximumExpandedBytes = 4 * kMaximumBytes;

enum Kind : unsigned {
  kInteger = 0x1,
  kData = 0x4,
  kAscii = 0x5,
  kUtf16 = 0x6,
  kArray = 0xa,
  kSet = 0xc,
  kDictionary = 0xd
};

class BinaryGuard {
 public:
  explicit BinaryGuard(std::string_view bytes) : bytes_(bytes) {}

  bool accepts() { return readTrailer() && walk(); }

 private:
  struct Object {
    unsigned kind = 0;
    std::uint64_t count = 0;     ///< bytes, units or entries
    std::size_t contents = 0;    ///< where they begin
    std::uint64_t children = 0;  ///< references to other objects
  };

  /// What is known about an object that was reached.
  struct Seen {
    enum State : std::uint8_t { no, open, done } state = no;
    bool canBeKey = false;
    std::uint8_t height = 0;
    std::uint32_t nodes = 0;
    std::uint64_t bytes = 0;
  };

  struct Frame {
    std::size_t index;
    Object object;
    std::uint64_t next = 0;  ///< the child to look at
  };

  std::uint64_t bigEndian(std::size_t at, std::size_t size) const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
      value = value << 8 | static_cast<unsigned char>(bytes_[at + i]);
    return value;
  }

  bool readTrailer() {
    if (bytes_.size() < kHeaderSize + kTrailerSize) return false;
    const std::size_t trailer = bytes_.size() - kTrailerSize;
    offsetSize_ = bigEndian(trailer + 6, 1);
    referenceSize_ = bigEndian(trailer + 7, 1);
    const std::uint64_t objects = bigEndian(trailer + 8, 8);
    const std::uint64_t top = bigEndian(trailer + 16, 8);
    const std::uint64_t table = bigEndian(trailer + 24, 8);
    if (offsetSize_ < 1 || offsetSize_ > 8 || referenceSize_ < 1 || referenceSize_ > 8)
      return false;
    if (objects < 1 || objects > kMaximumNodes || top >= objects) return false;
    if (table < kHeaderSize || table >= trailer || objects * offsetSize_ > trailer - table)
      return false;
    seen_.resize(objects);
    top_ = top;
    table_ = table;
    return true;
  }

  /// Objects lie between the header and the table of their offsets.
  bool readObject(std::size_t index, Object& object) const {
    const std::uint64_t offset = bigEndian(table_ + index * offsetSize_, offsetSize_);
    if (offset < kHeaderSize || offset >= table_) return false;
    const auto marker = static_cast<unsigned>(bigEndian(offset, 1));
    object.kind = marker >> 4;
    object.count = marker & 0xf;
    object.contents = offset + 1;
    std::uint64_t unit = 1;
    switch (object.kind) {
      case kData:
      case kAscii:
        break;
      case kUtf16:
        unit = 2;
        break;
      case kArray:
      case kSet:
        unit = referenceSize_;
        break;
      case kDictionary:
        unit = 2 * referenceSize_;
        break;
      default:
        return true;  // a scalar of at most 16 bytes, which the parser checks
    }
    if (object.count == 0xf && !readLongCount(object)) return false;
    if (object.count > (table_ - object.contents) / unit) return false;
    if (object.kind == kArray || object.kind == kSet) object.children = object.count;
    if (object.kind == kDictionary) object.children = 2 * object.count;
    return true;
  }

  bool readLongCount(Object& object) const {
    if (object.contents >= table_) return false;
    const auto marker = static_cast<unsigned>(bigEndian(object.contents, 1));
    const std::size_t size = std::size_t{1} << (marker & 0xf);
    if (marker >> 4 != kInteger || size > 8 || size >= table_ - object.contents) return false;
    object.count = bigEndian(object.contents + 1, size);
    object.contents += 1 + size;
    return true;
  }

  /// Enters an object that was not reached before.
  bool enter(std::size_t index) {
    Frame frame{index, {}, 0};
    if (!readObject(index, frame.object)) return false;
    Seen& seen = seen_[index];
    const Object& object = frame.object;
    seen.nodes = 1;
    if (object.kind == kData || object.kind == kAscii) seen.bytes = object.count;
    if (object.kind == kUtf16) seen.bytes = 4 * object.count;
    seen.canBeKey = object.kind == kAscii;
    if (object.kind == kUtf16) {
      // Every object reached is part of what the top expands to, so this is a lower bound. It stops
      // at overlapping objects.
      scanned_ += seen.bytes;
      if (scanned_ > kMaximumExpandedBytes) return false;
      seen.canBeKey = isFreeOfZeros(object);
    }
    if (object.kind != kArray && object.kind != kSet && object.kind != kDictionary) {
      seen.state = Seen::done;
      return true;
    }
    seen.state = Seen::open;
    seen.height = 1;
    frames_.push_back(frame);
    return frames_.size() <= kMaximumDepth;
  }

  /// The parser aborts the process for a key with a zero in it.
  bool isFreeOfZeros(const Object& object) const {
    for (std::uint64_t i = 0; i < object.count; ++i) {
      if (bigEndian(object.contents + 2 * i, 2) == 0) return false;
    }
    return true;
  }

  bool walk() {
    if (!enter(top_)) return false;
    while (!frames_.empty()) {
      Frame& frame = frames_.back();
      if (frame.next == frame.object.children) {
        seen_[frame.index].state = Seen::done;
        frames_.pop_back();
        continue;
      }
      const std::uint64_t child =
          bigEndian(frame.object.contents + frame.next * referenceSize_, referenceSize_);
      if (child >= seen_.size() || seen_[child].state == Seen::open) return false;  // a cycle
      if (seen_[child].state == Seen::no) {
        if (!enter(child)) return false;
        // A container is added to its parent when it is complete.
        if (seen_[child].state == Seen::open) continue;
      }
      if (!add(frame, seen_[child])) return false;
      ++frame.next;
    }
    return true;
  }

  bool add(const Frame& parent, const Seen& child) {
    // Each reference stands for at least one node.
    if (++references_ > kMaximumNodes) return false;
    const bool isKey = parent.object.kind == kDictionary && parent.next < parent.object.count;
    if (isKey && !child.canBeKey) return false;
    Seen& seen = seen_[parent.index];
    seen.nodes += child.nodes;
    seen.bytes += child.bytes;
    if (child.height >= seen.height) seen.height = static_cast<std::uint8_t>(child.height + 1);
    return seen.nodes <= kMaximumNodes && seen.bytes <= kMaximumExpandedBytes &&
           seen.height <= kMaximumDepth;
  }

  static_assert(kMaximumDepth < 255 && kMaximumNodes < UINT32_MAX / 2);

  std::string_view bytes_;
  std::uint64_t offsetSize_ = 0;
  std::uint64_t referenceSize_ = 0;
  std::size_t top_ = 0;
  std::size_t table_ = 0;
  std::vector<Seen> seen_;
  std::vector<Frame> frames_;
  std::size_t references_ = 0;
  std::uint64_t scanned_ = 0;
};

}  // namespace

bool isSafeBinaryPropertyList(std::string_view bytes) { return BinaryGuard(bytes).accepts(); }

}  // namespace host
