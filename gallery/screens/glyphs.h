// Small drawings in one colour, around their centre.
#pragma once

#include "drawing/canvas.h"

namespace varnix::screens {

using namespace drawing;

// For tab bars, about 25 points.
void drawPlaylists(const Canvas& canvas, Point middle, const Color& color);
void drawMicrophone(const Canvas& canvas, Point middle, const Color& color);
void drawNote(const Canvas& canvas, Point middle, const Color& color);
void drawBroadcast(const Canvas& canvas, Point middle, const Color& color);
void drawMore(const Canvas& canvas, Point middle, const Color& color);
void drawHouse(const Canvas& canvas, Point middle, const Color& color);
void drawMagnifier(const Canvas& canvas, Point middle, const Color& color);
void drawBell(const Canvas& canvas, Point middle, const Color& color);
void drawEnvelope(const Canvas& canvas, Point middle, const Color& color);
void drawPerson(const Canvas& canvas, Point middle, const Color& color);
void drawHeart(const Canvas& canvas, Point middle, const Color& color);
void drawFullHeart(const Canvas& canvas, Point middle, const Color& color);
void drawCamera(const Canvas& canvas, Point middle, const Color& color);

}  // namespace varnix::screens
