// A theme with its pictures, as it is handed on to people.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "gallery/screens/screen.h"
#include "platform/Foundation.h"

namespace varnix::cli {

struct DrawnScreen {
  std::string title;
  std::string wallpaper;  ///< "light" or "dark"; empty if it makes no difference
  std::string png;        ///< of one pixel a point
};

struct DrawnTheme {
  std::string name;
  std::vector<std::string> lines;  ///< "key = value"
  std::string text;                ///< what the settings pane takes
  std::vector<DrawnScreen> screens;
};

/// The pictures in their order: every screen, and those that show the wallpaper on both.
std::vector<DrawnScreen> drawnScreens(
    const std::function<std::string(const varnix::screens::Screen& screen,
                                    const std::string& wallpaper)>& draw);

/// Asks processes with these settings and draws them, with the sample's wallpapers and icons. This
/// process must have a single thread. Throws Failure.
std::vector<DrawnScreen> drawnScreensOf(NSDictionary* settings);

/// A page without anything outside of it, of at most 6 MB. Throws Failure.
std::string themePage(const DrawnTheme& theme);
/// All screens as one PNG file.
std::string themeSheet(const DrawnTheme& theme);

}  // namespace varnix::cli
