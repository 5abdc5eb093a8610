// The frame that a pass leaves, read back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "color/CQRGBPixel.h"
#include "platform/OpenGLES.h"
#include "platform/UIKit.h"

namespace varnix::picker {

/// A pixel's colour and, as alpha, the number of similar samples.
struct FramePixel {
  std::uint8_t red, green, blue, alpha;

  CQRGBPixel color() const { return {red, green, blue}; }
  UIColor* opaque() const {
    constexpr CGFloat kRange = 255;
    return UIColor::colorWithRed(red / kRange, green / kRange, blue / kRange, 1);
  }
};

/// Rows of that many pixels, the image's top row first. All zeros if nothing could be read; null if
/// there is no memory.
inline FramePixel* readFrame(NSUInteger width, NSUInteger height, bool canRead) {
  NSUInteger count = 0;
  constexpr NSUInteger kLongest = 0x7fffffff;
  if (width > kLongest || height > kLongest || __builtin_mul_overflow(width, height, &count))
    return nullptr;
  auto* pixels = static_cast<FramePixel*>(std::calloc(count, sizeof(FramePixel)));
  if (pixels != nullptr && canRead) {
    glReadPixels(0, 0, static_cast<GLsizei>(width), static_cast<GLsizei>(height), GL_RGBA,
                 GL_UNSIGNED_BYTE, pixels);
  }
  return pixels;
}

/// A frame that is freed at the end of its scope.
class Frame {
 public:
  Frame(NSUInteger width, NSUInteger height, bool canRead)
      : pixels_(readFrame(width, height, canRead)), width_(width), height_(height) {}
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;
  ~Frame() { std::free(pixels_); }

  /// The pixel with the greatest alpha (the first, if several are equal) among those in the quarter
  /// that counts whose colour qualifies. Black with alpha 0 if there is none.
  template <class Qualifies>
  FramePixel mostFrequent(Qualifies qualifies) const {
    FramePixel best{};
    if (pixels_ == nullptr) return best;
    for (NSUInteger y = 0; y < height_ / 2; ++y) {
      const FramePixel* row = pixels_ + y * width_;
      for (NSUInteger x = 0; x < width_ / 2; ++x) {
        if (row[x].alpha > best.alpha && qualifies(row[x].color())) best = row[x];
      }
    }
    return best;
  }
  FramePixel mostFrequent() const {
    return mostFrequent([](const CQRGBPixel&) { return true; });
  }

  /// Hands the pixels to the caller, who frees them.
  FramePixel* leak() {
    FramePixel* pixels = pixels_;
    pixels_ = nullptr;
    return pixels;
  }

 private:
  FramePixel* pixels_;
  NSUInteger width_, height_;
};

}  // namespace varnix::picker
