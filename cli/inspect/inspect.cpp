// varnix inspect: what the library does in a process, and what the process's surfaces answer.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "common/answer_json.h"
#include "common/death_report.h"
#include "common/errors.h"
#include "common/hosted_child.h"
#include "common/interruption.h"
#include "common/json.h"
#include "common/nearest.h"
#include "common/process_choice.h"
#include "common/swatches.h"
#include "inspect/report.h"
#include "inspect/table.h"
#include "probe/surfaces.h"
#include "script/script.h"

namespace varnix::cli {

namespace {

struct InspectArguments {
  ProcessChoice process;
  std::vector<std::string> classes;
  bool inProcess = false;
  bool json = false;
  std::string color = "auto";
};

constexpr std::chrono::seconds kAnswerLimit{9};

/// Asks the process without the library and, if it is wanted, the process with it. Both run at
/// once, since each may take its time.
Json askBoth(const Question& question) {
  const auto deadline = std::chrono::steady_clock::now() + kAnswerLimit;
  Question without = question;
  without.withLibrary = false;
  // The script runs only once: it may change the settings, and standard input can be read only
  // once.
  if (question.withLibrary) without.script.reset();
  without.checksIcons = !question.withLibrary;
  HostedChild plain([&without] { return dump(report(without)); });
  std::optional<HostedChild> dyed;
  if (question.withLibrary) dyed.emplace([&question] { return dump(report(question)); });

  const Json before = Json::parse(plain.wait(deadline));
  Json after = dyed ? Json::parse(dyed->wait(deadline)) : before;
  after["surfaces"] = comparedAnswers(before["surfaces"], after["surfaces"]);
  return after;
}

/// Asks this process itself, in which a debugger can stop. There is no other to compare it with.
Json askHere(const Question& question) {
  tellOfDeath(STDERR_FILENO, Telling::sentence);
  Json after = report(question);
  for (Json& surface : after["surfaces"]) {
    surface["after"] = surface["answer"];
    surface.erase("answer");
  }
  return after;
}

Json inspectProcess(const Question& question, bool inProcess) {
  const Json after = inProcess ? askHere(question) : askBoth(question);
  Json result;
  result["bundle"] = nullptr;
  if (question.process.bundle) result["bundle"] = *question.process.bundle;
  result["kind"] = kindName(question.process.kind);
  for (const char* part : {"installed", "skipped", "log", "dye", "iconColor", "elements"}) {
    result[part] = after[part];
  }
  if (question.script) result["printed"] = after["printed"];
  result["surfaces"] = after["surfaces"];
  return result;
}

std::vector<std::string> surfaceClasses() {
  std::vector<std::string> names;
  for (const auto& surface : varnix::probe::all()) {
    if (names.empty() || names.back() != surface.className())
      names.emplace_back(surface.className());
  }
  return names;
}

void checkClasses(const std::vector<std::string>& names) {
  const auto known = surfaceClasses();
  for (const std::string& name : names) {
    if (std::find(known.begin(), known.end(), name) == known.end()) {
      throw UsageError("nothing is asked of this class", name + didYouMean(name, known));
    }
  }
}

int inspect(InspectArguments& arguments) {
  const bool withSwatches = wantsSwatches(arguments.color);
  checkClasses(arguments.classes);
  Question question;
  noteInterruptions();
  question.process = arguments.process.prepare(RootUse::reads);
  if (arguments.inProcess) removeOnDeath(arguments.process.temporaryRoot());
  question.withLibrary = !arguments.process.noLibrary;
  question.extensions = arguments.process.extensions;
  if (const auto& script = arguments.process.script) {
    question.script = LineSource{.file = *script};
    if (!arguments.inProcess) question.script->waitBeginsOrEnds = &HostedChild::noteWait;
  }
  question.classes = arguments.classes;
  const Json result = inspectProcess(question, arguments.inProcess);
  if (!arguments.json && question.script) {
    for (const Json& value : result["printed"]) std::cout << dump(value) << '\n';
  }
  std::cout << (arguments.json ? dump(result, 2) + '\n' : table(result, withSwatches));
  return 0;
}

}  // namespace

Command inspectCommand() {
  auto arguments = std::make_shared<InspectArguments>();
  Command command{
      .name = "inspect",
      .summary = "Show what the library does to a process, and what its surfaces answer",
      .options = arguments->process.options(),
      .notes = scriptHelp(),
      .run = [arguments] { return inspect(*arguments); }};
  command.options.push_back({.name = "--only",
                             .value = "CLASS",
                             .target = &arguments->classes,
                             .meaning = "Ask the surfaces of this class alone; repeatable",
                             .choices = surfaceClasses()});
  command.options.push_back(
      {.name = "--in-process",
       .target = &arguments->inProcess,
       .meaning = "Ask in this process, for a debugger; nothing to compare with"});
  command.options.push_back(jsonOption(arguments->json));
  command.options.push_back(colorOption(arguments->color));
  return command;
}

}  // namespace varnix::cli
