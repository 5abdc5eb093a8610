// The commands of a script: a table of forms and actions.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "objc/strong.h"
#include "script/stage.h"

namespace varnix::cli {

struct ScriptContext {
  Stage& stage;
  const std::function<void(const Json&)>& print;
  Strong<NSObject> artwork;  ///< of the playing or paused track
};

/// A word of the form in capitals stands for any word, which is passed to the action.
struct ScriptCommand {
  const char* form;
  void (*run)(ScriptContext& context, const std::vector<std::string>& arguments);
};

/// The first one whose form fits is run.
std::span<const ScriptCommand> scriptCommands();

}  // namespace varnix::cli
