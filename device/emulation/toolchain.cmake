# Compiles for a device's processor under Linux, with what device/emulation/sysroot fetched.
# VARNIX_EMULATED: arm64 or armv7. VARNIX_SYSROOT: the folder.
set(CMAKE_SYSTEM_NAME Linux)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VARNIX_EMULATED VARNIX_SYSROOT)

if(VARNIX_EMULATED STREQUAL arm64)
  set(CMAKE_SYSTEM_PROCESSOR aarch64)
  set(triple aarch64-linux-gnu)
  set(emulator qemu-aarch64-static)
else()
  set(CMAKE_SYSTEM_PROCESSOR arm)
  set(triple arm-linux-gnueabi)
  set(emulator qemu-arm-static -cpu max)
endif()

set(CMAKE_C_COMPILER ${triple}-gcc)
set(CMAKE_CXX_COMPILER ${triple}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${triple})
set(CMAKE_SYSROOT ${VARNIX_SYSROOT})
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/emulate ${VARNIX_SYSROOT} ${emulator} --)
# As on the device, characters are signed, and a product and a sum are rounded separately.
set(CMAKE_CXX_FLAGS_INIT "-fsigned-char -ffp-contract=off -Wno-psabi")
if(VARNIX_EMULATED STREQUAL armv7)
  # The device's code may overwrite r9, and aligns the stack to only four bytes.
  string(APPEND CMAKE_CXX_FLAGS_INIT " -march=armv7-a -ffixed-r9")
endif()

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${VARNIX_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${VARNIX_SYSROOT}/usr/lib/${triple}/pkgconfig:${VARNIX_SYSROOT}/usr/share/pkgconfig)
