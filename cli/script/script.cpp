#include "script/script.h"

#include "common/line_commands.h"
#include "objc/autorelease_pool.h"
#include "script/commands.h"

namespace varnix::cli {

namespace {

std::vector<const char*> scriptForms() {
  std::vector<const char*> list;
  for (const ScriptCommand& command : scriptCommands()) list.push_back(command.form);
  return list;
}

}  // namespace

void runScript(const LineSource& script, Stage& stage,
               const std::function<void(const Json&)>& print) {
  ScriptContext context{stage, print, {}};
  runLines(script, [&](const std::string& line) {
    runLine(scriptForms(), line, [&](std::size_t command, const Words& arguments) {
      const objc::AutoreleasePool pool;
      scriptCommands()[command].run(context, arguments);
    });
  });
}

std::string scriptHelp() { return "Commands of a script, one a line:\n" + formList(scriptForms()); }

}  // namespace varnix::cli
