// What the loader writes into an image, read from the opcodes of its file.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "loader/image_file.h"

namespace varnix::device {

enum class FixupKind : uint8_t { pointer, absolute32, relative32 };

/// A word to which the loader adds the distance between the image's place and its file's addresses.
struct ImageRebase {
  uint64_t offset = 0;  ///< From the image's start; the word lies in one segment.
  FixupKind kind = FixupKind::pointer;
};

/// A word that gets a symbol's address.
struct ImageBind {
  uint64_t offset = 0;  ///< From the image's start; the word lies in one segment.
  FixupKind kind = FixupKind::pointer;
  std::string_view symbol;
  int library = 0;  ///< A number of ImageFile::libraries, or one of macho::kSelf and below.
  int64_t addend = 0;
  bool mayBeMissing = false;
};

/// Throws Error for an unknown opcode, a word outside the image's segments, a library that does not
/// exist, and for more than a million words.
std::vector<ImageRebase> readRebases(const ImageFile& image);
/// Those bound at once, then those that wait for a first call.
std::vector<ImageBind> readBinds(const ImageFile& image);
/// Those that a definition of the name in any image satisfies.
std::vector<ImageBind> readWeakBinds(const ImageFile& image);

}  // namespace varnix::device
