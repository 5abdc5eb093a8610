// libpng's errors, for reading and writing: reported by a jump, without output.
#pragma once

#include <png.h>

namespace host::imageio {

[[noreturn]] inline void failPng(png_structp png, png_const_charp /*message*/) {
  png_longjmp(png, 1);
}
inline void ignorePngWarning(png_structp /*png*/, png_const_charp /*message*/) {}

}  // namespace host::imageio
