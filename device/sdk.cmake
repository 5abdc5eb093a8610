# A toolchain file for a vendor's SDK: builds the library for the device by CMake alone.
#
#   cmake --toolchain device/sdk.cmake -DVARNIX_SDK=/path/to/iPhoneOS.sdk -B build-sdk
#
# VARNIX_SDK            the SDK's folder. Headers of C and C++, and the frameworks, come from it.
# VARNIX_ARCHITECTURES  "arm64" by default. "armv7;arm64" needs a linker that links armv7.
# VARNIX_LINKER         the linker; ld64.lld-19 by default, which links arm64.
#
# The compiler is clang++-19, or CMAKE_CXX_COMPILER. docs/device.md says what was tried.
set(CMAKE_SYSTEM_NAME iOS)
set(CMAKE_OSX_DEPLOYMENT_TARGET 9.3 CACHE STRING "Lowest system")
set(VARNIX_ARCHITECTURES arm64 CACHE STRING "Architectures")
set(CMAKE_OSX_ARCHITECTURES ${VARNIX_ARCHITECTURES})
if(NOT CMAKE_CXX_COMPILER)
  set(CMAKE_CXX_COMPILER clang++-19)
endif()
set(CMAKE_CXX_COMPILER_TARGET arm64-apple-ios${CMAKE_OSX_DEPLOYMENT_TARGET})

set(VARNIX_SDK "" CACHE PATH "The SDK's folder")
if(NOT IS_DIRECTORY "${VARNIX_SDK}")
  message(FATAL_ERROR "VARNIX_SDK must be the folder of an iPhoneOS SDK")
endif()
set(CMAKE_OSX_SYSROOT ${VARNIX_SDK})
set(CMAKE_FIND_ROOT_PATH ${VARNIX_SDK})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# On Linux the tools have llvm's names; if a packager's toolchain has other names, set them.
find_program(VARNIX_LINKER ld64.lld-19 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL NAMES llvm-install-name-tool-19 install_name_tool REQUIRED)
find_program(CMAKE_AR NAMES llvm-ar-19 ar)
find_program(CMAKE_RANLIB NAMES llvm-ranlib-19 ranlib)
# Test programs are only built as libraries: an executable would need start-up code for each
# architecture.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
# The compiler check is a project of its own, and needs these too.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VARNIX_SDK VARNIX_ARCHITECTURES VARNIX_LINKER)
