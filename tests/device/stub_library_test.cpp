// Text stubs and versions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/toolbox.h"
#include "linker/stub_library.h"
#include "macho/error.h"
#include "macho/files.h"
#include "macho/version.h"

namespace {

using namespace varnix::device;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kHead = "--- !tapi-tbd\ntbd-version: 4\ntargets: [ armv7-ios, arm64-ios ]\n";

std::string refusal(const std::string& text) {
  try {
    readStubLibrary(text);
  } catch (const Error& error) {
    return error.what();
  }
  return {};
}

TEST(DeviceStubLibrary, OffersWhatItListsForTheTarget) {
  const std::string text = kHead + R"(install-name: /usr/lib/it.dylib
current-version: 1280.38
compatibility-version: 150
exports:
  - targets: [ armv7-ios, arm64-ios ]
    symbols: [ _both, '_OBJC_CLASS_$_It' ]
  - targets: [ armv7-ios ]
    symbols: [ _narrow ]
  - targets: [ arm64-ios ]
    symbols: [ _wide ]
...
)";
  const StubLibrary library = readStubLibrary(text);
  EXPECT_EQ(library.installName, "/usr/lib/it.dylib");
  EXPECT_EQ(library.currentVersion, 1280u << 16 | 38 << 8);
  EXPECT_EQ(library.compatibilityVersion, 150u << 16);
  EXPECT_THAT(library.symbols, ElementsAre("_OBJC_CLASS_$_It", "_both", "_narrow"));
  EXPECT_THAT(readStubLibrary(text, "arm64-ios").symbols,
              ElementsAre("_OBJC_CLASS_$_It", "_both", "_wide"));
  EXPECT_THAT(readStubLibrary(text, "").symbols,
              ElementsAre("_OBJC_CLASS_$_It", "_both", "_narrow", "_wide"));
}

TEST(DeviceStubLibrary, OnlyTheNameIsNeeded) {
  const StubLibrary library = readStubLibrary(kHead + "install-name: /it\n");
  EXPECT_EQ(library.currentVersion, 0x10000u);
  EXPECT_TRUE(library.symbols.empty());
}

TEST(DeviceStubLibrary, RefusesWhatItDoesNotHandle) {
  const std::string name = "install-name: /it\n";
  EXPECT_EQ(refusal(kHead), "no install-name");
  EXPECT_EQ(refusal(kHead + name + "reexported-libraries: []\n"),
            "reexported-libraries is not handled");
  EXPECT_EQ(
      refusal(kHead + name + "exports:\n  - targets: [ armv7-ios ]\n    weak-symbols: [ _a ]\n"),
      "exports: weak-symbols is not handled");
  EXPECT_EQ(refusal("--- !tapi-tbd\ntbd-version: 3\ntargets: [ armv7-ios ]\n" + name),
            "not a text stub of version 4");
  EXPECT_EQ(refusal("tbd-version: 4\ntargets: [ armv7-ios ]\n" + name),
            "not a text stub of version 4");
  EXPECT_EQ(refusal("--- !tapi-tbd\ntbd-version: 4\ntargets: [ arm64-ios ]\n" + name),
            "not for armv7-ios");
  EXPECT_EQ(refusal(kHead + name + "current-version: newest\n"), "not a version: newest");
  EXPECT_EQ(refusal(kHead + name + "---\na: b\n"), "not one document");
  EXPECT_EQ(refusal(""), "not one document");
  // The parsing library takes these for endless documents.
  EXPECT_EQ(refusal("--- !tats-ios, ar&a -ios ]os, ar&a -ios ]"), "not one document");
}

TEST(DeviceStubLibrary, RefusesDamagedText) {
  for (const char* text :
       {"[", "--- !tapi-tbd [", "--- !tapi-tbd\ntargets: {a: [b}", "\t", "\x01",
        "--- !tapi-tbd\nexports: 5\n", "--- !tapi-tbd\n- 1\n", "--- !tapi-tbd\ntbd-version: four\n",
        "--- !tapi-tbd\n? [a]\n: b\n", "--- !tapi-tbd\ntargets: [[a]]\n",
        "--- !tapi-tbd\nexports:\n  - 3\n", "&a [*a]"})
    EXPECT_NE(refusal(text), "") << text;
}

TEST(DeviceStubLibrary, VersionsHaveUpToThreeParts) {
  EXPECT_EQ(parseVersion("9.3"), 0x90300u);
  EXPECT_EQ(parseVersion("2.0.1"), 0x20001u);
  EXPECT_EQ(parseVersion("65535.255.255"), 0xffffffffu);
  for (const char* text : {"", ".", "1.", ".1", "1..2", "1.2.3.4", "65536", "1.256", "1.2.256",
                           "-1", "1a", " 1", "99999999999"})
    EXPECT_THROW(parseVersion(text), Error) << text;
  EXPECT_EQ(versionText(0x90300), "9.3.0");
  EXPECT_EQ(versionText(0xffffffff), "65535.255.255");
}

/// What other people's binaries are linked against, by install name.
std::map<std::string, StubLibrary> platformStubs(const std::string& target) {
  const device_test::Folder folder;
  device_test::printed(VARNIX_DEVICE "/platform-stubs " + (folder / "stubs"));
  std::map<std::string, StubLibrary> stubs;
  for (const auto& file : std::filesystem::directory_iterator(folder / "stubs")) {
    StubLibrary stub = readStubLibrary(readTextFile(file.path()), target);
    stubs[stub.installName] = stub;
  }
  return stubs;
}

TEST(DeviceStubLibrary, ThePlatformsAreMadeFromTheFacts) {
  auto stubs = platformStubs("armv7-ios");
  const StubLibrary& runtime = stubs.at("/usr/lib/libobjc.A.dylib");
  EXPECT_EQ(runtime.compatibilityVersion, 0x10000u);
  EXPECT_EQ(runtime.currentVersion, 228u << 16);
  for (const char* symbol : {"_OBJC_CLASS_$_NSObject", "_objc_msgSend", "_objc_storeStrong",
                             "_objc_msgSendSuper2_stret", "___objc_personality_v0"})
    EXPECT_TRUE(runtime.symbols.contains(symbol)) << symbol;
  EXPECT_TRUE(stubs.at("/System/Library/Frameworks/UIKit.framework/UIKit")
                  .symbols.contains("_OBJC_METACLASS_$_UISwitch"));
  EXPECT_TRUE(stubs.at("/usr/lib/libSystem.B.dylib").symbols.contains("__Unwind_SjLj_Register"));
  EXPECT_FALSE(platformStubs("arm64-ios")
                   .at("/usr/lib/libobjc.A.dylib")
                   .symbols.contains("_objc_msgSendSuper2_stret"));
}

TEST(DeviceStubLibrary, NoTwoOfThePlatformsOfferTheSame) {
  std::map<std::string, std::string> homes;
  for (const auto& [name, stub] : platformStubs("armv7-ios"))
    for (const std::string& symbol : stub.symbols)
      EXPECT_TRUE(homes.emplace(symbol, name).second) << symbol << " in " << homes[symbol] << name;
  EXPECT_GT(homes.size(), 300u);
}

}  // namespace
