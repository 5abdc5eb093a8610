// Makes a gallery: asks, draws, and remembers what it has drawn.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "gallery/materials/materials.h"
#include "preview/sheet.h"
#include "preview/tabs.h"

namespace varnix::cli {

class Studio {
 public:
  /// The page asks for later drawings if it follows.
  Studio(Materials materials, Tabs tabs, bool follows);

  struct Done {
    std::vector<std::string> screens;  ///< titles of those that were drawn
    std::size_t pictures = 0;          ///< files written
    double asking = 0, drawing = 0;    ///< seconds
  };
  using Progress = std::function<void(std::size_t done, std::size_t all)>;
  /// Asks all processes with the library, draws what has changed since the last call for this
  /// folder, and writes the page. Throws Failure and Interrupted.
  Done work(const std::filesystem::path& folder, const Progress& progress);

 private:
  Materials materials_;
  Tabs tabs_;
  bool follows_;
  ProcessAnswers before_;
  std::map<std::string, std::string> drawn_;  ///< the contents of each file
};

}  // namespace varnix::cli
