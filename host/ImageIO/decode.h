// Reads and writes pictures in files: PNG and JPEG.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace host::imageio {

/// What a file's beginning says about its picture.
struct Header {
  unsigned width = 0;  ///< in pixels, as stored: the orientation is not applied
  unsigned height = 0;
  bool hasAlpha = false;  ///< the format has it, even if every pixel is opaque; else all are
  bool isGrey = false;    ///< stored as grey without alpha: red, green and blue are the same
  /// UIImageOrientation, which says how to rotate the stored pixels for display: 0 up, 1 down (180
  /// degrees), 2 left (90 degrees counter-clockwise), 3 right (90 degrees clockwise), 4 to 7 the
  /// same, mirrored left to right first.
  int orientation = 0;

  std::size_t pixels() const { return std::size_t{width} * height; }
  std::size_t bytesPerRow() const { return std::size_t{width} * 4; }
};

/// sRGB bytes. An embedded profile is applied, and so are gamma and chromaticities unless the file
/// says that it is sRGB. Invalid ones count as absent.
struct Picture {
  unsigned width = 0;
  unsigned height = 0;
  bool hasAlpha = false;
  int orientation = 0;
  std::vector<std::uint8_t> rgba;  ///< straight alpha, rows of width * 4 bytes, top row first
};

inline constexpr unsigned kMaximumSide = 65'535;
inline constexpr unsigned kMaximumJpegSide = 65'500;  ///< the JPEG library's limit
inline constexpr std::size_t kMaximumPixels = 100'000'000;

/// Takes a picture row by row.
class Rows {
 public:
  virtual ~Rows() = default;
  /// Called once, before the rows. Return false if it is enough to know that there is a first row.
  virtual bool begin(const Header& header) = 0;
  /// The next row from the top, width * 4 bytes of straight RGBA. Return false to get no more.
  virtual bool take(const std::uint8_t* rgba) = 0;
};

/// Reads a whole PNG or JPEG file; anything after its end is ignored. False, with one plain reason
/// in problem, for bytes of any other format, a picture without pixels, a picture beyond the
/// limits, which is refused before memory is allocated for it, and a damaged one without a single
/// row. True with a problem if rows or the end are missing: the rows delivered so far are good.
///
/// Memory is needed only for a few rows, except for an interlaced PNG (the whole picture, 4 bytes
/// per pixel) and a JPEG in several scans (its coefficients, 3 to 6 bytes per pixel).
HOST_EXPORT bool readRows(std::string_view bytes, Rows& rows, std::string& problem);

/// The same as a picture; missing rows are zeros, or opaque black if the format has no alpha.
/// Nothing if that returns false.
HOST_EXPORT std::optional<Picture> decode(std::string_view bytes, std::string* problem = nullptr);

/// Quality is 0 to 1, clamped. Transparent pixels become white; the orientation is kept. Nothing
/// for a picture without pixels, beyond the limits, or whose size and bytes disagree.
HOST_EXPORT std::optional<std::string> encodeJpeg(const Picture& picture, double quality);

/// RGB without alpha, or RGBA. The orientation is lost: the format has no place for it. Nothing in
/// the same cases as above.
HOST_EXPORT std::optional<std::string> encodePng(const Picture& picture);

}  // namespace host::imageio
