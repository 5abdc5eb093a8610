// Draws a page of the Settings application.
#pragma once

#include "drawing/canvas.h"
#include "gallery/screens/list_page.h"

namespace varnix::screens {

/// From the top of the page, as far as the screen reaches.
void drawListPage(const Canvas& canvas, const ListPage& page);

}  // namespace varnix::screens
