// The commands of a script: a table of their forms and what they do.
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
  Strong<NSObject> artwork;  ///< of the track that plays or pauses
};

/// A word of the form in capitals stands for any word, which goes to the action.
struct ScriptCommand {
  const char* form;
  void (*run)(ScriptContext& context, const std::vector<std::string>& arguments);
};

/// The first whose form fits is meant.
std::span<const ScriptCommand> scriptCommands();

}  // namespace varnix::cli
