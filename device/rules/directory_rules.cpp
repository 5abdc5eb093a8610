// A code directory, which lists digests.
#include <algorithm>

#include "macho/format.h"
#include "rules/signature.h"
#include "rules/subjects.h"
#include "signer/format.h"

namespace varnix::device {

namespace {

constexpr uint32_t kEntitlementsSlot = 5;
/// Flags that a library may have. They say what happens if the signature is broken.
constexpr uint32_t kAllowedFlags = 0x00ffffe;
constexpr uint32_t kFirstVersion = 0x20001, kLastVersion = 0x2f000, kVersionWithTeam = 0x20200;
constexpr uint64_t kFieldsEnd = 52;

const std::vector<Directory>& directoriesOf(const Signature& it) { return it.directories; }

bool hasText(const Directory& it, uint32_t offset) {
  if (offset >= it.bytes.size()) return false;
  const auto rest = it.bytes.at(offset, it.bytes.size() - offset);
  return std::ranges::find(rest, 0) != rest.end();
}

uint64_t pagesOf(uint64_t size) {
  return alignUp(size, signature::kPageBytes) / signature::kPageBytes;
}

/// Pages that have both a digest and code.
uint64_t pagesHashed(const Signature& it, const Directory& directory) {
  return std::min<uint64_t>(directory.codeSlots, pagesOf(std::min<uint64_t>(
                                                     directory.codeLimit, it.image->bytes.size())));
}

std::string pagesMatch(const Signature& it, const Directory& directory) {
  if (!directory.canBeRead()) return {};
  const Reader& file = it.image->bytes;
  const uint64_t limit = std::min<uint64_t>(directory.codeLimit, file.size());
  for (uint64_t page = 0; page < pagesHashed(it, directory); ++page) {
    const uint64_t at = page * signature::kPageBytes;
    const auto bytes = file.at(at, std::min<uint64_t>(signature::kPageBytes, limit - at));
    if (!std::ranges::equal(directory.digestOf(bytes),
                            directory.digest(static_cast<int64_t>(page))))
      return "page " + std::to_string(page) + " is not what was signed";
  }
  return {};
}

bool matches(const Signature& it, const Directory& directory, uint32_t slot) {
  const SignatureBlob* blob = it.blob(slot);
  const auto there = directory.digest(-static_cast<int64_t>(slot));
  if (blob == nullptr || !blob->bytes)
    return std::ranges::all_of(there, [](uint8_t byte) { return byte == 0; });
  return std::ranges::equal(directory.digestOf(blob->bytes->at(0, blob->bytes->size())), there);
}

std::string partsMatch(const Signature& it, const Directory& directory) {
  if (!directory.canBeRead()) return {};
  for (uint32_t slot = 1; slot <= directory.specialSlots; ++slot)
    if (slot != kEntitlementsSlot && !matches(it, directory, slot))
      return "part " + std::to_string(slot) + " is not what was signed";
  return {};
}

std::string entitlementsMatch(const Signature& it, const Directory& directory) {
  if (!directory.canBeRead()) return {};
  if (directory.specialSlots < kEntitlementsSlot)
    return unless(it.blob(kEntitlementsSlot) == nullptr, "no digest of them");
  return unless(matches(it, directory, kEntitlementsSlot), "not what was signed");
}

std::string coversText(const Signature& it, const Directory& directory) {
  const uint64_t covered = directory.codeLimit / signature::kPageBytes * signature::kPageBytes;
  for (const SegmentCommand& segment : it.image->segments)
    if ((segment.protection & macho::kExecute) != 0 &&
        segment.fileOffset + segment.fileSize > covered)
      return std::string(segment.name) + " goes beyond whole pages";
  return {};
}

constexpr SignatureRule kDirectories[] = {
    {"directory.magic", "A directory begins with its magic number.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.magic == signature::kCodeDirectory, hex(it.magic));
          }>},
    {"directory.page-size", "Code is hashed in pages of 4096 bytes.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.pageBits == signature::kPageBits, "2^" + std::to_string(it.pageBits));
          }>},
    {"directory.digest", "Digests are of a kind that the kernel knows, and have its length.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.hashSize != 0 && it.hashSize == digestSize(it.hashType),
                          "kind " + std::to_string(it.hashType) + ", " +
                              std::to_string(it.hashSize) + " bytes");
          }>},
    {"directory.special-slots",
     "Digests of other parts are between the fields and the digests of pages.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            const uint64_t size = uint64_t{it.specialSlots} * it.hashSize;
            return unless(it.hashOffset <= it.bytes.size() && it.hashOffset >= kFieldsEnd + size,
                          std::to_string(it.specialSlots) + " digests");
          }>},
    {"directory.code-slots", "Digests of pages are within the directory.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            const uint64_t size = uint64_t{it.codeSlots} * it.hashSize;
            return unless(
                it.hashOffset <= it.bytes.size() && size <= it.bytes.size() - it.hashOffset,
                std::to_string(it.codeSlots) + " digests");
          }>},
    {"directory.no-scatter", "Code is hashed in one piece.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.scatter == 0, "a table of pieces at " + hex(it.scatter));
          }>},
    {"directory.spare", "Unused fields are zero.",
     each<directoriesOf, [](const Signature&,
                            const Directory& it) { return unless(it.spare == 0, hex(it.spare)); }>},
    {"directory.version", "A directory has a version that is in use.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.version >= kFirstVersion && it.version <= kLastVersion,
                          hex(it.version));
          }>},
    {"directory.no-platform", "A directory does not claim to be part of the system.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.platform == 0, std::to_string(it.platform));
          }>},
    {"directory.identifier", "A directory has an identifier.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.identifierOffset != 0 && hasText(it, it.identifierOffset),
                          "at " + hex(it.identifierOffset));
          }>},
    {"directory.team", "A team is left out, or is within the directory.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.version < kVersionWithTeam || it.team == 0 || hasText(it, it.team),
                          "at " + hex(it.team));
          }>},
    {"directory.flags", "A directory has only flags that a library may have.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless((it.flags & ~kAllowedFlags) == 0, hex(it.flags));
          }>},
    {"directory.limit", "A directory covers code only up to the signature.",
     each<directoriesOf,
          [](const Signature& it, const Directory& directory) {
            return unless(directory.codeLimit != 0 && directory.codeLimit <= it.table->offset,
                          hex(directory.codeLimit) + " of " + hex(it.table->offset));
          }>},
    {"directory.all-pages", "There is a digest for each page of code.",
     each<directoriesOf,
          [](const Signature&, const Directory& it) {
            return unless(it.codeSlots == pagesOf(it.codeLimit),
                          std::to_string(it.codeSlots) + " for " + hex(it.codeLimit));
          }>},
    {"directory.text", "Executable code is in complete pages that have digests.",
     each<directoriesOf, coversText>},
    {"directory.link-edit", "__LINKEDIT begins in a page that has a digest.",
     each<directoriesOf,
          [](const Signature& it, const Directory& directory) {
            const SegmentCommand* segment = it.image->segment("__LINKEDIT");
            return unless(
                segment == nullptr ||
                    segment->fileOffset <= pagesOf(directory.codeLimit) * signature::kPageBytes,
                "it begins after them");
          }>},
    {"directory.pages", "Each page has its digest.", each<directoriesOf, pagesMatch>},
    {"directory.parts", "Each other part of the signature has its digest.",
     each<directoriesOf, partsMatch>},
    {"directory.entitlements", "Entitlements, if there are any, have their digest.",
     each<directoriesOf, entitlementsMatch>},
};

}  // namespace

std::span<const SignatureRule> directoryRules() { return kDirectories; }

}  // namespace varnix::device
