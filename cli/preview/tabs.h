// The settings under which the screens are shown.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "common/temporary_container.h"

namespace varnix::cli {

/// One tab: a container with its settings, and what happens meanwhile.
struct Tab {
  std::string id, title, summary;
  std::string root;
  std::string artwork;              ///< the playing track's picture; empty if nothing plays
  std::optional<std::string> open;  ///< the application in front; without a value, the home screen
  std::string file = {};            ///< where its settings come from, for people
};

class Tabs {
 public:
  /// Four tabs that show what the library can do, with settings from the samples.
  static Tabs samples(const std::string& artwork);
  /// The container's own settings, unchanged. A track plays if there is artwork.
  static Tabs ofContainer(const std::string& root, const std::string& artwork);
  /// The settings of that file, in a container of its own. Throws Failure.
  static Tabs ofFile(const std::string& settings, const std::string& artwork);

  const std::vector<Tab>& all() const { return tabs_; }

 private:
  std::deque<TemporaryContainer> containers_;
  std::vector<Tab> tabs_;
};

}  // namespace varnix::cli
