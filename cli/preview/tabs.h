// The settings under which everything is shown.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "common/temporary_container.h"

namespace varnix::cli {

/// One of them: a container with its settings, and what goes on meanwhile.
struct Tab {
  std::string id, title, summary;
  std::string root;
  std::string artwork;              ///< the playing track's picture; empty where nothing plays
  std::optional<std::string> open;  ///< the application in front; the home screen where absent
};

class Tabs {
 public:
  /// The four that show what there is, their settings among the samples.
  static Tabs samples(const std::string& artwork);
  /// That container's settings, as they are. A track plays where there is artwork.
  static Tabs ofContainer(const std::string& root, const std::string& artwork);
  /// The settings of that file, in a container of its own. Throws Failure.
  static Tabs ofFile(const std::string& settings, const std::string& artwork);

  const std::vector<Tab>& all() const { return tabs_; }

 private:
  std::deque<TemporaryContainer> containers_;
  std::vector<Tab> tabs_;
};

}  // namespace varnix::cli
