// Damaged object files and libraries: each is refused or handled, and nothing is read or written
// beyond its bytes, which the sanitizers check.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "device/toolbox.h"
#include "macho/error.h"
#include "macho/files.h"
#include "signer/sign.h"

namespace {

using namespace device_test;
namespace device = varnix::device;

const Bytes& sampleObject() {
  static const Bytes object = [] {
    const Folder folder;
    printed("clang++-19 --target=armv7-apple-ios9.3 -mthumb -std=c++20 -Os -fno-exceptions -c " +
            std::string(VARNIX_DEVICE_SAMPLE) + " -o " + (folder / "it.o"));
    return device::readFile(folder / "it.o");
  }();
  return object;
}

const Bytes& sampleLibrary() {
  static const Bytes library = device::sign(linked(sampleObject(), options({"_entry"})), "it");
  return library;
}

/// Links and signs: if linking works, the result must be a valid library.
bool survives(const Bytes& object) {
  Bytes library;
  try {
    library = linked(object, options({"_entry"}));
  } catch (const device::Error&) {
    return false;
  }
  device::verify(device::sign(library, "it"), "it");
  return true;
}

bool canBeSigned(const Bytes& library) {
  try {
    device::verify(device::sign(library, "it"), "it");
    return true;
  } catch (const device::Error&) {
    return false;
  }
}

/// A few numbers changed, some to extreme values.
Bytes mutated(const Bytes& bytes, std::mt19937& random) {
  constexpr uint32_t edges[] = {0,          1,          0x7f,       0x80,      0xff,
                                0x7fffffff, 0x80000000, 0xfffffffc, 0xffffffff};
  Bytes result = bytes;
  for (uint32_t count = random() % 4 + 1; count > 0; --count) {
    // The load commands, which say where everything is, are only a small part of the file.
    const size_t limit = random() % 2 == 0 ? std::min<size_t>(result.size(), 1200) : result.size();
    const size_t at = random() % (limit - 4);
    switch (random() % 4) {
      case 0:
        result[at] = static_cast<uint8_t>(random());
        break;
      case 1:
        result[at] ^= static_cast<uint8_t>(1u << random() % 8);
        break;
      case 2:
        device::put32(result, at & ~size_t{3}, edges[random() % std::size(edges)]);
        break;
      default:
        device::put32(result, at & ~size_t{3}, static_cast<uint32_t>(random() % 4096));
    }
  }
  return result;
}

TEST(DeviceMalformed, TheSampleLinks) {
  EXPECT_TRUE(survives(sampleObject()));
  const ReadBack library(sampleLibrary());
  EXPECT_EQ(library.exports().size(), 1u);
  EXPECT_NE(library.objdump("--macho --bind").find("_other (weak_import)"), std::string::npos);
}

TEST(DeviceMalformed, ObjectsCutShort) {
  const Bytes& object = sampleObject();
  for (size_t size = 0; size + 1 < object.size(); ++size)
    EXPECT_FALSE(survives(Bytes(object.begin(), object.begin() + static_cast<long>(size)))) << size;
}

TEST(DeviceMalformed, ObjectsDamaged) {
  std::mt19937 random(20161);
  int linkedCount = 0;
  constexpr int rounds = 20000;
  for (int i = 0; i < rounds; ++i) linkedCount += survives(mutated(sampleObject(), random)) ? 1 : 0;
  // Both outcomes have occurred.
  EXPECT_GT(linkedCount, rounds / 100);
  EXPECT_LT(linkedCount, rounds * 99 / 100);
}

TEST(DeviceMalformed, LibrariesCutShort) {
  const Bytes& library = sampleLibrary();
  for (size_t size = 0; size < library.size(); size += 7)
    EXPECT_FALSE(canBeSigned(Bytes(library.begin(), library.begin() + static_cast<long>(size))));
}

TEST(DeviceMalformed, LibrariesDamaged) {
  std::mt19937 random(20162);
  int signedCount = 0;
  constexpr int rounds = 2000;
  for (int i = 0; i < rounds; ++i)
    signedCount += canBeSigned(mutated(sampleLibrary(), random)) ? 1 : 0;
  EXPECT_GT(signedCount, rounds / 100);
  EXPECT_LT(signedCount, rounds * 99 / 100);
}

}  // namespace
