// varnix inspect: what the library does to a process, and what its surfaces answer.
#include <chrono>
#include <iostream>
#include <memory>
#include <optional>

#include "commands.h"
#include "hosted_child.h"
#include "process_choice.h"
#include "report.h"
#include "swatches.h"
#include "table.h"

namespace varnix::cli {

namespace {

struct Arguments {
  ProcessChoice process;
  bool json = false;
  std::string color = "auto";
};

constexpr std::chrono::seconds kLimit{9};

Json answerOf(const Json& surfaces, const Json& asked) {
  for (const Json& surface : surfaces) {
    if (surface["class"] == asked["class"] && surface["property"] == asked["property"] &&
        surface["case"] == asked["case"]) {
      return surface["answer"];
    }
  }
  return nullptr;
}

Json compared(const Json& before, const Json& after) {
  Json surfaces = Json::array();
  for (const Json& surface : after) {
    surfaces.push_back({{"class", surface["class"]},
                        {"property", surface["property"]},
                        {"case", surface["case"]},
                        {"before", answerOf(before, surface)},
                        {"after", surface["answer"]}});
  }
  return surfaces;
}

/// Asks the process without the library and, where there is to be one, the process with it; both
/// at once, since each may take its time.
Json inspectProcess(const Question& question) {
  const auto deadline = std::chrono::steady_clock::now() + kLimit;
  Question without = question;
  without.withLibrary = false;
  // It runs once: it may change the settings, and standard input can be read once.
  if (question.withLibrary) without.script.reset();
  HostedChild plain([&without] { return dump(report(without)); });
  std::optional<HostedChild> dyed;
  if (question.withLibrary) dyed.emplace([&question] { return dump(report(question)); });

  const Json before = Json::parse(plain.wait(deadline));
  const Json after = dyed ? Json::parse(dyed->wait(deadline)) : before;
  Json result;
  result["bundle"] = nullptr;
  if (question.process.bundle) result["bundle"] = *question.process.bundle;
  result["kind"] = kindName(question.process.kind);
  for (const char* part : {"installed", "log", "dye", "iconColor", "elements"}) {
    result[part] = after[part];
  }
  if (question.script) result["printed"] = after["printed"];
  result["surfaces"] = compared(before["surfaces"], after["surfaces"]);
  return result;
}

int inspect(Arguments& arguments) {
  const bool withSwatches = wantsSwatches(arguments.color);
  Question question;
  question.process = arguments.process.prepare();
  question.withLibrary = !arguments.process.noLibrary;
  question.extensions = arguments.process.extensions;
  question.script = arguments.process.script;
  const Json result = inspectProcess(question);
  if (!arguments.json && question.script) {
    for (const Json& value : result["printed"]) std::cout << dump(value) << '\n';
  }
  std::cout << (arguments.json ? dump(result, 2) + '\n' : table(result, withSwatches));
  return 0;
}

}  // namespace

void addInspect(CLI::App& app, Action& chosen) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand(
      "inspect", "Show what the library does to a process, and what its surfaces answer");
  arguments->process.addTo(*command);
  command->add_flag("--json", arguments->json, "Print JSON");
  command
      ->add_option("--color", arguments->color,
                   "Colour swatches: auto (in a terminal), always or never")
      ->type_name("WHEN");
  command->callback([arguments, &chosen] { chosen = [arguments] { return inspect(*arguments); }; });
}

}  // namespace varnix::cli
