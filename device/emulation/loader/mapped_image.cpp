#include "loader/mapped_image.h"

#include <sys/mman.h>

#include <cstring>
#include <set>

#include "loader/exports.h"
#include "loader/fixups.h"
#include "macho/error.h"
#include "macho/format.h"

namespace varnix::device {

namespace {

/// A word of the image, which need not be aligned.
template <class Word>
Word load(const std::byte* place) {
  Word word;
  std::memcpy(&word, place, sizeof word);
  return word;
}

template <class Word>
void store(std::byte* place, Word word) {
  std::memcpy(place, &word, sizeof word);
}

/// Both change a word of that kind, in the width of the image: by a distance, or to an address.
void add(std::byte* place, FixupKind kind, uint64_t pointerSize, uint64_t distance) {
  if (kind == FixupKind::pointer && pointerSize == 8) {
    store(place, load<uint64_t>(place) + distance);
  } else {
    // A distance from the word itself shrinks as the word moves up.
    const auto change = static_cast<uint32_t>(distance);
    const uint32_t word = load<uint32_t>(place);
    store(place, kind == FixupKind::relative32 ? word - change : word + change);
  }
}

void set(std::byte* place, FixupKind kind, uint64_t pointerSize, uint64_t address) {
  if (kind == FixupKind::pointer && pointerSize == 8) {
    store(place, address);
  } else if (kind == FixupKind::relative32) {
    store(place, static_cast<uint32_t>(address - (reinterpret_cast<uintptr_t>(place) + 4)));
  } else {
    store(place, static_cast<uint32_t>(address));
  }
}

}  // namespace

MappedImage::MappedImage(const ImageFile& file, const Resolve& resolve)
    : file_(file), exports_(readExports(file)) {
  void* memory =
      mmap(nullptr, file.size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw Error("no memory for the image");
  start_ = static_cast<std::byte*>(memory);
  try {
    for (const ImageSegment& segment : file.segments) {
      const auto bytes = file.bytes.at(segment.fileOffset, segment.fileSize);
      if (!bytes.empty()) std::memcpy(at(segment.address - file.base), bytes.data(), bytes.size());
    }
    rebase();
    bind(resolve);
  } catch (...) {
    munmap(memory, file.size);
    throw;
  }
}

void MappedImage::rebase() const {
  const uint64_t distance = reinterpret_cast<uintptr_t>(start_) - file_.base;
  for (const ImageRebase& each : readRebases(file_))
    add(at(each.offset), each.kind, file_.pointerSize(), distance);
}

void MappedImage::bind(const Resolve& resolve) const {
  std::set<std::string_view> missing;
  for (const ImageBind& each : readBinds(file_)) {
    const ImageLibrary* library = each.library > 0 ? &file_.libraries[each.library - 1] : nullptr;
    void* target = nullptr;
    if (each.library == macho::kSelf) target = exported(each.symbol);
    else if (library == nullptr || !library->isMissing) target = resolve(each.symbol);
    const bool mayBeMissing = each.mayBeMissing || (library != nullptr && library->isWeak);
    if (target == nullptr && !mayBeMissing) missing.insert(each.symbol);
    // A missing symbol stays nil, whatever the addend.
    const uint64_t address =
        target == nullptr ? 0 : reinterpret_cast<uintptr_t>(target) + each.addend;
    set(at(each.offset), each.kind, file_.pointerSize(), address);
  }
  for (const ImageBind& each : readWeakBinds(file_)) {
    void* target = resolve(each.symbol);
    if (target == nullptr) target = exported(each.symbol);
    // Without a target, the word keeps the value from the other streams.
    if (target == nullptr) continue;
    set(at(each.offset), each.kind, file_.pointerSize(),
        reinterpret_cast<uintptr_t>(target) + each.addend);
  }
  if (missing.empty()) return;
  std::string words = "symbols that are missing:";
  for (std::string_view symbol : missing) words.append(" ").append(symbol);
  throw Error(words);
}

void MappedImage::protect() const {
  for (const ImageSegment& segment : file_.segments) {
    if (segment.size == 0) continue;
    int protection = 0;
    if ((segment.protection & macho::kRead) != 0) protection |= PROT_READ;
    if ((segment.protection & macho::kWrite) != 0) protection |= PROT_WRITE;
    if ((segment.protection & macho::kExecute) != 0) protection |= PROT_EXEC;
    std::byte* from = at(segment.address - file_.base);
    __builtin___clear_cache(reinterpret_cast<char*>(from),
                            reinterpret_cast<char*>(from + segment.size));
    if (mprotect(from, segment.size, protection) != 0)
      throw Error("a segment that does not begin on a page");
  }
}

void MappedImage::initialise() const {
  for (const ImageSection& section : file_.sections) {
    if (section.type != macho::kModInitFuncPointers) continue;
    for (const uintptr_t function : words(section)) reinterpret_cast<void (*)()>(function)();
  }
}

std::span<uintptr_t> MappedImage::words(std::string_view name) const {
  const ImageSection* section = file_.section(name);
  if (section == nullptr) return {};
  return words(*section);
}

std::span<uintptr_t> MappedImage::words(const ImageSection& section) const {
  return {reinterpret_cast<uintptr_t*>(at(section.address - file_.base)),
          static_cast<size_t>(section.size / sizeof(uintptr_t))};
}

void* MappedImage::exported(std::string_view symbol) const {
  const auto found = exports_.find(symbol);
  return found == exports_.end() ? nullptr : at(found->second);
}

bool MappedImage::contains(const void* address) const {
  const auto* place = static_cast<const std::byte*>(address);
  return place >= start_ && place < start_ + file_.size;
}

}  // namespace varnix::device
