// What one hosted process answers.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "process/process.h"

namespace varnix::cli {

/// Keys stay in the order in which they were set.
using Json = nlohmann::ordered_json;

struct Question {
  host::ProcessOptions process;
  bool withLibrary = true;
  std::vector<std::string> extensions;
};

/// Turns this process into the hosted one and asks it: {"installed", "log", "dye", "iconColor",
/// "elements", "surfaces": [{"class", "property", "case", "answer"}]}.
Json report(const Question& question);

}  // namespace varnix::cli
