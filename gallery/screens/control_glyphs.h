// The glyphs of Control Centre and of the volume panel, each around its centre.
#pragma once

#include "drawing/canvas.h"

namespace varnix::screens {

using namespace drawing;

using Glyph = void (*)(const Canvas& canvas, Point middle, const Color& color);

// About 30 points.
void drawAirplane(const Canvas& canvas, Point middle, const Color& color);
void drawFan(const Canvas& canvas, Point middle, const Color& color);
void drawBluetooth(const Canvas& canvas, Point middle, const Color& color);
void drawMoon(const Canvas& canvas, Point middle, const Color& color);
void drawRotationLock(const Canvas& canvas, Point middle, const Color& color);
void drawTorch(const Canvas& canvas, Point middle, const Color& color);
void drawTimer(const Canvas& canvas, Point middle, const Color& color);
void drawCalculator(const Canvas& canvas, Point middle, const Color& color);
void drawSmallCamera(const Canvas& canvas, Point middle, const Color& color);

// About 20 points.
void drawSun(const Canvas& canvas, Point middle, double radius, const Color& color);
void drawPlay(const Canvas& canvas, Point middle, const Color& color);
void drawPause(const Canvas& canvas, Point middle, const Color& color);
/// Direction 1 is forward, -1 is back.
void drawSkip(const Canvas& canvas, Point middle, int direction, const Color& color);
void drawScreenSharing(const Canvas& canvas, Point middle, const Color& color);
void drawDrop(const Canvas& canvas, Point middle, const Color& color);
/// The point is its left edge. It has none to three waves, and is twelve points high, times the
/// scale.
void drawLoudspeaker(const Canvas& canvas, Point left, int waves, const Color& color,
                     double scale = 1);

}  // namespace varnix::screens
