#include "gallery/materials/materials.h"

#include <cmath>

#include "gallery/materials/sample_files.h"
#include "gallery/materials/screens_module.h"

namespace varnix::cli {

using varnix::screens::Pixels;
using varnix::screens::Scene;
using varnix::screens::Surface;

namespace {

struct SampleIcon {
  const char* identifier;
  const char* file;
};

constexpr SampleIcon kIcons[] = {
    {"com.example.notes", "com.example.notes"},
    {"com.example.mail", "com.example.mail"},
    {"com.example.music", "com.example.music"},
    {"com.example.maps", "com.example.maps"},
    {"com.example.photos", "com.example.photos"},
    {"com.example.weather", "com.example.weather"},
    {"com.example.camera", "com.example.camera"},
    {"com.example.calculator", "com.example.calculator"},
    {"com.example.calendar", "home/calendar"},
    {"com.example.clock", "home/clock"},
    {"com.example.videos", "home/videos"},
    {"com.example.reminders", "home/reminders"},
    {"com.example.stocks", "home/stocks"},
    {"com.example.books", "home/books"},
    {"com.example.store", "home/store"},
    {"com.example.health", "home/health"},
    {"com.example.settings", "home/settings"},
    {"com.example.phone", "home/phone"},
    {"com.example.browser", "home/browser"},
    {"com.apple.MobileSMS", "home/messages"},
    {"com.burbn.instagram", "home/snapshots"},
    {"com.atebits.Tweetie2", "home/chirps"},
};

/// In points.
constexpr double kIconSide = 60;

std::map<std::string, std::string> sampleIcons() {
  std::map<std::string, std::string> icons;
  for (const auto& [identifier, file] : kIcons)
    icons[identifier] = sampleFile(std::string("icons/") + file + ".png");
  return icons;
}

void addScene(Materials& materials, const std::string& name, const Surface& wallpaper) {
  Scene& scene = materials.scenes[name];
  scene.wallpaper = wallpaper;
  scene.wallpaperColor = screensModule().meanColor(wallpaper);
}

bool isLight(const Surface& wallpaper) {
  constexpr double kMiddle = 0.5;
  return varnix::drawing::luma(screensModule().meanColor(wallpaper)) > kMiddle;
}

}  // namespace

WallpaperColors Materials::wallpaperColors() const {
  WallpaperColors colors;
  for (const auto& [name, scene] : scenes) colors[name] = scene.wallpaperColor;
  return colors;
}

Materials gather(const MaterialChoice& choice) {
  Materials materials;
  materials.screens = screensNamed(choice.screens);
  materials.scale = choice.scale;
  auto pixels = [&](double points) { return static_cast<int>(std::lround(points * choice.scale)); };
  const Pixels screen{pixels(varnix::screens::kWidth), pixels(varnix::screens::kHeight)};
  const Pixels icon{pixels(kIconSide), pixels(kIconSide)};
  if (choice.wallpaper.empty()) {
    for (const char* name : {"light", "dark"}) {
      const std::string file = sampleFile(std::string("wallpapers/") + name + ".png");
      addScene(materials, name, pictureFrom(file, screen));
    }
  } else {
    const Surface wallpaper = pictureFrom(choice.wallpaper, screen);
    addScene(materials, isLight(wallpaper) ? "light" : "dark", wallpaper);
  }
  materials.icons = sampleIcons();
  for (const auto& [identifier, file] : choice.icons) materials.icons[identifier] = file;
  std::map<std::string, Surface> pictures;
  for (const auto& [identifier, file] : materials.icons)
    pictures[identifier] = pictureFrom(file, icon);
  const Surface photograph =
      pictureFrom(sampleFile("covers/tides.png"), {screen.width, screen.width});
  for (auto& [name, scene] : materials.scenes) {
    scene.icons = pictures;
    scene.photograph = photograph;
  }
  return materials;
}

}  // namespace varnix::cli
