#include "signer/code_directory.h"

#include <openssl/evp.h>

#include <algorithm>

#include "macho/bytes.h"
#include "macho/error.h"
#include "signer/format.h"

namespace varnix::device {
namespace {

uint32_t pageCount(uint64_t codeSize) {
  return static_cast<uint32_t>(alignUp(codeSize, signature::kPageBytes) / signature::kPageBytes);
}

uint32_t hashOffset(Digest digest, const std::string& identifier) {
  return signature::kCodeDirectorySize + static_cast<uint32_t>(identifier.size()) + 1 +
         signature::kSpecialSlots * sizeOf(digest);
}

}  // namespace

uint32_t sizeOf(Digest digest) { return digest == Digest::sha1 ? 20 : 32; }

std::vector<uint8_t> digestOf(Digest digest, std::span<const uint8_t> bytes) {
  std::vector<uint8_t> result(sizeOf(digest));
  const EVP_MD* kind = digest == Digest::sha1 ? EVP_sha1() : EVP_sha256();
  if (EVP_Digest(bytes.data(), bytes.size(), result.data(), nullptr, kind, nullptr) != 1)
    throw Error("libcrypto computes no such digest");
  return result;
}

uint32_t codeDirectorySize(Digest digest, const std::string& identifier, uint64_t codeSize) {
  return hashOffset(digest, identifier) + pageCount(codeSize) * sizeOf(digest);
}

std::vector<uint8_t> codeDirectory(Digest digest, const std::string& identifier, const Code& code,
                                   std::span<const uint8_t> requirements) {
  const auto codeSize = static_cast<uint32_t>(code.bytes.size());
  Writer out;
  for (const uint32_t field :
       {uint32_t{signature::kCodeDirectory}, codeDirectorySize(digest, identifier, codeSize),
        signature::kVersion, signature::kAdHoc, hashOffset(digest, identifier),
        signature::kCodeDirectorySize, signature::kSpecialSlots, pageCount(codeSize), codeSize})
    out.big32(field);
  out.u8(static_cast<uint8_t>(sizeOf(digest)));
  out.u8(static_cast<uint8_t>(digest));
  out.u8(0);  // no platform
  out.u8(signature::kPageBits);
  // No scatter list, no team, and no 64-bit code size: it fits into 32 bits.
  for (int i = 0; i < 4; ++i) out.big32(0);
  out.big64(0);
  out.big64(code.textOffset);
  out.big64(code.textSize);
  out.big64(0);  // not a main program
  out.text(identifier);
  out.bytes(digestOf(digest, requirements));
  out.fillTo(out.size() + sizeOf(digest));  // no property list
  for (size_t at = 0; at < codeSize; at += signature::kPageBytes)
    out.bytes(digestOf(
        digest, code.bytes.subspan(at, std::min<size_t>(signature::kPageBytes, codeSize - at))));
  return out.take();
}

}  // namespace varnix::device
