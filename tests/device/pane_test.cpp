// A pane that links the library by name finds its exported classes and functions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "device/toolbox.h"
#include "macho/files.h"

namespace {

using namespace device_test;
using testing::Contains;
using testing::HasSubstr;
namespace device = varnix::device;

const std::string kLibrary = VARNIX_DEVICE_BUILD;

/// What a library imports from Varnix.dylib.
std::set<std::string> takenFromVarnix(const ReadBack& pane) {
  std::set<std::string> names;
  const std::string binds = pane.objdump("--macho --bind") + pane.objdump("--macho --lazy-bind");
  for (const auto& match : findAll(binds, " Varnix +(\\S+)")) names.insert(match[1]);
  return names;
}

TEST(DevicePane, FindsEverySymbolInBothArchitectures) {
  const Folder folder;
  printed("VARNIX_TOOLS=" VARNIX_DEVICE_TOOLS " " VARNIX_DEVICE
          "/examples/build " VARNIX_PANE_HEADER " " +
          (folder / "pane") + " " + kLibrary);
  for (const std::string architecture : {"arm64", "armv7"}) {
    const ReadBack pane(device::readFile(folder / ("pane/" + architecture + ".dylib")));
    const ReadBack library(device::readFile(kLibrary + "/" + architecture + ".dylib"));
    EXPECT_THAT(pane.objdump("--macho --dylibs-used"),
                HasSubstr("/Library/MobileSubstrate/DynamicLibraries/Varnix.dylib"));
    const std::set<std::string> taken = takenFromVarnix(pane);
    EXPECT_EQ(taken,
              (std::set<std::string>{"_OBJC_CLASS_$_KTPrefsManager",
                                     "_OBJC_METACLASS_$_KTPrefsManager", "_QKSetPrefsTint"}));
    const auto exports = library.exports();
    for (const std::string& name : taken) EXPECT_TRUE(exports.contains(name)) << name;
    EXPECT_THAT(pane.objdump("--macho --objc-meta-data"), HasSubstr("ExampleStore"));
  }
}

TEST(DevicePane, DoesNotFindWhatIsNotExported) {
  const Folder folder;
  printed(
      "sed 's/: KTPrefsManager/: VNXManager/; 1,/@interface/ "
      "s/^@interface/@interface VNXManager : KTPrefsManager\\n@end\\n&/' " VARNIX_DEVICE
      "/examples/pane.m >" +
      (folder / "pane.m"));
  for (const std::string target : {"arm64-apple-ios9.3", "armv7-apple-ios9.3 -mthumb"}) {
    const std::string object = folder / "pane.o";
    printed("clang-19 --target=" + target +
            " -Os -fno-autolink -I " VARNIX_INCLUDE " -I " VARNIX_PANE_HEADER " -c " +
            (folder / "pane.m") + " -o " + object);
    const std::string stubs = " " VARNIX_DEVICE "/examples/libobjc.tbd " VARNIX_DEVICE
                              "/tbd/CoreFoundation.tbd " VARNIX_DEVICE "/tbd/libSystem.tbd ";
    writeText(folder / "exports", "_ExamplePaneWillAppear\n");
    const Ran ran =
        target.starts_with("arm64")
            ? run("ld64.lld-19 -dylib -arch arm64 -platform_version ios 9.3 9.3 " + object + " " +
                  kLibrary + "/Varnix.dylib" + stubs + "-o " + (folder / "pane"))
            : run(VARNIX_DEVICE_TOOLS "/varnix-link-armv7 " + object + " " + kLibrary +
                  "/Varnix.tbd" + stubs + "-o " + (folder / "pane") +
                  " --install-name /it --current-version 1.0 --exports " + (folder / "exports"));
    EXPECT_NE(ran.status, 0);
    EXPECT_THAT(ran.output, HasSubstr("_OBJC_CLASS_$_VNXManager"));
  }
}

}  // namespace
