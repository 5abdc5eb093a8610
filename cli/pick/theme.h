// What all parts of a card share.
#pragma once

#include "pick/canvas.h"

namespace varnix::cli::pick {

inline constexpr Color kPage{243, 244, 247};
inline constexpr Color kPaper{255, 255, 255};
inline constexpr Color kInk{28, 30, 38};
inline constexpr Color kSubdued{122, 126, 140};
inline constexpr Color kEdge{20, 24, 40, 26};

inline constexpr double kRadius = 12;

inline constexpr TextStyle kTitle{20, Weight::semibold, kInk};
inline constexpr TextStyle kLabel{13, Weight::semibold, kInk};
inline constexpr TextStyle kBody{13, Weight::regular, kInk};
inline constexpr TextStyle kCaption{11, Weight::regular, kSubdued};

constexpr TextStyle aligned(TextStyle style, Align align) {
  style.align = align;
  return style;
}

}  // namespace varnix::cli::pick
