#include "contrast/readings.h"

#include <cmath>
#include <cstdint>

#include "common/json.h"
#include "drawing/hex.h"
#include "gallery/materials/screens_module.h"

namespace varnix::cli {

using drawing::InkKind;
using drawing::Place;
using varnix::screens::Layer;
using varnix::screens::Screen;

namespace {

double reach(const Place& place) { return place.contrast / drawing::neededContrast(place.kind); }

const char* wordOf(InkKind kind) {
  switch (kind) {
    case InkKind::text:
      return "text";
    case InkKind::largeText:
      return "large text";
    case InkKind::symbol:
      return "symbol";
  }
  return "";
}

std::string hexOf(const drawing::Color& color) {
  auto byte = [](double part) { return static_cast<std::uint8_t>(std::lround(part * 255)); };
  return drawing::hex(byte(color.red), byte(color.green), byte(color.blue));
}

Json boxJson(const drawing::Box& box) { return {box.x, box.y, box.width, box.height}; }

}  // namespace

std::vector<Sight> sightsOf(const Sights& sights) {
  std::vector<Sight> all;
  for (const Screen* screen : sights.screens) {
    for (const auto& [wallpaper, scene] : sights.scenes) {
      all.push_back({screen, wallpaper});
      if (!screen->showsWallpaper) break;
    }
  }
  return all;
}

const varnix::screens::Answers& Attempt::answers(const Screen& screen,
                                                 const std::string& wallpaper) {
  auto known = known_.find(screen.bundle);
  if (known == known_.end()) known = known_.emplace(screen.bundle, ask_(screen, settings_)).first;
  return known->second.screens.at(screen.id).at(wallpaper);
}

std::vector<Layer> Attempt::layers(const Sight& sight) {
  std::vector<Layer> layers;
  if (sight.screen->coversAnother)
    layers.push_back({sights_.covered, &answers(*sights_.covered, sight.wallpaper)});
  layers.push_back({sight.screen, &answers(*sight.screen, sight.wallpaper)});
  return layers;
}

std::vector<drawing::Reading> Attempt::read(const Sight& sight) {
  return screensModule().read(layers(sight), sights_.scenes.at(sight.wallpaper));
}

bool holds(const Place& place) { return reach(place) >= 1; }
bool isWorse(const Place& one, const Place& other) { return reach(one) < reach(other); }

void take(SurfaceReadings& readings, const Sight& sight,
          const std::vector<drawing::Reading>& read) {
  for (const auto& [surface, place] : read) {
    const auto [known, isNew] =
        readings.try_emplace({sight.screen->bundle, surface}, SurfaceReading{sight, place});
    if (!isNew && isWorse(place, known->second.place)) known->second = {sight, place};
  }
}

Json readingJson(const SurfaceReading& reading) {
  const auto& [sight, place] = reading;
  return {{"ratio", std::floor(place.contrast * 100) / 100},
          {"needed", drawing::neededContrast(place.kind)},
          {"kind", wordOf(place.kind)},
          {"screen", sight.screen->id},
          {"title", sight.screen->title},
          {"wallpaper", sight.screen->showsWallpaper ? Json(sight.wallpaper) : Json()},
          {"place", boxJson(place.box)},
          {"mark", boxJson(place.mark)},
          {"ink", hexOf(place.ink)},
          {"ground", hexOf(place.ground)}};
}

}  // namespace varnix::cli
