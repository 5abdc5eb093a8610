// Colours of the same hue.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/byte_color.h"

namespace varnix::cli {

/// The colour of a setting's value, "#RRGGBB", "RRGGBB" or "#RGB"; an alpha after it is left out.
/// Nothing for any other text.
std::optional<drawing::ByteColor> plainColor(std::string_view value);

/// Its hue and saturation with other lightnesses (HSL), the nearest first, from black to white.
/// Without the colour itself.
std::vector<drawing::ByteColor> shadesOf(const drawing::ByteColor& color);

}  // namespace varnix::cli
