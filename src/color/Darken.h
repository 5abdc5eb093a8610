// A colour made darker.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// The colour with its brightness lowered and its saturation raised by that many per cent. Changing
/// both gives a deeper shade rather than a duller one. Nothing is clamped. A colour without hue,
/// saturation and brightness is returned as it is; nil gives nil.
UIColor* Darken(UIColor* color, float amount);

}  // namespace varnix::Color
