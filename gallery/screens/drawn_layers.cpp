#include "gallery/screens/drawn_layers.h"

#include <cstddef>
#include <cstring>
#include <list>
#include <mutex>

namespace varnix::screens {

namespace {

/// Home screen and application, on both wallpapers, in two sizes.
constexpr std::size_t kMostLowest = 8;

/// What a kept picture shows. It keeps the scene's pictures, so that no other has their address.
struct Contents {
  const Screen* screen = nullptr;
  double scale = 0;
  Scene scene;
  Answers answers;

  /// Whether a new picture takes this one's place.
  bool isSamePlace(const Contents& other) const {
    return screen == other.screen && scale == other.scale &&
           scene.wallpaper == other.scene.wallpaper;
  }
  bool operator==(const Contents& other) const {
    return isSamePlace(other) && scene.wallpaperColor == other.scene.wallpaperColor &&
           scene.icons == other.scene.icons && scene.photograph == other.scene.photograph &&
           scene.isPlaying == other.scene.isPlaying && answers == other.answers;
  }
};

std::size_t bytesIn(const Surface& surface) {
  return static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get())) *
         static_cast<std::size_t>(heightOf(surface));
}

struct Lowest {
  std::mutex mutex;  ///< of what follows; who holds it draws, and others wait for the picture
  Contents contents;
  Surface picture;
};

class LowestLayers {
 public:
  std::shared_ptr<Lowest> at(const Contents& contents) {
    const std::lock_guard lock(mutex_);
    for (auto it = places_.begin(); it != places_.end(); ++it) {
      if (!it->place.isSamePlace(contents)) continue;
      places_.splice(places_.begin(), places_, it);
      return it->lowest;
    }
    places_.push_front({contents, std::make_shared<Lowest>()});
    if (places_.size() > kMostLowest) places_.pop_back();
    return places_.front().lowest;
  }

 private:
  struct Place {
    Contents place;
    std::shared_ptr<Lowest> lowest;
  };
  std::mutex mutex_;
  std::list<Place> places_;  ///< the last used first
};

LowestLayers& lowestLayers() {
  static LowestLayers layers;
  return layers;
}

void drawLowest(const Canvas& canvas, const Layer& layer, const Scene& scene) {
  const Contents contents{layer.screen, canvas.scale(), scene, *layer.answers};
  const auto lowest = lowestLayers().at(contents);
  const std::lock_guard lock(lowest->mutex);
  cairo_surface_flush(canvas.surface().get());
  if (lowest->picture == nullptr || !(lowest->contents == contents)) {
    layer.screen->draw(canvas, *layer.answers, scene);
    lowest->picture = canvas.copy();
    cairo_surface_flush(lowest->picture.get());
    lowest->contents = contents;
    return;
  }
  std::memcpy(cairo_image_surface_get_data(canvas.surface().get()),
              cairo_image_surface_get_data(lowest->picture.get()), bytesIn(lowest->picture));
  cairo_surface_mark_dirty(canvas.surface().get());
}

/// Panels lie over these.
bool isOftenLowest(const Screen& screen) { return &screen == &kHome || &screen == &kApplication; }

}  // namespace

void drawLayers(const Canvas& canvas, std::span<const Layer> layers, const Scene& scene) {
  for (const Layer& layer : layers) {
    if (&layer == layers.data() && isOftenLowest(*layer.screen)) drawLowest(canvas, layer, scene);
    else layer.screen->draw(canvas, *layer.answers, scene);
  }
}

}  // namespace varnix::screens
