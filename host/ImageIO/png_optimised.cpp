#include "ImageIO/png_optimised.h"

#include <zlib.h>

#include <algorithm>

namespace host::imageio {

namespace {

constexpr std::size_t kSignature = 8;
/// Length and name before a chunk's data, and the checksum after it.
constexpr std::size_t kChunkHead = 8;
constexpr std::size_t kSum = 4;

/// For a window of 32 KiB, without a dictionary.
constexpr std::string_view kZlibHeader = "\x78\x01";

std::uint32_t number(std::string_view bytes) {
  std::uint32_t value = 0;
  for (const char byte : bytes.substr(0, 4)) value = value << 8 | static_cast<std::uint8_t>(byte);
  return value;
}

struct Number {
  explicit Number(std::uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<char>(value >> (24 - 8 * i));
  }
  operator std::string_view() const { return {bytes, 4}; }
  char bytes[4];
};

std::uint32_t sumOf(std::string_view bytes, std::uint32_t sum = 0) {
  return static_cast<std::uint32_t>(
      crc32_z(sum, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

}  // namespace

bool isOptimised(std::string_view bytes) {
  return bytes.size() >= kSignature + kChunkHead && bytes.substr(kSignature + 4, 4) == "CgBI";
}

std::size_t headerAt(std::string_view bytes) {
  if (!isOptimised(bytes)) return kSignature;
  return kSignature + kChunkHead + number(bytes.substr(kSignature)) + kSum;
}

void handOutAsOrdinary(std::string_view bytes, void (*take)(void* taker, std::string_view piece),
                       void* taker) {
  take(taker, bytes.substr(0, kSignature));
  std::string_view rest = bytes.substr(std::min(headerAt(bytes), bytes.size()));
  bool isFirstData = true;
  while (rest.size() >= kChunkHead) {
    const std::uint32_t length = number(rest);
    const std::string_view name = rest.substr(4, 4);
    const std::string_view whole = rest.substr(0, kChunkHead + length + kSum);
    rest.remove_prefix(whole.size());
    if (name != "IDAT" || !isFirstData || length > UINT32_MAX / 2) {
      take(taker, whole);
      continue;
    }
    isFirstData = false;
    take(taker, Number(length + static_cast<std::uint32_t>(kZlibHeader.size())));
    take(taker, name);
    take(taker, kZlibHeader);
    const std::string_view data = whole.substr(kChunkHead, length);
    take(taker, data);
    if (whole.size() < kChunkHead + length + kSum) return;
    const std::uint32_t error =
        number(whole.substr(kChunkHead + length)) ^ sumOf(data, sumOf(name));
    take(taker, Number(sumOf(data, sumOf(kZlibHeader, sumOf(name))) ^ error));
  }
}

void divideByAlpha(std::uint8_t* rgba, std::size_t width) {
  for (std::uint8_t* end = rgba + width * 4; rgba != end; rgba += 4) {
    const unsigned alpha = rgba[3];
    if (alpha == 0 || alpha == 255) continue;
    for (int i = 0; i < 3; ++i) {
      rgba[i] =
          static_cast<std::uint8_t>(std::min<unsigned>((rgba[i] * 255 + alpha / 2) / alpha, 255));
    }
  }
}

}  // namespace host::imageio
