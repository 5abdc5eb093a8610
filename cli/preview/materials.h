// What every picture of a gallery is made from.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "gallery/ask/ask.h"
#include "gallery/screens/screen.h"

namespace varnix::cli {

struct Materials {
  std::vector<const varnix::screens::Screen*> screens;
  std::map<std::string, std::string> icons;  ///< an application's icon, a file
  /// By the wallpaper's name, "light" or "dark".
  std::map<std::string, varnix::screens::Scene> scenes;
  double scale = 2;

  WallpaperColors wallpaperColors() const;
};

struct MaterialChoice {
  std::vector<std::string> screens;          ///< all where there are none
  std::map<std::string, std::string> icons;  ///< besides the samples
  std::string wallpaper;                     ///< in place of the samples where not empty
  double scale = 2;
};

/// Throws UsageError for an unknown screen and Failure for a picture that cannot be used.
Materials gather(const MaterialChoice& choice);

}  // namespace varnix::cli
