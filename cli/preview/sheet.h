// The pictures of a gallery: the list of them, and how they are drawn.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "gallery/ask/ask.h"
#include "gallery/materials/materials.h"
#include "preview/tabs.h"

namespace varnix::cli {

/// By the process's bundle identifier.
using ProcessAnswers = std::map<std::string, ProcessAnswer>;

/// What the processes of a tab answered without and with the library.
struct AskedTab {
  ProcessAnswers before, after;
};

/// In the order of the tabs. Processes without the library that are already known are not asked
/// again. Throws Failure.
std::vector<AskedTab> askTabs(const Materials& materials, const std::vector<Tab>& tabs,
                              const ProcessAnswers& knownBefore = {});

struct Picture {
  std::string file;  ///< relative to the gallery's folder
  /// Equal for two pictures with the same contents.
  std::string contents;
  std::vector<varnix::screens::Layer> layers;
  varnix::screens::Scene scene;
};

/// The pictures of a tab. They point into the answers.
std::vector<Picture> picturesOf(const Tab& tab, const AskedTab& asked, const Materials& materials);

/// The file of a picture: "TAB/SCREEN-WALLPAPER-before.png".
std::string pictureFile(const Tab& tab, const varnix::screens::Screen& screen,
                        const std::string& wallpaper, const char* when);

/// Draws every picture once, on all processors; equal ones share their bytes on the disk. An
/// existing file is replaced in one step. Throws Failure.
void drawPictures(const std::vector<Picture>& pictures, const std::filesystem::path& folder,
                  double scale, const std::function<void(std::size_t, std::size_t)>& progress);

}  // namespace varnix::cli
