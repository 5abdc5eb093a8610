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

/// What a file's beginning says of its picture.
struct Header {
  unsigned width = 0;  ///< in pixels, as stored: the orientation is not applied
  unsigned height = 0;
  bool hasAlpha = false;  ///< the format has it, even where every pixel is opaque; else all are
  bool isGrey = false;    ///< stored as greys without alpha: red, green and blue are the same
  /// UIImageOrientation, which says how to turn the stored pixels for the eye: 0 up, 1 down (180
  /// degrees), 2 left (90 degrees counter-clockwise), 3 right (90 degrees clockwise), 4 to 7 the
  /// same, mirrored left to right beforehand.
  int orientation = 0;

  std::size_t pixels() const { return std::size_t{width} * height; }
  std::size_t bytesPerRow() const { return std::size_t{width} * 4; }
};

/// sRGB bytes. An embedded profile is honoured, as are gamma and chromaticities where the file does
/// not call itself sRGB; what makes no sense counts as absent.
struct Picture {
  unsigned width = 0;
  unsigned height = 0;
  bool hasAlpha = false;
  int orientation = 0;
  std::vector<std::uint8_t> rgba;  ///< straight alpha, rows of width * 4 bytes, top row first
};

inline constexpr unsigned kMaximumSide = 65'535;
inline constexpr unsigned kMaximumJpegSide = 65'500;  ///< what the JPEG library takes
inline constexpr std::size_t kMaximumPixels = 100'000'000;

/// Takes a picture row by row.
class Rows {
 public:
  virtual ~Rows() = default;
  /// Comes once, ahead of the rows. False where it is enough to know that there is a first one.
  virtual bool begin(const Header& header) = 0;
  /// The next row from the top, width * 4 bytes of straight RGBA. False where no more are wanted.
  virtual bool take(const std::uint8_t* rgba) = 0;
};

/// Reads a whole PNG or JPEG file; what follows its end is ignored. False, with one plain reason in
/// problem, for bytes of no such format, a picture without pixels, one beyond the limits, which is
/// refused before memory is taken for it, and a damaged one of which no row is there. True with a
/// problem where rows or the end are missing: the rows that came stand.
///
/// Memory is taken for a few rows alone, but for an interlaced PNG (the whole picture, 4 bytes a
/// pixel) and a JPEG in several scans (its coefficients, 3 to 6 bytes a pixel).
HOST_EXPORT bool readRows(std::string_view bytes, Rows& rows, std::string& problem);

/// The same as a picture; missing rows are zeros, or opaque
/// black where the format has no alpha. Nothing where that answers false.
HOST_EXPORT std::optional<Picture> decode(std::string_view bytes, std::string* problem = nullptr);

/// Quality 0 to 1, clamped. Transparent pixels are laid on white; the orientation is kept. Nothing
/// for a picture without pixels, beyond the limits, or whose size and bytes do not agree.
HOST_EXPORT std::optional<std::string> encodeJpeg(const Picture& picture, double quality);

/// RGB without alpha, or RGBA. The orientation is lost: the format has no place for it. Nothing in
/// the same cases as above.
HOST_EXPORT std::optional<std::string> encodePng(const Picture& picture);

}  // namespace host::imageio
