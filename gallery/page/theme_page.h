// A theme as one page to hand on: its pictures, its values and the text to paste.
#pragma once

#include <string>
#include <vector>

namespace varnix::cli::gallery {

struct PagePicture {
  std::string title;
  std::string wallpaper;  ///< "light" or "dark"; empty if it makes no difference
  std::string address;    ///< a "data:" URL
};

struct PageTheme {
  std::string name;
  std::vector<std::string> lines;  ///< "key = value"
  std::string text;                ///< what the settings pane takes
  std::vector<PagePicture> pictures;
};

/// Everything is in it: it refers to nothing outside, and has no scripts.
std::string themePage(const PageTheme& theme);

}  // namespace varnix::cli::gallery
