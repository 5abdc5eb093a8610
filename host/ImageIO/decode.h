// Pictures in and out of files: PNG and JPEG.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace host::imageio {

/// sRGB bytes as they stand in the file: no gamma or profile is applied.
struct Picture {
  unsigned width = 0;  ///< in pixels, as stored: the orientation is not applied
  unsigned height = 0;
  bool hasAlpha = false;  ///< the format has it, even where every pixel is opaque; else all are
  /// UIImageOrientation, which says how to turn the stored pixels for the eye: 0 up, 1 down (180
  /// degrees), 2 left (90 degrees counter-clockwise), 3 right (90 degrees clockwise), 4 to 7 the
  /// same, mirrored left to right beforehand.
  int orientation = 0;
  std::vector<std::uint8_t> rgba;  ///< straight alpha, rows of width * 4 bytes, top row first
};

inline constexpr unsigned kMaximumSide = 65'535;
inline constexpr std::size_t kMaximumPixels = 100'000'000;

/// A whole PNG or JPEG file; what follows its end is ignored. Nothing, with one plain reason in why
/// where that is given, for bytes of no such format, truncated or damaged ones, a picture without
/// pixels, and one beyond the limits, which is refused before memory is taken for it.
HOST_EXPORT std::optional<Picture> decode(std::string_view bytes, std::string* why = nullptr);

/// Quality 0 to 1, clamped. Transparent pixels are laid on white; the orientation is kept. Nothing
/// for a picture without pixels, beyond the limits, or whose size and bytes do not agree.
HOST_EXPORT std::optional<std::string> encodeJpeg(const Picture& picture, double quality);

/// RGB without alpha, or RGBA. The orientation is lost: the format has no place for it. Nothing in
/// the same cases as above.
HOST_EXPORT std::optional<std::string> encodePng(const Picture& picture);

}  // namespace host::imageio
