#include "signer/sign.h"

#include <algorithm>
#include <array>

#include "macho/bytes.h"
#include "macho/error.h"
#include "macho/format.h"
#include "signer/code_directory.h"
#include "signer/format.h"
#include "signer/image.h"

namespace varnix::device {
namespace {

/// A signature begins at a multiple of this.
constexpr uint64_t kAlignment = 16;

struct Blob {
  uint32_t slot;
  std::vector<uint8_t> bytes;
};

std::vector<uint8_t> emptyRequirements() {
  Writer out;
  out.big32(signature::kRequirements);
  out.big32(12);
  out.big32(0);
  return out.take();
}

/// Stands for a certificate's signature.
std::vector<uint8_t> emptyCms() {
  Writer out;
  out.big32(signature::kCms);
  out.big32(8);
  return out.take();
}

uint32_t headSize(size_t blobCount) { return static_cast<uint32_t>(12 + 8 * blobCount); }

std::vector<uint8_t> superBlob(const std::vector<Blob>& blobs) {
  uint32_t offset = headSize(blobs.size());
  Writer head, body;
  for (const Blob& blob : blobs) {
    head.big32(blob.slot);
    head.big32(offset);
    body.bytes(blob.bytes);
    offset += static_cast<uint32_t>(blob.bytes.size());
  }
  Writer out;
  out.big32(signature::kSuperBlob);
  out.big32(offset);
  out.big32(static_cast<uint32_t>(blobs.size()));
  out.bytes(head.take());
  out.bytes(body.take());
  return out.take();
}

uint64_t signatureSize(const std::string& identifier, uint64_t codeSize) {
  return headSize(4) + codeDirectorySize(Digest::sha1, identifier, codeSize) +
         codeDirectorySize(Digest::sha256, identifier, codeSize) + emptyRequirements().size() +
         emptyCms().size();
}

std::vector<uint8_t> signatureOf(const Code& code, const std::string& identifier) {
  const std::vector<uint8_t> requirements = emptyRequirements();
  return superBlob(
      {{signature::kCodeDirectorySlot, codeDirectory(Digest::sha1, identifier, code, requirements)},
       {signature::kRequirementsSlot, requirements},
       {signature::kAlternateCodeDirectorySlot,
        codeDirectory(Digest::sha256, identifier, code, requirements)},
       {signature::kCmsSlot, emptyCms()}});
}

/// Adds the signature's load command after the others, if there is room.
uint64_t addCommand(std::vector<uint8_t>& file, const SignedImage& image) {
  const uint64_t end = uint64_t{image.headerEnd} + macho::kLinkeditDataSize;
  if (end > image.firstContent) throw Error("no room for the load command of a signature");
  put32(file, 16, image.commandCount + 1);
  put32(file, 20, image.commandSize + macho::kLinkeditDataSize);
  put32(file, image.headerEnd, macho::kCodeSignature);
  put32(file, image.headerEnd + 4, macho::kLinkeditDataSize);
  return image.headerEnd;
}

/// Extends the last segment over the signature.
void growLinkEdit(std::vector<uint8_t>& file, const SignedImage& image, uint64_t size) {
  constexpr uint64_t page = 0x4000;
  const uint64_t whole = alignUp(size, page);
  if (image.is64) {
    put64(file, image.linkEdit + 32, whole);
    put64(file, image.linkEdit + 48, size);
  } else {
    put32(file, image.linkEdit + 28, static_cast<uint32_t>(whole));
    put32(file, image.linkEdit + 36, static_cast<uint32_t>(size));
  }
}

}  // namespace

std::vector<uint8_t> sign(std::span<const uint8_t> file, const std::string& identifier) {
  const SignedImage image = readImage(Reader(file));
  std::vector<uint8_t> result(file.begin(), file.end());
  if (image.command) result.resize(image.signatureOffset);
  result.resize(alignUp(result.size(), kAlignment));
  const auto codeSize = static_cast<uint32_t>(result.size());
  const uint64_t size = alignUp(signatureSize(identifier, codeSize), kAlignment);

  const uint64_t command = image.command ? *image.command : addCommand(result, image);
  put32(result, command + 8, codeSize);
  put32(result, command + 12, static_cast<uint32_t>(size));
  growLinkEdit(result, image, codeSize - image.linkEditOffset + size);

  const Code code{result, image.textOffset, image.textSize};
  const std::vector<uint8_t> blob = signatureOf(code, identifier);
  result.insert(result.end(), blob.begin(), blob.end());
  result.resize(codeSize + size);
  return result;
}

void verify(std::span<const uint8_t> file, const std::string& identifier) {
  const SignedImage image = readImage(Reader(file));
  if (!image.command) throw Error("not signed");
  const Code code{file.first(image.signatureOffset), image.textOffset, image.textSize};
  std::vector<uint8_t> wanted = signatureOf(code, identifier);
  wanted.resize(alignUp(wanted.size(), kAlignment));
  if (!std::ranges::equal(wanted, file.subspan(image.signatureOffset)))
    throw Error("the signature is not that of these bytes");
}

}  // namespace varnix::device
