// What the loader says about the libraries that an image needs, and what it binds if one is
// missing.
#include <gmock/gmock.h>

#include "device/loadable.h"
#include "loader/mapped_image.h"
#include "loader/needed.h"
#include "macho/error.h"
#include "macho/version.h"

namespace {

using namespace device_test;
using device::Architecture;
using device::ImageFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

/// The reason for refusing; empty if it is accepted.
template <class Call>
std::string whyNot(Call call) {
  try {
    call();
  } catch (const device::Error& error) {
    return error.what();
  }
  return {};
}

/// An image that needs two libraries, of which the second may be missing.
ImageFile asking(uint32_t first, uint32_t second) {
  ImageFile image = plainImage(Architecture::armv7);
  image.installName = "/Library/it.dylib";
  image.libraries[0].version = first;
  image.libraries[1].version = second;
  return image;
}

/// "there" or "missing" for each, or the refusal.
std::string found(ImageFile image, const device::LibraryVersions& offered) {
  const std::string refusal = whyNot([&] {
    device::findNeeded(image, [&](std::string_view name) -> std::optional<uint32_t> {
      const auto at = offered.find(name);
      return at == offered.end() ? std::nullopt : std::optional(at->second);
    });
  });
  if (!refusal.empty()) return refusal;
  std::string words;
  for (const auto& library : image.libraries) words += library.isMissing ? "missing " : "there ";
  return words;
}

constexpr const char* kFirst = "/usr/lib/first.dylib";
constexpr const char* kSecond = "/usr/lib/second.dylib";

TEST(Needed, AVersionThatIsTheSameOrLater) {
  EXPECT_EQ(found(asking(0x10000, 0), {{kFirst, 0x10000}, {kSecond, 0}}), "there there ");
  EXPECT_EQ(found(asking(0x10000, 0), {{kFirst, 0x10001}, {kSecond, 0x960000}}), "there there ");
}

TEST(Needed, AnEarlierOneIsRefusedInTheLoadersWords) {
  EXPECT_EQ(
      found(asking(0x10203, 0), {{kFirst, 0x10202}, {kSecond, 0}}),
      "Library not loaded: /usr/lib/first.dylib, Referenced from: /Library/it.dylib, Reason: "
      "Incompatible library version: it.dylib requires version 1.2.3 or later, but first.dylib "
      "provides version 1.2.2");
  EXPECT_EQ(found(asking(0x10000, 0), {{kSecond, 0}}),
            "Library not loaded: /usr/lib/first.dylib, Referenced from: /Library/it.dylib, Reason: "
            "image not found");
}

TEST(Needed, WhatMayBeMissingIsMissingThen) {
  EXPECT_EQ(found(asking(0, 0x10000), {{kFirst, 0}}), "there missing ");
  EXPECT_EQ(found(asking(0, 0x10000), {{kFirst, 0}, {kSecond, 0}}), "there missing ");
  EXPECT_EQ(found(asking(0, 0x10000), {{kFirst, 0}, {kSecond, 0x10000}}), "there there ");
}

TEST(Needed, NothingIsBoundToWhatIsMissing) {
  const Bytes library = loadable();
  ImageFile file = device::readImageFile(Architecture::arm64, device::Reader(library));
  file.libraries = {{kFirst, false}, {kSecond, true}};
  device::Writer binds;
  for (uint8_t segment = 0; segment < file.segments.size(); ++segment) {
    if (file.segments[segment].name != "__DATA") continue;
    binds.u8(device::macho::kBindSetTypeImm | device::macho::kPointer);
    binds.u8(device::macho::kBindSetDylibOrdinalImm | 2);
    binds.u8(device::macho::kBindSetSymbolTrailingFlagsImm);
    binds.text("_imported");
    binds.u8(static_cast<uint8_t>(device::macho::kBindSetSegmentAndOffsetUleb | segment));
    binds.uleb(file.section("__data")->address - file.segments[segment].address);
    binds.u8(device::macho::kBindDo);
  }
  file.binds = device::Reader(binds.written());
  file.lazyBinds = {};
  static char there[8];
  const auto bound = [&](bool isMissing) {
    file.libraries[1].isMissing = isMissing;
    const device::MappedImage image(file, [](std::string_view) -> void* { return there; });
    return *static_cast<void**>(image.exported("_table"));
  };
  EXPECT_EQ(bound(false), there);
  EXPECT_EQ(bound(true), nullptr);
}

TEST(Needed, FilesSayVersions) {
  const Bytes library = loadable();
  EXPECT_EQ(device::readImageFile(Architecture::arm64, device::Reader(library)).version, 0u);
  device::LinkOptions with = options();
  with.libraries[1].compatibilityVersion = 0x2a0001;
  with.libraries[1].isWeak = true;
  const Bytes narrow =
      linked(assemble(".section __DATA,__data\n.globl _a\n_a: .long _other\n"), with);
  const ImageFile image = device::readImageFile(Architecture::armv7, device::Reader(narrow));
  EXPECT_EQ(image.version, 0x10000u);
  ASSERT_EQ(image.libraries.size(), 2u);
  EXPECT_EQ(image.libraries[0].version, 0x10000u);
  EXPECT_FALSE(image.libraries[0].isWeak);
  EXPECT_EQ(image.libraries[1].version, 0x2a0001u);
  EXPECT_TRUE(image.libraries[1].isWeak);
}

TEST(Needed, ImportsFromWhatMayBeMissingAreWeak) {
  device::LinkOptions with = options();
  with.libraries[1].isWeak = true;
  const std::string source = ".section __DATA,__data\n.globl _a\n_a: .long _other, _imported\n";
  const std::string binds = ReadBack(linked(assemble(source), with)).objdump("--macho --bind");
  EXPECT_THAT(binds, HasSubstr("_other (weak_import)"));
  EXPECT_THAT(binds, testing::Not(HasSubstr("_imported (weak_import)")));
}

TEST(Needed, VersionsAreReadFromTheFacts) {
  EXPECT_THAT(device::readLibraryVersions("# a\tb\n/usr/lib/a.dylib\t150\t1290.11\n\n/b\t0.0.0\t0"),
              ElementsAre(Pair("/b", 0u), Pair("/usr/lib/a.dylib", 0x960000u)));
  const auto refused = [](const char* text) {
    return whyNot([&] { device::readLibraryVersions(text); });
  };
  EXPECT_EQ(refused("/a\tnew\t1"), "not a version: new: /a\tnew\t1");
  EXPECT_EQ(refused("/a"), "not a version: : /a");
  EXPECT_EQ(refused("a\t1\t1"), "not a path: a\t1\t1");
  EXPECT_EQ(refused("/a\t1\t1\n/a\t2\t2"), "a second time: /a\t2\t2");
}

}  // namespace
