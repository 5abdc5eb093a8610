// An image whose pixels are in a file's bytes. A small one is decoded at once. A large one is read
// again for each requested size, and decoded when its own pixels are requested.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "CoreGraphics/pixel_format.h"
#include "CoreGraphics/shrink.h"
#include "CoreGraphics/small_copies.h"
#include "ImageIO/decode.h"
#include "objc/strong.h"
#include "platform/Foundation.h"

namespace host {

/// Images with more pixels are large; 64 MiB hold the others.
inline constexpr std::size_t kMostKeptPixels = std::size_t{16} << 20;

class FileImage {
 public:
  explicit FileImage(NSData* file);

  /// False if it is not an image.
  bool isImage() const { return isImage_; }
  const imageio::Header& header() const { return header_; }
  /// The format of pixels(): grey if the file is, otherwise RGBA with straight alpha.
  PixelFormat format() const;
  std::size_t size() const { return header_.pixels() * format().bytesPerPixel(); }

  /// All of them, decoded on first use. Missing rows are zeros.
  const std::uint8_t* pixels();
  /// Whether pixels() is already decoded.
  bool isDecoded() const { return isDecoded_; }
  /// The same from the top, a few rows of cairo's pixels at a time, without keeping them.
  void readStrips(const std::function<void(const PixelRows&)>& take);

  /// Shared with the previous image if both are large and have the same bytes. The problem says why
  /// rows are missing, as far as was noticed.
  const std::shared_ptr<SmallCopies>& copies() const { return copies_; }

 private:
  class Loading;
  class Strips;
  void decodeAll();

  Strong<NSData> file_;  ///< as long as it may still be read
  imageio::Header header_;
  bool isImage_ = false;
  std::once_flag decoded_;
  std::atomic<bool> isDecoded_ = false;
  std::vector<std::uint8_t> pixels_;
  std::shared_ptr<SmallCopies> copies_;
};

/// The image in a file's bytes, owned by the caller; nil if it is not an image. The orientation is
/// UIImageOrientation.
HOST_EXPORT CGImageRef imageFromFile(NSData* file, NSInteger& orientation);

/// Why rows of such an image are missing. Reads it to its end to find out. Empty if none are
/// missing, and for other images and nil.
HOST_EXPORT std::string problemOf(CGImageRef image);

}  // namespace host
