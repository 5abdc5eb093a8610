// Makes images smaller: each pixel is the mean of the area that it covers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "export.h"

namespace host {

/// Rows of cairo's pixels, a number of pixels apart.
struct PixelRows {
  std::uint32_t* pixels;
  std::size_t stride;
  std::size_t width, height;
};

/// Makes an image smaller whose rows arrive one after another. Every pixel of `to` becomes the
/// rounded mean of the area of the source that it covers. Pixels on the area's edge count by the
/// part inside it. `to` is not larger than the source in either direction.
class HOST_EXPORT Shrinking {
 public:
  Shrinking(std::size_t width, std::size_t height, const PixelRows& to);
  ~Shrinking();
  Shrinking(const Shrinking&) = delete;
  Shrinking& operator=(const Shrinking&) = delete;

  /// The source's next rows, in its full width. Many at once are faster.
  void add(const PixelRows& rows);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// The same for a complete image.
HOST_EXPORT void shrink(const PixelRows& from, const PixelRows& to);

}  // namespace host
