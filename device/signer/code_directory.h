// The part of a signature that covers a library's bytes: a digest of each page.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace varnix::device {

enum class Digest : uint8_t { sha1 = 1, sha256 = 2 };  ///< As code directories number them.

/// In bytes.
uint32_t sizeOf(Digest digest);
std::vector<uint8_t> digestOf(Digest digest, std::span<const uint8_t> bytes);

struct Code {
  std::span<const uint8_t> bytes;  ///< Everything before the signature.
  uint64_t textOffset = 0, textSize = 0;
};

/// The size of the directory that `codeDirectory` makes.
uint32_t codeDirectorySize(Digest digest, const std::string& identifier, uint64_t codeSize);
std::vector<uint8_t> codeDirectory(Digest digest, const std::string& identifier, const Code& code,
                                   std::span<const uint8_t> requirements);

}  // namespace varnix::device
