// Pictures, PNG and JPEG: decoded, written again, and analysed if they are small.
#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "ImageIO/decode.h"
#include "color/AverageColor.h"
#include "color/ImportantColor.h"
#include "hosted_process.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"

using namespace host::imageio;

namespace {

/// Larger pictures would take too long.
constexpr std::size_t kPixelsToWrite = 1 << 16, kPixelsToAnalyse = 1 << 12;

/// What is written must be read back unchanged, except for the orientation.
void requireWritable(const Picture& picture) {
  const auto png = encodePng(picture);
  fuzz::require(png.has_value());
  const auto back = decode(*png);
  fuzz::require(back && back->width == picture.width && back->height == picture.height &&
                back->hasAlpha == picture.hasAlpha && back->rgba == picture.rgba);
  const auto jpeg = encodeJpeg(picture, 0.5);
  fuzz::require(jpeg.has_value());
  const auto again = decode(*jpeg);
  fuzz::require(again && again->width == picture.width && again->height == picture.height &&
                again->orientation == picture.orientation);
}

void analyse(std::string_view bytes) {
  const objc::AutoreleasePool pool;
  const auto image =
      Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData,
                                  NSData::dataWithBytes(bytes.data(), bytes.size())));
  if (image.get() == nullptr) return;
  fuzz::require(varnix::Color::AverageColor(image) != nullptr);
  varnix::Color::ImportantColor(image);
}

std::uint32_t wordAt(const uint8_t* bytes) {
  return std::uint32_t{bytes[0]} << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

/// Corrects the checksum of each chunk of a PNG; otherwise hardly any chunk would be read.
void correctChecksums(uint8_t* data, size_t size) {
  constexpr size_t kSignature = 8, kAround = 12;
  size_t at = kSignature;
  while (at + kAround <= size && wordAt(data + at) <= size - at - kAround) {
    const uint32_t length = wordAt(data + at);
    const auto sum = static_cast<std::uint32_t>(crc32(0, data + at + 4, length + 4));
    for (int i = 0; i < 4; ++i)
      data[at + 8 + length + i] = static_cast<uint8_t>(sum >> (24 - 8 * i));
    at += kAround + length;
  }
}

}  // namespace

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t largest);

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t largest,
                                          unsigned seed) {
  const size_t mutated = LLVMFuzzerMutate(data, size, largest);
  if (mutated > 4 && std::memcmp(data, "\x89PNG", 4) == 0 && seed % 8 != 0)
    correctChecksums(data, mutated);
  return mutated;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::hostApplication();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes = fuzz::text(data, size);
  std::string why;
  const auto picture = decode(bytes, &why);
  fuzz::require(picture.has_value() || !why.empty());
  if (!picture) return 0;
  const std::size_t pixels = std::size_t{picture->width} * picture->height;
  fuzz::require(pixels > 0 && picture->rgba.size() == pixels * 4);
  if (pixels <= kPixelsToWrite) requireWritable(*picture);
  if (pixels <= kPixelsToAnalyse) analyse(bytes);
  return 0;
}
