// Other people's extensions for phones: what is built, what is packaged, what is refused.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/toolbox.h"
#include "macho/files.h"

namespace {

using namespace device_test;
using testing::HasSubstr;

const std::string kExtension = "VARNIX_TOOLS=" VARNIX_DEVICE_TOOLS " " VARNIX_DEVICE "/extension ";
const std::string kExample = VARNIX_DEVICE "/../examples/extension/";
const std::string kPackaged = " --package com.example.slider --version 1.2 --filter " + kExample +
                              "Slider.plist --maintainer 'Somebody <some@example.com>' " +
                              "--description 'Paler sliders' ";

std::string built(const Folder& folder, const std::string& rest) {
  return printed(kExtension + "Slider --out " + (folder / "out") + " " + rest);
}

TEST(DeviceExtension, IsBuiltForBothArchitectures) {
  const Folder folder;
  EXPECT_EQ(built(folder, kExample + "slider.cpp"), (folder / "out/Slider.dylib") + "\n");
  const std::string file = folder / "out/Slider.dylib";
  EXPECT_EQ(printed("llvm-lipo-19 -archs " + file), "armv7 arm64 \n");
  for (const std::string architecture : {"armv7", "arm64"}) {
    const std::string used =
        printed("llvm-objdump-19 --macho --dylibs-used --arch=" + architecture + " " + file);
    EXPECT_THAT(used, HasSubstr("/Library/MobileSubstrate/DynamicLibraries/Slider.dylib"));
    EXPECT_THAT(used, HasSubstr("/CydiaSubstrate "));
    // Nothing is imported from it.
    EXPECT_THAT(used, testing::Not(HasSubstr("/UIKit ")));
  }
}

TEST(DeviceExtension, IsPackagedWithItsFilter) {
  const Folder folder;
  const std::string package = folder / "out/com.example.slider_1.2_iphoneos-arm.deb";
  EXPECT_THAT(built(folder, kPackaged + kExample + "slider.cpp"), HasSubstr(package));
  EXPECT_EQ(printed("dpkg-deb -f " + package),
            "Package: com.example.slider\nName: Slider\nVersion: 1.2\n"
            "Architecture: iphoneos-arm\nMaintainer: Somebody <some@example.com>\n"
            "Section: Tweaks\nDepends: mobilesubstrate, firmware (>= 9.3)\n"
            "Description: Paler sliders\n");
  const std::string inside = folder / "inside";
  printed("dpkg-deb -x " + package + " " + inside);
  const std::string libraries = inside + "/Library/MobileSubstrate/DynamicLibraries/";
  printed("cmp " + libraries + "Slider.plist " + kExample + "Slider.plist");
  printed("cmp " + libraries + "Slider.dylib " + (folder / "out/Slider.dylib"));
  // The same sources give the same bytes.
  printed("mv " + package + " " + (folder / "first"));
  built(folder, kPackaged + kExample + "slider.cpp");
  printed("cmp " + package + " " + (folder / "first"));
}

TEST(DeviceExtension, MayBeObjectiveC) {
  const Folder folder;
  built(folder, "--flags '-fobjc-arc -I " VARNIX_DEVICE "/../tests/compiled/headers' " VARNIX_DEVICE
                "/../tests/beside/arc.m");
  const std::string metadata = printed("llvm-objdump-19 --macho --objc-meta-data --arch=armv7 " +
                                       (folder / "out/Slider.dylib"));
  EXPECT_THAT(metadata, HasSubstr("BesideStart"));
}

TEST(DeviceExtension, MayLinkOursAndWhatAStubOffers) {
  const Folder folder;
  writeText(folder / "it.c",
            "void QKKillProcess(void *name); void elsewhere(void);\n"
            "__attribute__((visibility(\"default\"))) void both(void) "
            "{ QKKillProcess(0); elsewhere(); }\n");
  const Ran refused = run(kExtension + "It --out " + (folder / "out") + " " + (folder / "it.c"));
  EXPECT_EQ(WEXITSTATUS(refused.status), 1);
  EXPECT_THAT(refused.output, HasSubstr("_elsewhere"));
  EXPECT_THAT(refused.output, HasSubstr("can be offered by --stub"));
  writeText(folder / "other.tbd",
            "--- !tapi-tbd\ntbd-version: 4\ntargets: [ armv7-ios, arm64-ios ]\n"
            "install-name: /usr/lib/other.dylib\nexports:\n"
            "  - targets: [ armv7-ios, arm64-ios ]\n    symbols: [ _elsewhere ]\n...\n");
  printed(kExtension + "It --out " + (folder / "out") + " --stub " + (folder / "other.tbd") + " " +
          (folder / "it.c"));
  const std::string used =
      printed("llvm-objdump-19 --macho --dylibs-used " + (folder / "out/It.dylib"));
  EXPECT_THAT(used, HasSubstr("/usr/lib/other.dylib"));
  EXPECT_THAT(used, HasSubstr("DynamicLibraries/Varnix.dylib"));
}

TEST(DeviceExtension, SaysWhatIsMissing) {
  const Folder folder;
  const auto refusal = [&folder](const std::string& rest) {
    const Ran ran = run("cd " + (folder / "") + " && " + kExtension + rest);
    EXPECT_EQ(WEXITSTATUS(ran.status), 2) << rest;
    return ran.output;
  };
  const std::string end = "; --help says what it takes\n", source = " " + kExample + "slider.cpp";
  EXPECT_EQ(refusal("It"), "device/extension: no sources" + end);
  EXPECT_EQ(refusal("It none.cpp"), "device/extension: no such file: none.cpp" + end);
  EXPECT_EQ(refusal("../It" + source), "device/extension: not a name for a file: ../It" + end);
  EXPECT_EQ(refusal("It --out"), "device/extension: --out needs a value" + end);
  EXPECT_EQ(refusal("It --fast" + source), "device/extension: unknown option --fast" + end);
  EXPECT_EQ(refusal("It --package a/b" + source),
            "device/extension: not a package's name: a/b" + end);
  EXPECT_EQ(refusal("It --package com.it" + source),
            "device/extension: a package needs --filter FILE" + end);
  EXPECT_EQ(refusal("It --package com.it --filter " + kExample + "Slider.plist" + source),
            "device/extension: a package needs --maintainer" + end);
  EXPECT_THAT(refusal(""), HasSubstr("device/extension NAME [OPTION...] SOURCE..."));
}

TEST(DeviceExtension, SourcesThatDoNotCompileAreTheCompilersToTell) {
  const Folder folder;
  writeText(folder / "it.cpp", "int it = nothing;\n");
  writeText(folder / "it.txt", "it");
  for (const char* source : {"it.cpp", "it.txt"}) {
    const Ran ran = run(kExtension + "It --out " + (folder / "out") + " " + (folder / source));
    EXPECT_EQ(WEXITSTATUS(ran.status), 1);
    EXPECT_THAT(ran.output, HasSubstr(source));
    EXPECT_NE(run("test -e " + (folder / "out/It.dylib")).status, 0);
  }
}

}  // namespace
