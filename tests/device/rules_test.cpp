// varnix-check: a library that obeys every rule, and for each rule copies that break it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "device/spoilers/spoiled.h"
#include "macho/files.h"
#include "rules/check.h"
#include "signer/sign.h"

namespace {

using namespace device_test;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;

const std::string kCheck = VARNIX_DEVICE_TOOLS "/varnix-check ";

struct Said {
  int status = 0;
  std::vector<std::string> rules;  ///< for the slice, in the order of the lines
  std::string output;
};

/// What the command says about a file: lines of "FILE: SLICE: RULE: words". The rules are those of
/// the slice, or of all slices if none is given.
Said check(const Bytes& bytes, const std::string& slice = "") {
  const Folder folder;
  const std::string path = folder / "it.dylib";
  device::writeFile(path, bytes);
  const Ran ran = run(kCheck + stubOptions() + " " + path);
  Said said{WEXITSTATUS(ran.status), {}, ran.output};
  std::istringstream lines(ran.output);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_THAT(line, StartsWith(path + ": "));
    const auto parts = findAll(line.substr(path.size()), "^: ([^:]+): ([a-z0-9.-]+): .");
    EXPECT_EQ(parts.size(), 1u) << line;
    if (parts.size() == 1 && (slice.empty() || parts[0][1] == slice))
      said.rules.push_back(parts[0][2]);
  }
  return said;
}

/// Each copy breaks its rule, and only the others that the table names.
void expectEachToBite(std::span<const Spoiler> spoilers) {
  for (const std::string architecture : {"armv7", "arm64"}) {
    const Sound& sound = soundLibrary(architecture);
    for (const Spoiler& spoiler : spoilers) {
      if (spoiler.only != nullptr && spoiler.only != architecture) continue;
      const std::string name = architecture + " " + spoiler.rule + ": " + spoiler.how;
      Spoiled it(sound);
      spoiler.spoil(it);
      ASSERT_NE(it.bytes, sound.bytes) << name << ": nothing was spoiled";
      if (spoiler.isSealed) it.seal();
      const Said said = check(it.bytes);
      EXPECT_EQ(said.status, 1) << name;
      std::vector<std::string> wanted = spoiler.also;
      wanted.emplace_back(spoiler.rule);
      if (architecture == "arm64")
        wanted.insert(wanted.end(), spoiler.also64.begin(), spoiler.also64.end());
      EXPECT_THAT(said.rules, UnorderedElementsAreArray(wanted)) << name << "\n" << said.output;
    }
  }
}

TEST(DeviceRules, ASoundLibraryKeepsToAll) {
  for (const std::string architecture : {"armv7", "arm64"}) {
    const Said said = check(soundLibrary(architecture).bytes);
    EXPECT_EQ(said.status, 0);
    EXPECT_EQ(said.output, "");
    // There is something of every kind; otherwise rules would have nothing to check.
    const Sound& sound = soundLibrary(architecture);
    EXPECT_EQ(sound.classes.classes.size(), 3u);
    EXPECT_EQ(sound.classes.categories.size(), 2u);
    EXPECT_EQ(sound.classes.strings.size(), 3u);
    EXPECT_EQ(sound.classes.blocks.size(), 1u);
    EXPECT_EQ(sound.classes.descriptors.size(), 1u);
    EXPECT_EQ(sound.fixups.exports.size(), 2u);
    EXPECT_EQ(sound.signature.directories.size(), 2u);
    EXPECT_EQ(sound.fixups.lazyBinds.words.empty(), architecture == "armv7");
  }
}

TEST(DeviceRules, ABundleHasNoName) {
  for (const std::string architecture : {"armv7", "arm64"}) {
    const Bytes bundle = soundBundle(architecture);
    EXPECT_EQ(device::Reader(bundle).u32(12), 8u);
    const Said said = check(bundle);
    EXPECT_EQ(said.status, 0) << architecture;
    EXPECT_EQ(said.output, "");
  }
}

