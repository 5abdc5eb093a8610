// What one hosted process reports.
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
  bool checksIcons = true;                     ///< one of the two processes is enough
  std::vector<std::string> earlierExtensions;  ///< loaded before the library
  std::vector<std::string> extensions;         ///< loaded after it
  std::optional<LineSource> script;
  std::vector<std::string> classes;  ///< classes whose surfaces to ask about; all if empty
};

/// Turns this process into the hosted one and asks it: {"installed", "skipped": [{"method",
/// "reason"}], "log", "dye", "iconColor", "elements", "printed": what the script printed, if there
/// is one, "surfaces": [{"class", "property", "case", "answer"}]}.
Json report(const Question& question);

}  // namespace varnix::cli
