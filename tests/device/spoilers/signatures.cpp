// Ways to break the rules of signatures. What is changed is not what was signed.
#include "device/spoilers/spoiled.h"
#include "macho/format.h"

namespace device_test {

namespace {

/// Offsets in a signature's index: slot and offset of each part.
constexpr uint64_t kLength = 4, kCount = 8, kIndex = 12, kEntry = 8;
/// Offsets in a directory.
constexpr uint64_t kSize = 4, kVersion = 8, kFlags = 12, kIdentifier = 20, kSpecialSlots = 24,
                   kCodeSlots = 28, kLimit = 32, kHashSize = 36, kHashType = 37, kPlatform = 38,
                   kPageBits = 39, kSpare = 40, kScatter = 44, kTeam = 48;
constexpr uint64_t kOffsetField = 8, kSizeField = 12;

uint64_t command(const Spoiled& it) { return it.command(device::macho::kCodeSignature); }
uint32_t size(const Spoiled& it) { return it.u32(command(it) + kSizeField); }
uint32_t big32(const Spoiled& it, uint64_t place) { return __builtin_bswap32(it.u32(place)); }

/// Sets a field in both directories, since they must agree.
void both(Spoiled& it, uint64_t field, uint32_t value) {
  for (const size_t i : {0, 1}) it.putBig32(it.directory(i) + field, value);
}

void flip(Spoiled& it, uint64_t place) {
  it.put8(place, static_cast<uint8_t>(it.bytes.at(place) ^ 1));
}

/// The place of a page's digest in a directory; a negative number means another part's.
uint64_t digest(const Spoiled& it, size_t directory, int64_t number) {
  const auto& each = it.sound.signature.directories[directory];
  return it.directory(directory) + each.hashOffset + static_cast<uint64_t>(number * each.hashSize);
}

uint64_t partAt(const Spoiled& it, uint32_t slot) {
  return it.signature() + it.sound.signature.blob(slot)->offset;
}

const Spoiler kSignatureSpoilers[] = {
    {"signature.present", "none", [](Spoiled& it) { it.put32(command(it), 0x26); }},
    {"signature.size",
     "nothing",
     [](Spoiled& it) { it.put32(command(it) + kSizeField, 0); },
     {"signature.index", "signature.last"}},
    {"signature.size",
     "41 MiB",
     [](Spoiled& it) { it.put32(command(it) + kSizeField, 41 << 20); },
     {"link-edit.inside", "signature.inside"}},
    {"signature.inside",
     "behind the file",
     [](Spoiled& it) { it.put32(command(it) + kOffsetField, it.u32(command(it) + 8) + 4096); },
     {"link-edit.inside"}},
    {"signature.last",
     "something behind it",
     [](Spoiled& it) { it.put32(command(it) + kSizeField, size(it) - 8); },
     {"signature.index"}},
    {"signature.index", "another number",
     [](Spoiled& it) { it.putBig32(it.signature(), 0xfade0cc1); }},
    {"signature.index", "longer than it is",
     [](Spoiled& it) { it.putBig32(it.signature() + kLength, size(it) + 1); }},
    {"signature.index", "many parts",
     [](Spoiled& it) { it.putBig32(it.signature() + kCount, 100000); }},
    {"signature.parts", "one that begins behind it",
     [](Spoiled& it) { it.putBig32(it.signature() + kIndex + 3 * kEntry + 4, size(it)); }},
    {"signature.parts", "one that ends behind it",
     [](Spoiled& it) { it.putBig32(partAt(it, 0x10000) + 4, size(it)); }},
    {"signature.directory", "of another slot",
     [](Spoiled& it) { it.putBig32(it.signature() + kIndex, 7); }},
    {"signature.directory-size", "40 bytes",
     [](Spoiled& it) { it.putBig32(it.directory(0) + kSize, 40); }},
    {"signature.kinds",
     "SHA-1 twice",
     [](Spoiled& it) {
       it.put8(it.directory(1) + kHashSize, 20);
       it.put8(it.directory(1) + kHashType, 1);
     },
     {"directory.pages", "directory.parts"}},
    {"signature.one-limit",
     "less",
     [](Spoiled& it) {
       it.putBig32(it.directory(1) + kLimit, big32(it, it.directory(1) + kLimit) - 16);
     },
     {"directory.pages"}},
    {"signature.wrapper", "another number",
     [](Spoiled& it) { it.putBig32(partAt(it, 0x10000), 1); }},
    {"directory.magic", "another", [](Spoiled& it) { it.putBig32(it.directory(1), 0); }},
    {"directory.magic", "of the first", [](Spoiled& it) { it.putBig32(it.directory(0), 0); }},
    {"directory.page-size", "16 KiB",
     [](Spoiled& it) { it.put8(it.directory(0) + kPageBits, 14); }},
    {"directory.page-size", "all at once",
     [](Spoiled& it) { it.put8(it.directory(1) + kPageBits, 0); }},
    {"directory.digest", "unknown", [](Spoiled& it) { it.put8(it.directory(0) + kHashType, 9); }},
    {"directory.digest", "of another length",
     [](Spoiled& it) { it.put8(it.directory(1) + kHashSize, 31); }},
    {"directory.special-slots", "500",
     [](Spoiled& it) { it.putBig32(it.directory(1) + kSpecialSlots, 500); }},
    {"directory.code-slots",
     "50000",
     [](Spoiled& it) { both(it, kCodeSlots, 50000); },
     {"directory.all-pages"}},
    {"directory.no-scatter", "some",
     [](Spoiled& it) { it.putBig32(it.directory(1) + kScatter, 64); }},
    {"directory.spare", "a number", [](Spoiled& it) { it.putBig32(it.directory(0) + kSpare, 1); }},
    {"directory.version", "a later one",
     [](Spoiled& it) { it.putBig32(it.directory(1) + kVersion, 0x30000); }},
    {"directory.no-platform", "the system's",
     [](Spoiled& it) { it.put8(it.directory(0) + kPlatform, 1); }},
    {"directory.identifier", "behind it",
     [](Spoiled& it) { it.putBig32(it.directory(1) + kIdentifier, 0xffff); }},
    {"directory.identifier", "none",
     [](Spoiled& it) { it.putBig32(it.directory(0) + kIdentifier, 0); }},
    {"directory.team", "behind it",
     [](Spoiled& it) { it.putBig32(it.directory(1) + kTeam, 0xffff); }},
    {"directory.flags", "the kernel's own",
     [](Spoiled& it) { it.putBig32(it.directory(0) + kFlags, 0x4000002); }},
    {"directory.limit",
     "into the signature",
     [](Spoiled& it) { both(it, kLimit, static_cast<uint32_t>(it.signature()) + 1); },
     {"directory.pages"}},
    {"directory.all-pages", "one less",
     [](Spoiled& it) { both(it, kCodeSlots, big32(it, it.directory(0) + kCodeSlots) - 1); }},
    {"directory.text",
     "a part of code",
     [](Spoiled& it) { both(it, kLimit, 0x3010); },
     {"directory.all-pages", "directory.link-edit", "directory.pages"}},
    {"directory.link-edit",
     "not covered",
     [](Spoiled& it) { both(it, kLimit, 0x5000); },
     {"directory.all-pages"},
     nullptr,
     true,
     {"directory.text"}},
    {"directory.pages",
     "a byte of code",
     [](Spoiled& it) { flip(it, it.header("__text").offset); },
     {},
     nullptr,
     false},
    {"directory.pages",
     "a byte of names",
     [](Spoiled& it) { flip(it, (*it.sound.image.symbolTable)[2]); },
     {},
     nullptr,
     false},
    {"directory.pages",
     "the first digest",
     [](Spoiled& it) { flip(it, digest(it, 0, 0)); },
     {},
     nullptr,
     false},
    {"directory.pages",
     "the last digest",
     [](Spoiled& it) { flip(it, digest(it, 1, it.sound.signature.directories[1].codeSlots) - 1); },
     {},
     nullptr,
     false},
    {"directory.parts", "of requirements", [](Spoiled& it) { flip(it, digest(it, 0, -2)); }},
    {"directory.parts", "a property list that is not there",
     [](Spoiled& it) { flip(it, digest(it, 1, -1)); }},
    {"directory.parts", "other requirements", [](Spoiled& it) { flip(it, partAt(it, 2) + 11); }},
    {"directory.entitlements", "without a digest",
     [](Spoiled& it) { it.putBig32(it.signature() + kIndex + 3 * kEntry, 5); }},
};

}  // namespace

std::span<const Spoiler> signatureSpoilers() { return kSignatureSpoilers; }

}  // namespace device_test
