#include "gallery/screens/legibility.h"

namespace varnix::screens {

Color legibleOn(const Color& wallpaper) {
  constexpr double kBright = 0.68;
  return luma(wallpaper) > kBright ? kBlack : kWhite;
}

}  // namespace varnix::screens
