#include "gallery/screens/kept_blurs.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <list>
#include <mutex>
#include <vector>

#include "drawing/blur.h"

namespace varnix::screens {

namespace {

/// Both wallpapers, bare and below the panels, in two sizes. A large picture's pixels take 4 MB.
constexpr std::size_t kMostBlurs = 8;

struct Kept {
  int width = 0, height = 0;
  double sigma = 0, saturation = 0;
  std::vector<unsigned char> pixels;
  Surface soft;
};

std::size_t bytesOf(const Surface& surface) {
  return static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get())) *
         static_cast<std::size_t>(drawing::heightOf(surface));
}

class Blurs {
 public:
  /// Null if there is none.
  Surface find(const Surface& picture, double sigma, double saturation) {
    const unsigned char* pixels = cairo_image_surface_get_data(picture.get());
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const Kept& kept) {
      return kept.width == drawing::widthOf(picture) && kept.height == drawing::heightOf(picture) &&
             kept.sigma == sigma && kept.saturation == saturation &&
             kept.pixels.size() == bytesOf(picture) &&
             std::memcmp(kept.pixels.data(), pixels, kept.pixels.size()) == 0;
    });
    if (found == kept_.end()) return nullptr;
    kept_.splice(kept_.begin(), kept_, found);
    return found->soft;
  }

  void add(const Surface& picture, double sigma, double saturation, const Surface& soft) {
    const unsigned char* pixels = cairo_image_surface_get_data(picture.get());
    Kept kept{drawing::widthOf(picture),
              drawing::heightOf(picture),
              sigma,
              saturation,
              {pixels, pixels + bytesOf(picture)},
              soft};
    const std::lock_guard lock(mutex_);
    kept_.push_front(std::move(kept));
    if (kept_.size() > kMostBlurs) kept_.pop_back();
  }

 private:
  std::mutex mutex_;
  std::list<Kept> kept_;  ///< the last used first
};

Blurs& blurs() {
  static Blurs blurs;
  return blurs;
}

}  // namespace

Surface keptBlur(const Surface& picture, double sigma, double saturation) {
  cairo_surface_flush(picture.get());
  Surface soft = blurs().find(picture, sigma, saturation);
  if (soft != nullptr) return soft;
  soft = drawing::blurred(picture, sigma);
  drawing::saturate(soft, saturation);
  blurs().add(picture, sigma, saturation, soft);
  return soft;
}

}  // namespace varnix::screens
