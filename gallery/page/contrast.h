// How well a dyed colour is told from what lies behind it, and what would be told well enough.
#pragma once

#include <optional>
#include <string_view>

#include "drawing/byte_color.h"

namespace varnix::cli::gallery {

/// What the guidelines ask of text; of large text and of the parts of controls, kLeastForShapes.
inline constexpr double kLeastForText = 4.5;
inline constexpr double kLeastForShapes = 3;

/// From "#rrggbb" or "#rrggbbaa"; nothing for any other text.
std::optional<drawing::ByteColor> parseColor(std::string_view text);

/// The colour itself where its contrast against the opaque ground reaches `least`; else the one of
/// the same hue and saturation whose lightness (HSL) lies nearest. Nothing where none reaches it:
/// that cannot be for 4.5 and less. Both colours are opaque.
std::optional<drawing::ByteColor> nearestOfHue(const drawing::ByteColor& color,
                                               const drawing::ByteColor& ground, double least);

}  // namespace varnix::cli::gallery
