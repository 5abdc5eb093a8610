#include "preview/materials.h"

#include <cmath>

#include "preview/sample_files.h"
#include "preview/screens_module.h"

namespace varnix::cli {

using host::screens::Scene;
using host::screens::Surface;

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
};

constexpr int kLongestIcon = 240;

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
  const auto mean = screensModule().meanColor(wallpaper);
  return 0.2126 * mean.red + 0.7152 * mean.green + 0.0722 * mean.blue > kMiddle;
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
  const int longest = static_cast<int>(std::ceil(host::screens::kHeight * choice.scale));
  if (choice.wallpaper.empty()) {
    for (const char* name : {"light", "dark"}) {
      const std::string file = sampleFile(std::string("wallpapers/") + name + ".png");
      addScene(materials, name, readPicture(file, longest));
    }
  } else {
    const Surface wallpaper = readPicture(choice.wallpaper, longest);
    addScene(materials, isLight(wallpaper) ? "light" : "dark", wallpaper);
  }
  materials.icons = sampleIcons();
  for (const auto& [identifier, file] : choice.icons) materials.icons[identifier] = file;
  std::map<std::string, Surface> pictures;
  for (const auto& [identifier, file] : materials.icons)
    pictures[identifier] = readPicture(file, kLongestIcon);
  for (auto& [name, scene] : materials.scenes) scene.icons = pictures;
  return materials;
}

}  // namespace varnix::cli
