// Runs a library that the 32-bit linker made, on an emulated processor, with a loader in the test.
#include <gtest/gtest.h>

#include "device/toolbox.h"
#include "macho/files.h"

namespace {

using namespace device_test;
namespace device = varnix::device;

TEST(DeviceRun, CodeCallsOutAndFindsItsData) {
  if (run("qemu-arm-static --version").status != 0) GTEST_SKIP() << "qemu-arm-static is missing";
  const Folder folder;
  printed("clang++-19 --target=armv7-apple-ios9.3 -mthumb -std=c++20 -Os -fno-exceptions -c " +
          std::string(VARNIX_DEVICE_SAMPLE) + " -o " + (folder / "it.o"));
  device::writeFile(folder / "it.dylib",
                    linked(device::readFile(folder / "it.o"), options({"_entry"})));
  printed(
      "clang++-19 --target=armv7-linux-gnueabi -std=c++20 -Os -fno-exceptions -fno-rtti "
      "-fno-builtin -fno-stack-protector -nostdinc++ -ffreestanding -nostdlib -static "
      "-fno-pic -DLIBRARY='\"" +
      (folder / "it.dylib") + "\"' --ld-path=ld.lld-19 " VARNIX_DEVICE_LOADER " -o " +
      (folder / "it"));
  EXPECT_EQ(printed("qemu-arm-static " + (folder / "it")),
            "start with\n"
            "zero with\n= 04\n"  // twice 0, then chosen
            "two with\n= 03\n"   // twice 1
            "imported text with\n= 13\n"
            "= 00\n");  // nothing for 6, and the weak import is missing
}

}  // namespace
