#include "loader/fixups.h"

#include <string>

#include "macho/error.h"
#include "macho/format.h"
#include "macho/opcodes.h"

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

/// The place where opcodes write. Moving it may wrap around, but a word must be inside its segment.
class Place {
 public:
  explicit Place(const ImageFile& image) : image_(image) {}

  void set(uint8_t segment, uint64_t offset) {
    if (segment >= image_.segments.size()) throw Error("a fixup in a segment that is not there");
    segment_ = &image_.segments[segment];
    offset_ = offset;
  }
  void move(uint64_t distance) { offset_ += distance; }

  /// The word's offset in the image. Moves the place past the word.
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

/// The state of the binding opcodes, and the binds so far.
class Binder {
 public:
  Binder(const ImageFile& image, std::vector<ImageBind>& binds)
      : image_(image), place_(image), binds_(binds) {}

  /// A lazy stream goes on after the "done" that ends each of its binds.
  void read(Reader part, bool endsAtDone) {
    FixupSteps steps(FixupStream::binds, part, image_.pointerSize());
    while (const auto step = steps.next()) {
      switch (step->kind) {
        case FixupStep::Kind::done:
          if (endsAtDone) return;
          break;
        case FixupStep::Kind::library:
          setLibrary(step->value);
          break;
        case FixupStep::Kind::symbol:
          next_.symbol = step->symbol;
          next_.mayBeMissing = (step->number & macho::kWeakImport) != 0;
          break;
        case FixupStep::Kind::type:
          next_.kind = kindOf(step->number);
          break;
        case FixupStep::Kind::addend:
          next_.addend = step->value;
          break;
        case FixupStep::Kind::segment:
          place_.set(step->number, step->distance);
          break;
        case FixupStep::Kind::move:
          place_.move(step->distance);
          break;
        case FixupStep::Kind::write:
          for (uint64_t i = 0; i < step->times; ++i) {
            bind();
            place_.move(step->distance);
          }
          break;
      }
    }
  }

 private:
  void setLibrary(int64_t number) {
    if (number > static_cast<int64_t>(image_.libraries.size()))
      throw Error("a bind to a library that is not there");
    if (number < macho::kWeakLookup) throw Error("a bind to an unknown kind of library");
    next_.library = static_cast<int>(number);
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
  FixupSteps steps(FixupStream::rebases, image.rebases, image.pointerSize());
  while (const auto step = steps.next()) {
    switch (step->kind) {
      case FixupStep::Kind::done:
        return rebases;
      case FixupStep::Kind::type:
        kind = kindOf(step->number);
        break;
      case FixupStep::Kind::segment:
        place.set(step->number, step->distance);
        break;
      case FixupStep::Kind::move:
        place.move(step->distance);
        break;
      case FixupStep::Kind::write:
        for (uint64_t i = 0; i < step->times; ++i) {
          rebases.push_back({place.word(kind), kind});
          place.move(step->distance);
        }
        break;
      default:
        break;
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
