// Damaged libraries: the loader refuses them or loads them, and nothing else happens.
#include <gtest/gtest.h>

#include <random>

#include "device/loadable.h"
#include "loader/exports.h"
#include "loader/fixups.h"
#include "loader/mapped_image.h"
#include "macho/error.h"

namespace {

using namespace device_test;
using device::Architecture;
using device::Reader;

char anything[64];

/// Whether all of it could be read; arm64's is also mapped.
bool loads(const Bytes& library, Architecture architecture) {
  try {
    const auto slice = device::sliceFor(architecture, Reader(library));
    const device::ImageFile image = device::readImageFile(architecture, slice);
    device::readRebases(image);
    device::readBinds(image);
    device::readWeakBinds(image);
    device::readExports(image);
    if (architecture == Architecture::arm64)
      const device::MappedImage mapped(image, [](std::string_view) { return anything; });
    return true;
  } catch (const device::Error&) {
    return false;
  }
}

Bytes mutated(Bytes bytes, std::mt19937& random) {
  const auto below = [&](size_t limit) { return random() % limit; };
  // The loader's tables are at the end, the commands at the start.
  const size_t from = below(2) == 0 ? 0 : bytes.size() - std::min<size_t>(bytes.size(), 1024);
  const size_t range = std::min<size_t>(bytes.size() - from, 1024);
  for (size_t i = 0, count = 1 + below(4); i < count; ++i) {
    uint8_t& byte = bytes[from + below(range)];
    switch (below(4)) {
      case 0:
        byte = static_cast<uint8_t>(random());
        break;
      case 1:
        byte ^= static_cast<uint8_t>(1U << below(8));
        break;
      case 2:
        byte = 0xff;
        break;
      default:
        ++byte;
    }
  }
  if (below(16) == 0) bytes.resize(below(bytes.size()));
  return bytes;
}

void survive(const Bytes& whole, Architecture architecture, int times) {
  ASSERT_TRUE(loads(whole, architecture));
  std::mt19937 random(20260101);
  int loaded = 0;
  for (int i = 0; i < times; ++i) loaded += loads(mutated(whole, random), architecture) ? 1 : 0;
  // Otherwise only the first checks were tried, or nothing was damaged.
  EXPECT_GT(loaded, times / 20);
  EXPECT_LT(loaded, times);
}

TEST(DamagedLibraries, For64BitsAreRefusedOrLoaded) {
  survive(loadable(), Architecture::arm64, 4000);
}

TEST(DamagedLibraries, For32BitsAreRefusedOrRead) {
  survive(linked(assemble(".syntax unified\n.thumb\n.globl _f\n.thumb_func\n_f: bx lr\n"
                          ".data\n.globl _d\n_d: .long _d, _imported+8, _d, _other\n"),
                 options({"_f", "_d"})),
          Architecture::armv7, 20000);
}

TEST(DamagedLibraries, CutAnywhereAreRefusedOrRead) {
  const Bytes whole = loadable();
  int loaded = 0;
  for (size_t size = 0; size < whole.size(); size += 7) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    loaded += loads(cut, Architecture::arm64) ? 1 : 0;
  }
  EXPECT_LT(loaded, static_cast<int>(whole.size() / 70));
}

}  // namespace
