// The picture of several screens, one over the other.
#pragma once

#include <span>

#include "gallery/screens/screen.h"

namespace varnix::screens {

/// Draws the layers on an empty canvas. The lowest one of several is kept, by screen, wallpaper and
/// size, and only copied for the next picture as long as its answers are the same: every panel lies
/// over the same home screen. May be called on any thread.
void drawLayers(const Canvas& canvas, std::span<const Layer> layers, const Scene& scene);

}  // namespace varnix::screens
