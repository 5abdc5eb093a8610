// The checks of the finished library and pane: each fails, with a message, for one that was spoiled
// for it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>

#include "device/toolbox.h"
#include "loader/image_file.h"
#include "macho/bytes.h"
#include "macho/files.h"
#include "signer/sign.h"

namespace {

using namespace device_test;
using testing::HasSubstr;
namespace device = varnix::device;
using namespace std::string_literals;

/// What device/build builds: the file, and where its slices are.
struct Binary {
  std::string file, slices, extension, identifier;
};
const Binary kLibrary{"Varnix.dylib", "", ".dylib", "com.quillmarsh.varnix2"};
const Binary kPane{"VarnixPrefs", "pane/", ".bundle", "com.quillmarsh.varnix2.prefs"};

const std::string kBuilt = VARNIX_DEVICE_BUILD;
const std::string kCheck = "VARNIX_TOOLS=" VARNIX_DEVICE_TOOLS " " VARNIX_DEVICE "/check ";

using Edit = std::function<void(Bytes&)>;

std::string slicePath(const std::string& architecture, const Binary& of) {
  return kBuilt + "/" + of.slices + architecture + of.extension;
}

Bytes slice(const std::string& architecture, const Binary& of = kLibrary) {
  return device::readFile(slicePath(architecture, of));
}

std::string otherThan(const std::string& architecture) {
  return architecture == "arm64" ? "armv7" : "arm64";
}

/// What the checks report about a binary with one slice replaced; nullopt if they pass.
std::optional<std::string> complaints(const std::string& architecture, const Bytes& replacement,
                                      const Binary& of = kLibrary) {
  const Folder folder;
  device::writeFile(folder / "slice", replacement);
  printed("llvm-lipo-19 -create " + (folder / "slice") + " " +
          slicePath(otherThan(architecture), of) + " -output " + (folder / of.file));
  const Ran ran = run(kCheck + (folder / of.file));
  return ran.status == 0 ? std::nullopt : std::optional(ran.output);
}

/// The same after an edit and a new signature, for each slice in turn.
void expectComplaint(const std::string& message, const Edit& edit, const Binary& of = kLibrary) {
  for (const std::string architecture : {"arm64", "armv7"}) {
    Bytes bytes = slice(architecture, of);
    edit(bytes);
    ASSERT_NE(bytes, slice(architecture, of)) << "nothing was spoiled";
    const auto said = complaints(architecture, device::sign(bytes, of.identifier), of);
    ASSERT_TRUE(said) << architecture << ": nobody noticed";
    EXPECT_THAT(*said, HasSubstr("device: " + of.file + ": " + architecture + ": " + message));
    EXPECT_THAT(*said, testing::Not(HasSubstr("signature")));
  }
}

bool isWide(const Bytes& bytes) { return device::Reader(bytes).u32(0) == 0xfeedfacf; }

/// The place of a load command.
size_t command(const Bytes& bytes, uint32_t kind) {
  const device::Reader file(bytes);
  size_t at = isWide(bytes) ? 32 : 28;
  for (uint32_t i = 0; i < file.u32(16); ++i, at += file.u32(at + 4))
    if (file.u32(at) == kind) return at;
  throw std::runtime_error("no such load command");
}

size_t segment(const Bytes& bytes, const std::string& name) {
  const device::Reader file(bytes);
  size_t at = isWide(bytes) ? 32 : 28;
  for (uint32_t i = 0; i < file.u32(16); ++i, at += file.u32(at + 4)) {
    const uint32_t kind = file.u32(at);
    if ((kind == 1 || kind == 0x19) && file.fixedText(at + 8, 16) == name) return at;
  }
  throw std::runtime_error("no segment " + name);
}

/// Replaces a text by another of the same length, everywhere.
Edit replacing(const std::string& old, const std::string& text) {
  EXPECT_EQ(old.size(), text.size());
  return [=](Bytes& bytes) {
    for (auto at = bytes.begin();;) {
      at = std::search(at, bytes.end(), old.begin(), old.end());
      if (at == bytes.end()) return;
      at = std::copy(text.begin(), text.end(), at);
    }
  };
}

Edit setting(uint32_t kind, size_t field, uint32_t value) {
  return [=](Bytes& bytes) { device::put32(bytes, command(bytes, kind) + field, value); };
}

TEST(DeviceChecks, PassWhatWasBuilt) {
  for (const std::string what : {"", "/Varnix.dylib", "/VarnixPrefs"}) {
    const Ran ran = run(kCheck + kBuilt + what);
    EXPECT_EQ(ran.status, 0) << ran.output;
    EXPECT_EQ(ran.output.find(" uses: ") != std::string::npos, what.empty()) << ran.output;
  }
}

TEST(DeviceChecks, WhatTheyAreNotFor) {
  for (const auto& [words, message] : std::map<std::string, std::string>{
           {kBuilt + "/arm64.dylib", "has the name of no binary that is built"},
           {kBuilt + "/none", "none is not there; make device builds it"},
           {"--only mips " + kBuilt + "/Varnix.dylib", "not an architecture: mips"},
           {"--only arm64 " + kBuilt, "--only takes a file"},
           {"--update-lists " + kBuilt + "/VarnixPrefs", "lists are of all binaries"}}) {
    const Ran ran = run(kCheck + words);
    EXPECT_NE(ran.status, 0) << words;
    EXPECT_THAT(ran.output, HasSubstr(message));
  }
}

TEST(DeviceChecks, BothArchitectures) {
  for (const Binary& binary : {kLibrary, kPane}) {
    const Folder folder;
    printed("cp " + slicePath("arm64", binary) + " " + (folder / binary.file));
    const Ran ran = run(kCheck + (folder / binary.file));
    EXPECT_NE(ran.status, 0);
    EXPECT_THAT(ran.output, HasSubstr("the architectures are not arm64 armv7"));
    EXPECT_EQ(run(kCheck + "--only arm64 " + (folder / binary.file)).status, 0);
  }
}

TEST(DeviceChecks, AFolderWithoutThePane) {
  const Folder folder;
  printed("cp " + kBuilt + "/Varnix.dylib " + kBuilt + "/uses-* " + (folder / ""));
  const Ran ran = run(kCheck + (folder / ""));
  EXPECT_NE(ran.status, 0);
  EXPECT_THAT(ran.output, HasSubstr("VarnixPrefs is not there; make device builds it"));
}

TEST(DeviceChecks, MinimumVersion) {
  expectComplaint("the minimum version is not 9.3", setting(0x25, 8, 0x90200));
  expectComplaint("the minimum version is not 9.3", setting(0x25, 8, 0xa0000));
  expectComplaint("the minimum version is not 9.3", setting(0x25, 0, 0x24));
}

TEST(DeviceChecks, LoaderInformation) {
  expectComplaint("commands.loader-info: LC_DYLD_INFO_ONLY is missing",
                  setting(0x80000022, 0, 0x7f));
}

TEST(DeviceChecks, ChainedFixups) {
  // An empty table of fixups instead of the one of data in code.
  expectComplaint("commands.known: ", [](Bytes& bytes) {
    const size_t at = command(bytes, 0x29);
    device::put32(bytes, at, 0x80000034);
    device::put32(bytes, at + 8, 0);
    device::put32(bytes, at + 12, 0);
  });
}

TEST(DeviceChecks, EncryptionAndUuid) {
  const Edit edit = [](Bytes& bytes) {
    const size_t at = command(bytes, 0x1b);
    device::put32(bytes, at, isWide(bytes) ? 0x2c : 0x2a);
    for (size_t field = 8; field < 24; field += 4) device::put32(bytes, at + field, 0);
    if (!isWide(bytes)) device::put32(bytes, at, 0x7f);
  };
  expectComplaint("no UUID", edit);
}

TEST(DeviceChecks, InstallName) {
  expectComplaint("the install name is not /Library",
                  replacing("DynamicLibraries/Varnix.dylib", "DynamicLibraries/Warnix.dylib"));
}

TEST(DeviceChecks, KindOfFile) {
  // A bundle has no name, so its command becomes one that nobody reads.
  expectComplaint("it is no dylib", [](Bytes& bytes) {
    constexpr size_t kType = 12;
    device::put32(bytes, kType, 8);
    device::put32(bytes, command(bytes, 0xd), 0x7f);
  });
}

TEST(DeviceChecks, ImageInfo) {
  expectComplaint("classes.image-info: missing", replacing("__objc_imageinfo", "__objc_imageinfa"));
}

TEST(DeviceChecks, Initialiser) {
  const std::string message = "not the functions that are to run at load, of which there are ";
  expectComplaint(message + "1", replacing("__mod_init_func", "__mod_init_fund"));
  // That of 32 bits takes words of four bytes.
  expectComplaint(message + "0", replacing("__objc_classlist", "__mod_init_func\0"s), kPane);
}

/// For the library that a load command names.
Edit demanding(const std::string& library, uint32_t version) {
  return [=](Bytes& bytes) {
    const device::Reader file(bytes);
    size_t at = isWide(bytes) ? 32 : 28;
    for (uint32_t i = 0; i < file.u32(16); ++i, at += file.u32(at + 4)) {
      const uint32_t kind = file.u32(at);
      if ((kind == 0xc || kind == 0x80000018) &&
          file.part(at, file.u32(at + 4)).text(24) == library)
        return device::put32(bytes, at + 20, version);
    }
    throw std::runtime_error("not asked for: " + library);
  };
}

TEST(DeviceChecks, VersionsOfOtherLibraries) {
  expectComplaint("demands version 1.0.0 of /usr/lib/libapplist.dylib, which has 0",
                  demanding("/usr/lib/libapplist.dylib", 0x10000));
  expectComplaint("demands version 1.0.1 of /usr/lib/libobjc.A.dylib, which has 1",
                  demanding("/usr/lib/libobjc.A.dylib", 0x10001));
  const std::string drawing = "/System/Library/Frameworks/CoreGraphics.framework/CoreGraphics";
  expectComplaint("demands version 64.1.0 of " + drawing + ", which has 64",
                  demanding(drawing, 0x400100));
  for (const std::string architecture : {"arm64", "armv7"}) {
    Bytes bytes = slice(architecture);
    demanding(drawing, 0x3fffff)(bytes);
    EXPECT_EQ(complaints(architecture, device::sign(bytes, kLibrary.identifier)), std::nullopt);
  }
  expectComplaint("/usr/lib/libapplost.dylib is not in facts/libraries.tsv",
                  replacing("/usr/lib/libapplist", "/usr/lib/libapplost"));
}

TEST(DeviceChecks, UnwindInformation) {
  Bytes without = slice("arm64");
  replacing("__unwind_info", "__unwind_onfi")(without);
  auto said = complaints("arm64", device::sign(without, kLibrary.identifier));
  ASSERT_TRUE(said);
  EXPECT_THAT(*said, HasSubstr("device: Varnix.dylib: arm64: no unwind information"));
  // The first of the shared encodings becomes that of a function without unwind information.
  Bytes other = slice("arm64");
  const device::ImageFile image =
      device::readImageFile(device::Architecture::arm64, device::Reader(other));
  const uint64_t at = image.section("__unwind_info")->address - image.base;
  device::put32(other, at + device::Reader(other).u32(at + 4), 0);
  said = complaints("arm64", device::sign(other, kLibrary.identifier));
  ASSERT_TRUE(said);
  EXPECT_THAT(*said,
              HasSubstr("device: Varnix.dylib: arm64: a function that an exception cannot pass"));
}

TEST(DeviceChecks, CodeThatCanBeWrittenTo) {
  expectComplaint("segments.protection: __TEXT", [](Bytes& bytes) {
    device::put32(bytes, segment(bytes, "__TEXT") + (isWide(bytes) ? 60 : 44), 7);
  });
}

TEST(DeviceChecks, Signature) {
  for (const std::string architecture : {"arm64", "armv7"}) {
    Bytes bytes = slice(architecture);
    bytes[bytes.size() / 3] ^= 1;
    const auto said = complaints(architecture, bytes);
    ASSERT_TRUE(said);
    EXPECT_THAT(*said, HasSubstr("the signature is not that of these bytes"));
  }
  const auto said = complaints("arm64", device::sign(slice("arm64"), "com.example.other"));
  ASSERT_TRUE(said);
  EXPECT_THAT(*said, HasSubstr("the signature is not that of these bytes"));
}

/// Puts zeros before the signature.
void enlarge(Bytes& bytes, uint32_t more) {
  const size_t field = command(bytes, 0x1d) + 8;
  const uint32_t end = device::Reader(bytes).u32(field);
  bytes.insert(bytes.begin() + end, more, 0);
  device::put32(bytes, field, end + more);
  const size_t size = segment(bytes, "__LINKEDIT") + (isWide(bytes) ? 48 : 36);
  device::put32(bytes, size, device::Reader(bytes).u32(size) + more);
}

TEST(DeviceChecks, Size) {
  const auto adding = [](uint32_t more) -> Edit {
    return [more](Bytes& bytes) { enlarge(bytes, more); };
  };
  expectComplaint("too large, 128000 bytes are the most", adding(40000));
  expectComplaint("too large, 81920 bytes are the most", adding(81920), kPane);
}

TEST(DeviceChecks, PathsOfTheBuild) {
  const std::string there = "/var/mobile/Library/";
  expectComplaint("a path of the build is inside: /home/you/varnix/src",
                  replacing(there, "/home/you/varnix/src"));
  expectComplaint("a path of the build is inside: hooks/Tweak.cpp",
                  replacing(there, std::string("hooks/Tweak.cpp\0/12", 19) + "3"));
}

TEST(DeviceChecks, Exports) {
  expectComplaint("exports differ", replacing("KillProcess", "KillProcesz"));
  expectComplaint("exports differ", replacing("FrontPage", "FrontPagf"), kPane);
}

TEST(DeviceChecks, Imports) {
  expectComplaint("imports differ", replacing("_objc_getClass\0", "_objc_getClasz\0"));
  expectComplaint("imports differ", replacing("/usr/lib/libapplist", "/usr/lib/libapplost"));
}

TEST(DeviceChecks, WhatThePaneLinks) {
  expectComplaint("imports differ", replacing("_objc_getClass\0"s, "_objc_getClasz\0"s), kPane);
  expectComplaint("imports differ",
                  replacing("DynamicLibraries/Varnix.dylib", "DynamicLibraries/Warnix.dylib"),
                  kPane);
  expectComplaint(
      "nothing is imported from Preferences: take out its stub",
      replacing("/Preferences.framework/Preferences\0"s, "/Preferences.framework/Preferencez\0"s),
      kPane);
}

TEST(DeviceChecks, RuntimeLibraries) {
  const std::string message = "needs a run-time library: ";
  expectComplaint(message + "__Znwmm", replacing("_strcmp", "__Znwmm"));
  expectComplaint(message + "___cxa_atexit", replacing("_glUseProgram", "___cxa_atexit"));
  expectComplaint(message + "___udivmoddi4", replacing("_glUseProgram", "___udivmoddi4"));
  expectComplaint(message + "__tlv_bootst", replacing("_CFGetTypeID", "__tlv_bootst"));
}

TEST(DeviceChecks, Classes) {
  expectComplaint("classes differ", replacing("VXPrefsManager", "VXPrefsManagex"));
  expectComplaint("classes differ", replacing("scaledToSize", "scaledToSise"));
  expectComplaint("classes differ", replacing("VNXFrontPage", "VNXFrontPagf"), kPane);
}

/// The 32-bit library linked again with other stubs. Libraries of stubs in the folder weak may be
/// missing.
std::optional<std::string> complaintsWithStubs(const std::string& change) {
  const Folder folder;
  printed("cp -r " VARNIX_DEVICE "/tbd " + (folder / "tbd") + " && cd " + (folder / "tbd") +
          " && mkdir weak && mv libapplist.tbd libcolorpicker.tbd weak && " + change);
  printed(VARNIX_DEVICE_TOOLS "/varnix-link-armv7 " + kBuilt + "/armv7/library.o " +
          (folder / "tbd") + "/*.tbd $(for stub in " + (folder / "tbd") +
          "/weak/*.tbd; do echo --weak-library $stub; done) -o " + (folder / "it") +
          " --install-name /Library/MobileSubstrate/DynamicLibraries/Varnix.dylib"
          " --current-version " VARNIX_VERSION " --exports " VARNIX_DEVICE "/lists/exports.txt");
  return complaints("armv7", device::sign(device::readFile(folder / "it"), kLibrary.identifier));
}

TEST(DeviceChecks, LinkedAgainItIsStillFine) {
  EXPECT_EQ(complaintsWithStubs("true"), std::nullopt);
}

TEST(DeviceChecks, AnImportOfAnotherLibrary) {
  const auto said = complaintsWithStubs(
      "sed -i /_NSLog/d Foundation.tbd && sed -i 's/^\\( *\\)- _UIImageJPEG/\\1- _NSLog\\n&/' "
      "UIKit.tbd");
  ASSERT_TRUE(said);
  EXPECT_THAT(*said, HasSubstr("+UIKit _NSLog"));
  EXPECT_THAT(*said, HasSubstr("device: Varnix.dylib: armv7: imports differ"));
}

TEST(DeviceChecks, ALibraryThatMayBeMissing) {
  const auto said = complaintsWithStubs("mv weak/libcolorpicker.tbd .");
  ASSERT_TRUE(said);
  EXPECT_THAT(*said, HasSubstr("-library /usr/lib/libcolorpicker.dylib weak"));
}

TEST(DeviceChecks, ALibraryThatIsReachedByLookUpAlone) {
  const auto said = complaintsWithStubs("rm weak/libapplist.tbd");
  ASSERT_TRUE(said);
  EXPECT_THAT(*said, HasSubstr("-library /usr/lib/libapplist.dylib"));
}

/// The checks with an altered copy of device/.
Ran checkedIn(const std::string& change) {
  const Folder folder;
  const std::string root = VARNIX_DEVICE "/../";
  printed("cd " + root + " && cp -r device docs facts " + (folder / "") + " && cd " +
          (folder / "device") + " && " + change);
  return run("VARNIX_TOOLS=" VARNIX_DEVICE_TOOLS " " + (folder / "device/check") + " " + kBuilt);
}

TEST(DeviceChecks, StubsOfferWhatIsUsedAlone) {
  EXPECT_EQ(checkedIn("true").status, 0);
  const Ran ran =
      checkedIn("sed -i 's/^\\( *\\)- _free .*/&\\n\\1- _realloc # C/' tbd/libSystem.tbd");
  EXPECT_NE(ran.status, 0);
  EXPECT_THAT(ran.output, HasSubstr("-libSystem _realloc"));
  EXPECT_THAT(ran.output, HasSubstr("device: Varnix.dylib: arm64: imports differ from device/tbd"));
}

TEST(DeviceChecks, EverySymbolHasAReason) {
  for (const std::string reason : {"", "#", "# weak;"}) {
    const Ran ran = checkedIn("sed -i 's/- _free .*/- _free " + reason + "/' tbd/libSystem.tbd");
    EXPECT_NE(ran.status, 0);
    EXPECT_THAT(ran.output,
                HasSubstr("device: Varnix.dylib: stubs: no reason why the library has _free"));
  }
}

TEST(DeviceChecks, WhatIsImportedWeaklyIsMarked) {
  const Ran ran = checkedIn("sed -i 's/# weak; /# /' tbd/CoreFoundation.tbd");
  EXPECT_NE(ran.status, 0);
  EXPECT_THAT(ran.output, HasSubstr("+CoreFoundation _CFLog (weak_import)"));
}

/// Expects that a check ended with this line of varnix-contract.
void expectContract(const Ran& ran, const std::string& line) {
  EXPECT_NE(ran.status, 0);
  EXPECT_THAT(ran.output, HasSubstr("varnix-contract: " + line + "\n"));
  EXPECT_THAT(
      ran.output,
      HasSubstr("device: contract: what is used of the platform is not what is known of it"));
}

TEST(DeviceChecks, ContractWithThePlatform) {
  expectContract(checkedIn("sed -i '/^UIView\t-\tsetTintColor:/d' ../facts/methods.tsv"),
                 "hook -[UIView setTintColor:]: the platform has no such method");
  expectContract(checkedIn("sed -i 's/\tinitWithImage:style:target:action:\t@@i@:/"
                           "\tinitWithImage:style:target:action:\t@@i:@/' ../facts/methods.tsv"),
                 "message -[UIBarButtonItem initWithImage:style:target:action:]: argument 3 is "
                 "object, not selector as the platform has it");
  expectContract(checkedIn("sed -i '/^_CGContextDrawImage\t/d' ../facts/exports.tsv"),
                 "symbol _CGContextDrawImage: no library is known to have it");
  expectContract(checkedIn("sed -i '/\t_accessibilityBackgroundView\t/d' ../facts/variables.tsv"),
                 "variable SBControlCenterContentContainerView._accessibilityBackgroundView: the "
                 "class has no such variable");
  expectContract(checkedIn("sed -i '/^class UISegment\t/d' lists/unchecked.tsv"),
                 "class UISegment: no such class is known");
}

TEST(DeviceChecks, ContractThatNobodyWroteDown) {
  const std::string spoil = "sed -i '$d' ../docs/contract.md";
  const Ran ran = checkedIn(spoil);
  EXPECT_NE(ran.status, 0);
  EXPECT_THAT(ran.output, HasSubstr("device: contract: docs/contract.md is not up to date"));
  EXPECT_EQ(
      checkedIn(spoil + " && VARNIX_TOOLS=" VARNIX_DEVICE_TOOLS " ./check --update-lists " + kBuilt)
          .status,
      0);
}

TEST(DeviceChecks, AListOfUsesThatIsNotThere) {
  const Folder folder;
  printed("cp " + kBuilt + "/Varnix.dylib " + kBuilt + "/VarnixPrefs " + (folder / ""));
  EXPECT_THAT(run(kCheck + (folder / "")).output,
              HasSubstr("/./uses-arm64 is not there; device/uses writes it"));
  printed("cp " + kBuilt + "/uses-* " + (folder / ""));
  const Ran ran = run(kCheck + (folder / ""));
  EXPECT_NE(ran.status, 0);
  EXPECT_THAT(ran.output, HasSubstr("/pane/uses-arm64 is not there; device/uses writes it"));
}

/// The checks after a change to a copy of the sources, with a new list of what a binary uses.
Ran checkedWithSources(const std::string& name, const std::string& change) {
  const Folder folder;
  const std::string root = VARNIX_DEVICE "/../";
  const std::string built = folder / "built";
  printed("cd " + root + " && cp -r device docs facts src include pane " + (folder / "") +
          " && mkdir " + built + " && cd " + kBuilt + " && cp --parents flags uses-* pane/flags " +
          "pane/uses-* Varnix.dylib VarnixPrefs " + built + " && cd " + (folder / "") + " && " +
          change + " && device/uses " + name + " built");
  return run("VARNIX_TOOLS=" VARNIX_DEVICE_TOOLS " " + (folder / "device/check") + " " + built);
}

TEST(DeviceChecks, ADeclarationThatDiffersFromThePlatform) {
  expectContract(
      checkedWithSources("library",
                         "sed -i 's/Message<\"tag\", NSInteger()>/Message<\"tag\", int()>/' "
                         "src/platform/UIKit.h"),
      "arm64: message -[UIAlertView tag]: result is int, not long long as the platform has it");
}

TEST(DeviceChecks, AMessageOfThePaneThatThePlatformLacks) {
  EXPECT_EQ(checkedWithSources("pane", "true").status, 0);
  const std::string code =
      "#include \"platform/Preferences.h\"\n"
      "void tell(PSListController* page) {\n"
      "  send(page, objc::Message<PSListController, \"reloadEverything\", void()>{});\n"
      "}\n";
  expectContract(checkedWithSources("pane", "printf '" + code + "' >pane/tell.cpp"),
                 "message -[PSListController reloadEverything]: the platform has no such method");
}

}  // namespace
