#include "rules/signature.h"

#include <openssl/evp.h>

#include "rules/rule.h"
#include "signer/format.h"

namespace varnix::device {

namespace {

constexpr uint64_t kSuperBlobHeader = 12, kIndexEntry = 8, kBlobHeader = 8;
/// Size of a directory's fields in the earliest version in use.
constexpr uint64_t kShortestDirectory = 52;
constexpr uint32_t kLastAlternate = signature::kAlternateCodeDirectorySlot + 5;

struct DigestKind {
  uint8_t type;
  uint32_t size;
  const EVP_MD* (*function)();
};

/// Numbered as in directories; the third is the second, cut short.
constexpr DigestKind kDigests[] = {
    {1, 20, EVP_sha1}, {2, 32, EVP_sha256}, {3, 20, EVP_sha256}, {4, 48, EVP_sha384}};

const DigestKind* kindOf(uint8_t type) {
  for (const DigestKind& kind : kDigests)
    if (kind.type == type) return &kind;
  return nullptr;
}

Directory readDirectory(uint32_t slot, Reader bytes) {
  Directory it;
  it.slot = slot;
  it.bytes = bytes;
  it.magic = bytes.big32(0);
  it.version = bytes.big32(8);
  it.flags = bytes.big32(12);
  it.hashOffset = bytes.big32(16);
  it.identifierOffset = bytes.big32(20);
  it.specialSlots = bytes.big32(24);
  it.codeSlots = bytes.big32(28);
  it.codeLimit = bytes.big32(32);
  it.hashSize = bytes.u8(36);
  it.hashType = bytes.u8(37);
  it.platform = bytes.u8(38);
  it.pageBits = bytes.u8(39);
  it.spare = bytes.big32(40);
  it.scatter = bytes.big32(44);
  it.team = bytes.big32(48);
  return it;
}

void readBlobs(Signature& it, Reader bytes) {
  const uint32_t length = bytes.big32(4), count = bytes.big32(8);
  for (uint32_t i = 0; i < count; ++i) {
    const uint64_t entry = kSuperBlobHeader + kIndexEntry * i;
    SignatureBlob blob{bytes.big32(entry), bytes.big32(entry + 4), std::nullopt};
    if (blob.offset + kBlobHeader <= length) {
      const uint32_t size = bytes.big32(blob.offset + 4);
      if (size >= kBlobHeader && size <= length - blob.offset)
        blob.bytes = bytes.part(blob.offset, size);
    }
    if (blob.bytes && isDirectorySlot(blob.slot)) {
      if (blob.bytes->size() >= kShortestDirectory)
        it.directories.push_back(readDirectory(blob.slot, *blob.bytes));
      else it.shortDirectories.push_back(blob.slot);
    }
    it.blobs.push_back(blob);
  }
}

}  // namespace

bool isDirectorySlot(uint32_t slot) {
  return slot == signature::kCodeDirectorySlot ||
         (slot >= signature::kAlternateCodeDirectorySlot && slot < kLastAlternate);
}

uint32_t digestSize(uint8_t type) {
  const DigestKind* kind = kindOf(type);
  return kind == nullptr ? 0 : kind->size;
}

bool Directory::canBeRead() const {
  const uint64_t size = hashSize;
  return size != 0 && size == digestSize(hashType) && hashOffset <= bytes.size() &&
         hashOffset / size >= specialSlots && (bytes.size() - hashOffset) / size >= codeSlots;
}

std::span<const uint8_t> Directory::digest(int64_t number) const {
  return bytes.at(static_cast<uint64_t>(hashOffset + number * hashSize), hashSize);
}

std::vector<uint8_t> Directory::digestOf(std::span<const uint8_t> code) const {
  std::vector<uint8_t> result(EVP_MAX_MD_SIZE);
  EVP_Digest(code.data(), code.size(), result.data(), nullptr, kindOf(hashType)->function(),
             nullptr);
  result.resize(hashSize);
  return result;
}

const SignatureBlob* Signature::blob(uint32_t slot) const {
  for (const SignatureBlob& each : blobs)
    if (each.slot == slot) return &each;
  return nullptr;
}

Signature readSignature(const Image& image) {
  Signature it;
  it.image = &image;
  if (image.signatures.empty()) return it;
  it.table = image.signatures.back();
  if (it.table->offset + it.table->size > image.bytes.size()) return it;
  const Reader bytes = image.bytes.part(it.table->offset, it.table->size);
  it.bytes = bytes;
  if (bytes.size() < kSuperBlobHeader || bytes.big32(0) != signature::kSuperBlob) return it;
  const uint32_t length = bytes.big32(4), count = bytes.big32(8);
  it.isWhole = length >= kSuperBlobHeader && length <= bytes.size() &&
               (length - kSuperBlobHeader) / kIndexEntry >= count;
  if (it.isWhole) readBlobs(it, bytes);
  return it;
}

std::string labelOf(const SignatureBlob& blob) { return "slot " + hex(blob.slot); }
std::string labelOf(const Directory& directory) { return "slot " + hex(directory.slot); }

}  // namespace varnix::device
