// The questions and answers of a picture's analysis, which the command and its module share.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pick/color.h"

namespace varnix::cli::pick {

/// A colour of the frame, and how many samples are like it, at most 255.
struct CountedColor {
  Color color;
  int count = 0;
};

/// Premultiplied, one 32-bit number for each pixel: alpha in the top byte, then red. Top row first.
struct Pixels {
  unsigned width = 0;
  unsigned height = 0;
  std::vector<std::uint32_t> argb;
};

struct Analysis {
  std::string file;
  std::string error;    ///< why there are no results; empty if there are
  std::string warning;  ///< what is wrong with an image that was analysed anyway
  Color background, primary, secondary, important, average;
  const char* rule = "";     ///< how the important colour was chosen
  bool isSaturated = false;  ///< whether its saturation was changed
  std::vector<CountedColor> runnersUp;

  /// Only needed for the picture. The frame is the quarter of 16 x 16 that is used.
  unsigned width = 0;
  unsigned height = 0;
  Pixels preview, squeezed;
  std::vector<CountedColor> frame;
};

struct Request {
  std::vector<std::string> files;
  std::size_t runnersUp = 0;
  bool wantsPicture = false;
};

struct Answer {
  std::vector<Analysis> images;  ///< one for each file, in their order
  std::string picture;           ///< PNG: a card for each image that could be read; else empty
};

/// What the module offers.
struct Module {
  /// Throws UsageError for more images than one picture can hold, and Failure if no pass can be
  /// drawn; the log says why.
  Answer (*answer)(const Request& request);
};

inline constexpr char kModuleEntry[] = "varnix_pick";

}  // namespace varnix::cli::pick
