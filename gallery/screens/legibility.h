// Text directly on a wallpaper: white on a dark one, black on a light one.
#pragma once

#include "gallery/screens/screen.h"

namespace varnix::screens {

Color legibleOn(const Color& wallpaper);

}  // namespace varnix::screens
