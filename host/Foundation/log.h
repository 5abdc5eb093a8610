// The system log of a hosted process.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "export.h"

namespace host {

/// The levels of the platform's log call.
enum class LogLevel : int { emergency = 0, alert, critical, error, warning, notice, info, debug };

struct LogLine {
  int level;
  std::string line;
};

/// Adds a line to the log. While printLog(true) is in effect, it is also printed to standard error.
HOST_EXPORT void log(LogLevel level, std::string line);

/// All lines so far, in order.
HOST_EXPORT std::vector<LogLine> logLines();
HOST_EXPORT void printLog(bool enabled);

}  // namespace host
