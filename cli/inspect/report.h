// What one hosted process answers.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/json_forward.h"
#include "common/line_reader.h"
#include "process/process.h"

namespace varnix::cli {

struct Question {
  host::ProcessOptions process;
  bool withLibrary = true;
  bool checksIcons = true;  ///< one of two processes is enough
  std::vector<std::string> extensions;
  std::optional<LineSource> script;
  std::vector<std::string> classes;  ///< whose surfaces are asked; all where there are none
};

/// Turns this process into the hosted one and asks it: {"installed", "skipped": [{"method",
/// "reason"}], "log", "dye", "iconColor",
/// "elements", "printed": what the script printed, where there is one, "surfaces": [{"class",
/// "property", "case", "answer"}]}.
Json report(const Question& question);

}  // namespace varnix::cli
