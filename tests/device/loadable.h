// Libraries for the loader's tests: opcodes written by hand, and a small library linked by the
// platform's tools.
#pragma once

#include <string>

#include "device/toolbox.h"
#include "loader/image_file.h"
#include "macho/bytes.h"
#include "macho/files.h"

namespace device_test {

namespace device = varnix::device;

/// Two segments of 0x1000 bytes, the second for data, and two libraries.
inline device::ImageFile plainImage(device::Architecture architecture) {
  device::ImageFile image;
  image.architecture = architecture;
  image.segments = {{"__TEXT", 0x4000, 0x1000, 0, 0, 5}, {"__DATA", 0x5000, 0x1000, 0, 0, 3}};
  image.libraries = {{"/usr/lib/first.dylib", false}, {"/usr/lib/second.dylib", true}};
  image.base = 0x4000;
  image.size = 0x2000;
  return image;
}

/// Data with pointers to itself and to other things, an initialiser and two exports.
inline const char* const kLoadableSource = R"(
  .section __TEXT,__text,regular,pure_instructions
  .globl _function
  .p2align 2
_function:
  ret
  .section __DATA,__data
  .globl _table
  .p2align 3
_table:
  .quad 17
  .quad _table
  .quad _function
  .quad _imported
  .quad _imported+24
  .quad _absent
  .quad _missing
  .section __DATA,__mod_init_func,mod_init_funcs
  .p2align 3
  .quad _function
  .weak_reference _absent
)";

/// Builds such a source for arm64 with the platform's linker; imports are looked up in all
/// libraries.
inline Bytes loadable(const std::string& source = kLoadableSource) {
  const Folder folder;
  device::writeFile(folder / "it.o", assemble(source, "arm64-apple-ios9.3"));
  printed("ld64.lld-19 -dylib -arch arm64 -platform_version ios 9.3 9.3 -no_fixup_chains " +
          std::string("-undefined dynamic_lookup -install_name /Library/it.dylib -o ") +
          (folder / "it.dylib") + " " + (folder / "it.o"));
  return device::readFile(folder / "it.dylib");
}

}  // namespace device_test
