// Text straight on a wallpaper: white on a dark one, black on a light one.
#pragma once

#include "screens/screen.h"

namespace host::screens {

Color legibleOn(const Color& wallpaper);

}  // namespace host::screens
