// Images made smaller, each pixel the mean of what it covers.
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

/// Makes an image smaller whose rows come one after another. Every pixel of `to` becomes the mean
/// of the area of the source that it stands for, rounded; pixels on the area's edge count by the
/// part that lies inside. `to` is no larger than the source either way.
class HOST_EXPORT Shrinking {
 public:
  Shrinking(std::size_t width, std::size_t height, const PixelRows& to);
  ~Shrinking();
  Shrinking(const Shrinking&) = delete;
  Shrinking& operator=(const Shrinking&) = delete;

  /// The source's next rows, as wide as it. Many at once are quicker.
  void add(const PixelRows& rows);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// The same for an image that is there as a whole.
HOST_EXPORT void shrink(const PixelRows& from, const PixelRows& to);

}  // namespace host
