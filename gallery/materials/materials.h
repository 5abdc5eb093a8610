// What all pictures of a gallery are made from.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "gallery/ask/ask.h"
#include "gallery/screens/screen.h"

namespace varnix::cli {

struct Materials {
  std::vector<const varnix::screens::Screen*> screens;
  std::map<std::string, std::string> icons;  ///< an application's icon file
  /// By the wallpaper's name, "light" or "dark".
  std::map<std::string, varnix::screens::Scene> scenes;
  double scale = 2;

  WallpaperColors wallpaperColors() const;
};

struct MaterialChoice {
  std::vector<std::string> screens;          ///< all if empty
  std::map<std::string, std::string> icons;  ///< in addition to the samples
  std::string wallpaper;                     ///< instead of the samples, unless empty
  double scale = 2;
};

/// Throws UsageError for an unknown screen, and Failure for an unusable picture.
Materials gather(const MaterialChoice& choice);

}  // namespace varnix::cli
