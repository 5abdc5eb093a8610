// Scripts: one command on each line, acting on a hosted process.
#pragma once

#include <functional>
#include <string>

#include "common/json_forward.h"
#include "common/line_reader.h"
#include "script/stage.h"

namespace varnix::cli {

/// Runs the script line by line as it arrives. Every `print` passes one value on. Empty lines and
/// lines that begin with # are skipped. Throws Interrupted, and Failure, with the line's number if
/// a line is to blame.
void runScript(const LineSource& script, Stage& stage,
               const std::function<void(const Json&)>& print);

/// The commands, for people.
std::string scriptHelp();

}  // namespace varnix::cli
