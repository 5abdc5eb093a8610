// What processes answer for the screens. Each process is a child of this one.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "common/json_forward.h"
#include "gallery/screens/screen.h"
#include "process/process.h"

namespace varnix::cli {

/// Indexed by the wallpaper's name.
using WallpaperColors = std::map<std::string, varnix::screens::Color>;

struct ProcessQuestion {
  host::ProcessOptions process;
  bool withLibrary = true;
  std::string artwork;  ///< the playing track's picture file; empty if nothing plays
  std::vector<const varnix::screens::Screen*> screens;  ///< of this process
  WallpaperColors wallpapers;
  bool asksSurfaces = true;  ///< also about every surface that `varnix inspect` knows
};

struct ProcessAnswer {
  /// By the screen's identifier, then by the wallpaper's name.
  std::map<std::string, std::map<std::string, varnix::screens::Answers>> screens;
  /// [{"class", "property", "case", "answer"}]; not null.
  std::shared_ptr<const Json> surfaces;
};

/// A process's answer as text, from a process of its own. This one must have a single thread.
/// Throws Failure.
std::string askedText(const ProcessQuestion& question);
/// That text's answer.
ProcessAnswer parsedAnswer(const std::string& text);

/// Asks as many processes at once as there are processors. This process must have a single thread.
/// Throws Failure.
std::vector<ProcessAnswer> askProcesses(const std::vector<ProcessQuestion>& questions);

}  // namespace varnix::cli