/// An Objective-C file, compiled and linked as other people do.
Bytes compiledLibrary(const std::string& architecture, const std::string& flags) {
  const Folder folder;
  const std::string object = folder / "it.o", library = folder / "it";
  printed("clang-19 --target=" + architecture + "-apple-ios9.3 -Os -fblocks -fobjc-exceptions " +
          "-fno-autolink -fvisibility=hidden " + flags + " -c " VARNIX_DEVICE_COMPILED " -o " +
          object);
  printed(VARNIX_DEVICE "/platform-stubs " + (folder / "stubs"));
  writeText(folder / "exports", "_compiledClass\n_compiledProtocol\n");
  printed((architecture == "arm64"
               ? "ld64.lld-19 -dylib -arch arm64 -platform_version ios 9.3 9.3 -fatal_warnings "
                 "-no_fixup_chains -no_adhoc_codesign -dead_strip_dylibs -install_name "
                 "/Library/it.dylib "
                 "-exported_symbols_list "
               : VARNIX_DEVICE_TOOLS "/varnix-link-armv7 --dead-strip-dylibs --current-version 1.0 "
                                     "--install-name /Library/it.dylib --exports ") +
          (folder / "exports") + " -o " + library + " " + object + " " + (folder / "stubs") +
          "/*.tbd");
  return device::sign(device::readFile(library), "com.example.compiled");
}

TEST(DeviceRules, WhatCompilersWriteKeepsToThePlatforms) {
  const Folder folder;
  for (const std::string architecture : {"armv7", "arm64"}) {
    for (const std::string flags : {"-fobjc-arc", "-fno-objc-arc -fobjc-weak"}) {
      device::writeFile(folder / "it.dylib", compiledLibrary(architecture, flags));
      const Ran all = run(kCheck + (folder / "it.dylib"));
      EXPECT_EQ(WEXITSTATUS(all.status), 1);
      EXPECT_THAT(all.output, HasSubstr("classes.no-protocols: Base: it does"));
      const Ran ran = run(kCheck + "--platform-only " + (folder / "it.dylib"));
      EXPECT_EQ(ran.status, 0) << architecture << " " << flags;
      EXPECT_EQ(ran.output, "");
    }
  }
}

TEST(DeviceRules, ALineNamesItsSlice) {
  Bytes both = soundUniversalFile();
  const device::Reader file(both);
  const uint32_t second = file.big32(28 + 8);
  // The second slice has 64-bit code.
  device::put32(both, second + 12, 2);
  EXPECT_THAT(check(both, "arm64").rules, Contains("header.type"));
  EXPECT_THAT(check(both, "armv7").rules, IsEmpty());
}

TEST(DeviceRules, CommandsAndLibraries) { expectEachToBite(commandSpoilers()); }
TEST(DeviceRules, SegmentsAndSections) { expectEachToBite(segmentSpoilers()); }
TEST(DeviceRules, RebasesAndBinds) { expectEachToBite(fixupSpoilers()); }
TEST(DeviceRules, LazyPointersExportsAndInitialisers) { expectEachToBite(codeSpoilers()); }
TEST(DeviceRules, Classes) { expectEachToBite(classSpoilers()); }
TEST(DeviceRules, CategoriesAndConstants) { expectEachToBite(constantSpoilers()); }
TEST(DeviceRules, MethodsAndVariables) { expectEachToBite(memberSpoilers()); }
TEST(DeviceRules, Signatures) { expectEachToBite(signatureSpoilers()); }

TEST(DeviceRules, FilesWithTwoSlices) {
  const Bytes sound = soundUniversalFile();
  EXPECT_EQ(check(sound).output, "");
  for (const UniversalSpoiler& spoiler : universalSpoilers()) {
    Bytes bytes = sound;
    spoiler.spoil(bytes);
    ASSERT_NE(bytes, sound) << spoiler.how;
    const Said said = check(bytes, "file");
    EXPECT_EQ(said.status, 1);
    EXPECT_THAT(said.output, HasSubstr(std::string(": ") + spoiler.rule + ": ")) << spoiler.how;
    std::vector<std::string> wanted = spoiler.also;
    if (std::string(spoiler.rule).starts_with("universal.")) wanted.emplace_back(spoiler.rule);
    EXPECT_THAT(said.rules, UnorderedElementsAreArray(wanted)) << spoiler.how << "\n"
                                                               << said.output;
  }
}

TEST(DeviceRules, EveryRuleIsShownToBite) {
  std::set<std::string> spoiled, listed;
  for (const auto spoilers :
       {commandSpoilers(), segmentSpoilers(), fixupSpoilers(), codeSpoilers(), classSpoilers(),
        constantSpoilers(), memberSpoilers(), signatureSpoilers()})
    for (const Spoiler& each : spoilers) spoiled.insert(each.rule);
  for (const UniversalSpoiler& each : universalSpoilers()) spoiled.insert(each.rule);
  for (const auto& line : findAll(printed(kCheck + "--rules"), "([a-z0-9.-]+) +[A-Z_][^\n]+\\.\n"))
    EXPECT_TRUE(listed.insert(line[1]).second) << line[1] << " is listed twice";
  EXPECT_GT(listed.size(), 150u);
  EXPECT_EQ(spoiled, listed);
}

