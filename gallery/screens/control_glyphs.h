// The glyphs of Control Centre and of the volume, each around its middle.
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
/// Direction 1 forward, -1 back.
void drawSkip(const Canvas& canvas, Point middle, int direction, const Color& color);
void drawScreenSharing(const Canvas& canvas, Point middle, const Color& color);
void drawDrop(const Canvas& canvas, Point middle, const Color& color);
/// Its left edge there, with none to three waves; twelve points high, times the scale.
void drawLoudspeaker(const Canvas& canvas, Point left, int waves, const Color& color,
                     double scale = 1);

}  // namespace varnix::screens
