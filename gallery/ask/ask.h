// What processes answer for the screens, each process a child of its own.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "common/json.h"
#include "gallery/screens/screen.h"
#include "process/process.h"

namespace varnix::cli {

/// By the name of the wallpaper.
using WallpaperColors = std::map<std::string, varnix::screens::Color>;

struct ProcessQuestion {
  host::ProcessOptions process;
  bool withLibrary = true;
  std::string artwork;  ///< the playing track's picture, a file; empty where nothing plays
  std::vector<const varnix::screens::Screen*> screens;  ///< of this process
  WallpaperColors wallpapers;
};

struct ProcessAnswer {
  /// By the screen's identifier, then by the wallpaper's name.
  std::map<std::string, std::map<std::string, varnix::screens::Answers>> screens;
  /// [{"class", "property", "case", "answer"}]
  Json surfaces;
};

/// As many processes at a time as there are processors. To be called while this process has a
/// single thread. Throws Failure.
std::vector<ProcessAnswer> askProcesses(const std::vector<ProcessQuestion>& questions);

}  // namespace varnix::cli
