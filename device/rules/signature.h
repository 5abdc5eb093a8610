// The signature of a slice, taken apart.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "rules/image.h"

namespace varnix::device {

/// One part of a signature.
struct SignatureBlob {
  uint32_t slot = 0;
  uint64_t offset = 0;          ///< Within the signature.
  std::optional<Reader> bytes;  ///< Nothing if it leaves the signature.
};

/// A part that has digests of the code.
struct Directory {
  uint32_t slot = 0;
  Reader bytes;
  uint32_t magic = 0, version = 0, flags = 0, hashOffset = 0, identifierOffset = 0;
  uint32_t specialSlots = 0, codeSlots = 0, codeLimit = 0;
  uint8_t hashSize = 0, hashType = 0, platform = 0, pageBits = 0;
  uint32_t spare = 0, scatter = 0, team = 0;

  /// Whether the digests are of a known kind, and lie in the directory.
  bool canBeRead() const;
  /// Of a page of code, or with a negative number, of another part of the signature.
  std::span<const uint8_t> digest(int64_t number) const;
  /// The right digest of these bytes.
  std::vector<uint8_t> digestOf(std::span<const uint8_t> code) const;
};

struct Signature {
  const Image* image = nullptr;
  std::optional<LinkTable> table;  ///< Where the load command says it is.
  std::optional<Reader> bytes;     ///< Nothing if that is not in the file.
  bool isWhole = false;            ///< Whether it begins like one and contains its index.
  std::vector<SignatureBlob> blobs;
  std::vector<Directory> directories;      ///< Those long enough.
  std::vector<uint32_t> shortDirectories;  ///< Slots of the others.

  const SignatureBlob* blob(uint32_t slot) const;
};

/// Of an image whose load commands were read.
Signature readSignature(const Image& image);

/// Whether a part at that slot has digests of the code.
bool isDirectorySlot(uint32_t slot);

/// The size of a digest of that type in bytes; zero for an unknown type.
uint32_t digestSize(uint8_t type);

std::string labelOf(const SignatureBlob& blob);
std::string labelOf(const Directory& directory);

}  // namespace varnix::device
