// Ways to break the rules of files with two slices. The first slice is armv7's.
#include "device/spoilers/spoiled.h"

namespace device_test {

namespace {

constexpr uint64_t kFirst = 8, kSecond = 28;

uint32_t field(const Bytes& bytes, uint64_t place) { return device::Reader(bytes).big32(place); }

void put(Bytes& bytes, uint64_t place, uint32_t value) {
  device::put32(bytes, place, __builtin_bswap32(value));
}

const UniversalSpoiler kUniversalSpoilers[] = {
    {"universal.table", "5000 slices", [](Bytes& bytes) { put(bytes, 4, 5000); }},
    {"universal.table", "none", [](Bytes& bytes) { put(bytes, 4, 0); }},
    {"universal.inside", "longer than the file",
     [](Bytes& bytes) { put(bytes, kSecond + 12, static_cast<uint32_t>(bytes.size())); }},
    {"universal.page",
     "4 KiB along",
     [](Bytes& bytes) { put(bytes, kFirst + 8, 0x5000); },
     {"universal.processor"}},
    {"universal.apart", "longer than up to the next",
     [](Bytes& bytes) { put(bytes, kFirst + 12, field(bytes, kSecond + 8)); }},
    {"universal.processor",
     "another subtype",
     [](Bytes& bytes) { put(bytes, kFirst + 4, 11); },
     {"universal.both"}},
    {"universal.once",
     "two for armv7",
     [](Bytes& bytes) {
       put(bytes, kSecond, 12);
       put(bytes, kSecond + 4, 9);
     },
     {"universal.processor", "universal.both"}},
    {"universal.both", "armv7s alone",
     [](Bytes& bytes) {
       put(bytes, kFirst + 4, 11);
       device::put32(bytes, field(bytes, kFirst + 8) + 8, 11);
     }},
    {"header.size", "a small slice", [](Bytes& bytes) { put(bytes, kFirst + 12, 100); }},
    {"file.whole",
     "cut short after four bytes",
     [](Bytes& bytes) { bytes.resize(6); },
     {"file.whole"}},
};

}  // namespace

std::span<const UniversalSpoiler> universalSpoilers() { return kUniversalSpoilers; }

}  // namespace device_test