/// Changes a few bytes, half of the time where they matter most.
Bytes damaged(const Bytes& bytes, std::mt19937& random) {
  constexpr uint8_t edges[] = {0, 1, 0x7f, 0x80, 0xff};
  Bytes result = bytes;
  for (uint32_t count = random() % 4 + 1; count > 0; --count) {
    const size_t limit = random() % 2 == 0 ? 2200 : result.size();
    uint8_t& byte = result[random() % limit];
    byte = random() % 2 == 0 ? edges[random() % std::size(edges)] : static_cast<uint8_t>(random());
  }
  return result;
}

TEST(DeviceRules, EveryDamageIsSeen) {
  std::mt19937 random(20163);
  for (const std::string architecture : {"armv7", "arm64"}) {
    const Bytes& sound = soundLibrary(architecture).bytes;
    const device::Offers none;
    // Any change before the signature breaks a digest. Changes after that must be found without
    // digests.
    const size_t end = soundLibrary(architecture).signature.table->offset;
    for (int i = 0; i < 1500; ++i) {
      const Bytes bytes = damaged(sound, random);
      const bool isChanged =
          !std::equal(bytes.begin(), bytes.begin() + static_cast<long>(end), sound.begin());
      EXPECT_TRUE(!isChanged || !device::checkLibrary(bytes, none).empty()) << i;
    }
    for (size_t size = 0; size < sound.size(); size += 37)
      EXPECT_FALSE(device::checkLibrary(std::span(sound).first(size), none).empty()) << size;
  }
}

TEST(DeviceRules, DamageThatWasSigned) {
  std::mt19937 random(20164);
  for (const std::string architecture : {"armv7", "arm64"}) {
    int found = 0;
    for (int i = 0; i < 1500; ++i) {
      Spoiled it(soundLibrary(architecture));
      it.bytes = damaged(it.bytes, random);
      it.seal();
      found += device::checkLibrary(it.bytes).empty() ? 0 : 1;
    }
    // Both outcomes have occurred: code may contain anything, load commands may not.
    EXPECT_GT(found, 500);
    EXPECT_LT(found, 1500);
  }
}

TEST(DeviceRules, WhatCannotBeRead) {
  const Folder folder;
  const Ran missing = run(kCheck + (folder / "missing"));
  EXPECT_EQ(WEXITSTATUS(missing.status), 2);
  EXPECT_THAT(missing.output, HasSubstr("varnix-check: " + (folder / "missing")));
  EXPECT_EQ(WEXITSTATUS(run(kCheck).status), 2);
  EXPECT_EQ(WEXITSTATUS(run(kCheck + "--unknown").status), 2);
  writeText(folder / "stub.tbd", "no stub");
  device::writeFile(folder / "it", soundLibrary("arm64").bytes);
  const Ran stub = run(kCheck + (folder / "it") + " --stub " + (folder / "stub.tbd"));
  EXPECT_EQ(WEXITSTATUS(stub.status), 2);
  EXPECT_THAT(stub.output, HasSubstr("stub.tbd: "));
}

TEST(DeviceRules, VersionsStandAboveStubs) {
  const Folder folder;
  device::writeFile(folder / "it", soundLibrary("arm64").bytes);
  const std::string command = kCheck + (folder / "it") + " --versions " + (folder / "versions");
  writeText(folder / "versions", "# name, version\n/usr/lib/libSystem.B.dylib\t1\t1226\n");
  EXPECT_EQ(run(command + stubOptions()).status, 0);
  writeText(folder / "versions", "/usr/lib/libSystem.B.dylib\t0.9.1\n");
  const Ran ran = run(command + stubOptions());
  EXPECT_EQ(WEXITSTATUS(ran.status), 1);
  EXPECT_THAT(ran.output, HasSubstr("arm64: libraries.compatibility: /usr/lib/libSystem.B.dylib: "
                                    "1.0.0, but it has 0.9.1\n"));
  for (const char* wrong :
       {"/usr/lib/libSystem.B.dylib 1\n", "/usr/lib/libSystem.B.dylib\tnew\n"}) {
    writeText(folder / "versions", wrong);
    EXPECT_EQ(WEXITSTATUS(run(command).status), 2);
  }
}

TEST(DeviceRules, AMissingFileHidesNoOther) {
  const Folder folder;
  writeText(folder / "empty", "");
  const Ran ran = run(kCheck + (folder / "missing") + " " + (folder / "empty"));
  EXPECT_EQ(WEXITSTATUS(ran.status), 2);
  EXPECT_THAT(ran.output, HasSubstr((folder / "empty") + ": file: header.size: 0 bytes"));
}

}  // namespace
