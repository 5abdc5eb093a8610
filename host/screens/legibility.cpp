#include "screens/legibility.h"

namespace host::screens {

Color legibleOn(const Color& wallpaper) {
  constexpr double kBright = 0.68;
  return luma(wallpaper) > kBright ? kBlack : kWhite;
}

}  // namespace host::screens
