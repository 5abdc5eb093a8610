// What a pane at the command line offers to those who read lines.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace varnix::cli {

struct PaneFace {
  std::string help;
  /// Runs a line. Throws Failure and UsageError.
  std::function<void(const std::string& line)> run;
  std::function<bool()> isOver;
  /// Prints what others have changed; may be empty.
  std::function<void()> tellChanges = {};
  /// What a line may become, whole lines; may be empty.
  std::function<std::vector<std::string>(const std::string& line)> completions = {};
};

}  // namespace varnix::cli
