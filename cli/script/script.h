// Scripts: one command a line, acting on a hosted process.
#pragma once

#include <functional>
#include <string>

#include "common/json_forward.h"
#include "common/line_reader.h"
#include "script/stage.h"

namespace varnix::cli {

/// Runs the script line by line as it comes. Every `print` hands over one value. Empty lines and
/// lines that begin with # are skipped. Throws Interrupted, and Failure, with the line's number
/// where a line is to blame.
void runScript(const LineSource& script, Stage& stage,
               const std::function<void(const Json&)>& print);

/// The commands, for people.
std::string scriptHelp();

}  // namespace varnix::cli
