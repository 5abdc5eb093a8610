#include "loader/fixups.h"

#include <string>

#include "loader/cursor.h"
#include "loader/format.h"
#include "macho/error.h"
#include "macho/format.h"

namespace varnix::device {

namespace {

constexpr uint64_t kMostFixups = 1 << 20;

FixupKind kindOf(uint8_t type) {
  switch (type) {
    case macho::kPointer:
      return FixupKind::pointer;
    case macho::kAbsolute32:
      return FixupKind::absolute32;
    case macho::kRelative32:
      return FixupKind::relative32;
    default:
      throw Error("a fixup of an unknown type");
  }
}

/// The place that opcodes move and write at. Moving may wrap around; a word has to lie inside.
class Place {
 public:
  explicit Place(const ImageFile& image) : image_(image) {}

  void set(uint8_t segment, uint64_t offset) {
    if (segment >= image_.segments.size()) throw Error("a fixup in a segment that is not there");
    segment_ = &image_.segments[segment];
    offset_ = offset;
  }
  void move(uint64_t distance) { offset_ += distance; }

  /// The word's offset in the image. The place is behind it then.
  uint64_t word(FixupKind kind) {
    const uint64_t size = kind == FixupKind::pointer ? image_.pointerSize() : 4;
    if (segment_ == nullptr) throw Error("a fixup without a segment");
    if (offset_ > segment_->size || size > segment_->size - offset_)
      throw Error("a fixup outside its segment");
    if (++count_ > kMostFixups) throw Error("more than a million fixups");
    const uint64_t place = segment_->address - image_.base + offset_;
    offset_ += image_.pointerSize();
    return place;
  }

 private:
  const ImageFile& image_;
  const ImageSegment* segment_ = nullptr;
  uint64_t offset_ = 0;
  uint64_t count_ = 0;
};

[[noreturn]] void unknown(uint8_t opcode) {
  throw Error("an unknown opcode of the loader: " + std::to_string(opcode));
}

/// The state of the binding opcodes, and what they have given so far.
class Binder {
 public:
  Binder(const ImageFile& image, std::vector<ImageBind>& binds)
      : image_(image), place_(image), binds_(binds) {}

  /// A lazy stream has an end after each bind, and goes on.
  void read(Reader part, bool endsAtDone) {
    for (Cursor cursor(part); !cursor.atEnd();) {
      const uint8_t byte = cursor.u8();
      const uint8_t immediate = byte & macho::kImmediateMask;
      switch (byte & macho::kOpcodeMask) {
        case macho::kBindDone:
          if (endsAtDone) return;
          break;
        case macho::kBindSetDylibOrdinalImm:
          setLibrary(immediate);
          break;
        case macho::kBindSetDylibOrdinalUleb:
          setLibrary(cursor.uleb());
          break;
        case macho::kBindSetDylibSpecialImm:
          setSpecial(immediate);
          break;
        case macho::kBindSetSymbolTrailingFlagsImm:
          next_.symbol = cursor.text();
          next_.mayBeMissing = (immediate & macho::kWeakImport) != 0;
          break;
        case macho::kBindSetTypeImm:
          next_.kind = kindOf(immediate);
          break;
        case macho::kBindSetAddendSleb:
          next_.addend = cursor.sleb();
          break;
        case macho::kBindSetSegmentAndOffsetUleb:
          place_.set(immediate, cursor.uleb());
          break;
        case macho::kBindAddAddressUleb:
          place_.move(cursor.uleb());
          break;
        case macho::kBindDo:
          bind();
          break;
        case macho::kBindDoAddAddressUleb:
          bind();
          place_.move(cursor.uleb());
          break;
        case macho::kBindDoAddAddressImmScaled:
          bind();
          place_.move(immediate * image_.pointerSize());
          break;
        case macho::kBindDoUlebTimesSkippingUleb: {
          const uint64_t times = cursor.uleb();
          const uint64_t skip = cursor.uleb();
          for (uint64_t i = 0; i < times; ++i) {
            bind();
            place_.move(skip);
          }
          break;
        }
        default:
          unknown(byte);
      }
    }
  }

 private:
  void setLibrary(uint64_t number) {
    if (number > image_.libraries.size()) throw Error("a bind to a library that is not there");
    next_.library = static_cast<int>(number);
  }
  void setSpecial(uint8_t immediate) {
    // The number is negative, in four bits; none is the image itself.
    next_.library = immediate == 0 ? macho::kSelf : static_cast<int>(immediate) - 16;
    if (next_.library < macho::kWeakLookup) throw Error("a bind to an unknown kind of library");
  }
  void bind() {
    if (next_.symbol.empty()) throw Error("a bind without a symbol");
    next_.offset = place_.word(next_.kind);
    binds_.push_back(next_);
  }

  const ImageFile& image_;
  Place place_;
  ImageBind next_;
  std::vector<ImageBind>& binds_;
};

}  // namespace

std::vector<ImageRebase> readRebases(const ImageFile& image) {
  std::vector<ImageRebase> rebases;
  Place place(image);
  FixupKind kind = FixupKind::pointer;
  auto rebase = [&](uint64_t times, uint64_t skip) {
    for (uint64_t i = 0; i < times; ++i) {
      rebases.push_back({place.word(kind), kind});
      place.move(skip);
    }
  };
  for (Cursor cursor(image.rebases); !cursor.atEnd();) {
    const uint8_t byte = cursor.u8();
    const uint8_t immediate = byte & macho::kImmediateMask;
    switch (byte & macho::kOpcodeMask) {
      case macho::kRebaseDone:
        return rebases;
      case macho::kRebaseSetTypeImm:
        kind = kindOf(immediate);
        break;
      case macho::kRebaseSetSegmentAndOffsetUleb:
        place.set(immediate, cursor.uleb());
        break;
      case macho::kRebaseAddAddressUleb:
        place.move(cursor.uleb());
        break;
      case macho::kRebaseAddAddressImmScaled:
        place.move(immediate * image.pointerSize());
        break;
      case macho::kRebaseDoImmTimes:
        rebase(immediate, 0);
        break;
      case macho::kRebaseDoUlebTimes:
        rebase(cursor.uleb(), 0);
        break;
      case macho::kRebaseDoAddAddressUleb:
        rebase(1, cursor.uleb());
        break;
      case macho::kRebaseDoUlebTimesSkippingUleb: {
        const uint64_t times = cursor.uleb();
        rebase(times, cursor.uleb());
        break;
      }
      default:
        unknown(byte);
    }
  }
  return rebases;
}

std::vector<ImageBind> readBinds(const ImageFile& image) {
  std::vector<ImageBind> binds;
  Binder(image, binds).read(image.binds, true);
  Binder(image, binds).read(image.lazyBinds, false);
  return binds;
}

std::vector<ImageBind> readWeakBinds(const ImageFile& image) {
  std::vector<ImageBind> binds;
  Binder(image, binds).read(image.weakBinds, true);
  return binds;
}

}  // namespace varnix::device
