// What an analysis of pictures asks and answers: what the command and its module share.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pick/color.h"

namespace varnix::cli::pick {

/// A colour of the frame, and how many samples are like it, 255 at most.
struct CountedColor {
  Color color;
  int count = 0;
};

/// Premultiplied, a 32-bit number a pixel with alpha in its top byte, then red; top row first.
struct Pixels {
  unsigned width = 0;
  unsigned height = 0;
  std::vector<std::uint32_t> argb;
};

struct Analysis {
  std::string file;
  std::string error;    ///< why there is nothing else; empty where there is
  std::string warning;  ///< what is wrong with an image that was analysed all the same
  Color background, primary, secondary, important, average;
  const char* rule = "";     ///< where the important colour came from
  bool isSaturated = false;  ///< whether it was pushed to another saturation
  std::vector<CountedColor> runnersUp;

  /// For the picture alone. The frame is the quarter of 16 x 16 that counts.
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
  std::vector<Analysis> images;  ///< one a file, in their order
  std::string picture;           ///< PNG: a card for each image that could be read; else empty
};

/// What the module offers.
struct Module {
  /// Throws UsageError for more images than one picture holds, and Failure where no pass can be
  /// drawn; the log says why.
  Answer (*answer)(const Request& request);
};

inline constexpr char kModuleEntry[] = "varnix_pick";

}  // namespace varnix::cli::pick
