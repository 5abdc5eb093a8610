// The contrast of a dyed colour with what is behind it, and the nearest colour with enough
// contrast.
#pragma once

#include <optional>
#include <string_view>

#include "drawing/byte_color.h"

namespace varnix::cli::gallery {

/// The contrast that the guidelines ask of text. For large text and parts of controls it is
/// kLeastForShapes.
inline constexpr double kLeastForText = 4.5;
inline constexpr double kLeastForShapes = 3;

/// From "#rrggbb" or "#rrggbbaa"; nothing for any other text.
std::optional<drawing::ByteColor> parseColor(std::string_view text);

/// The colour itself if its contrast with the opaque ground reaches `least`; else the one of the
/// same hue and saturation with the nearest lightness (HSL) that does. Nothing if none does, which
/// cannot happen for 4.5 and less. Both colours are opaque.
std::optional<drawing::ByteColor> nearestOfHue(const drawing::ByteColor& color,
                                               const drawing::ByteColor& ground, double least);

}  // namespace varnix::cli::gallery
