// varnix-contract: compares the library's use of the platform with what is known of the platform.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>
#include <set>

#include "contract/check.h"
#include "contract/table.h"
#include "macho/error.h"
#include "macho/files.h"

namespace {

using namespace varnix::device;

struct Arguments {
  std::string facts, unchecked, armv7, arm64;
  bool printsTable = false;
};

std::vector<Judged> judged(const std::string& path, Width width, Facts& facts) {
  try {
    return judge(readUses(readTextFile(path)), width, facts);
  } catch (const Error& error) {
    throw Error(path + ": " + error.what());
  }
}

/// What is wrong, with the architecture if only one is affected.
std::vector<std::string> complaints(const std::vector<Judged>& narrow,
                                    const std::vector<Judged>& wide) {
  std::map<std::string, std::set<std::string>> found;
  for (const Judged& each : narrow)
    for (const std::string& text : each.complaints) found[text].insert("armv7");
  for (const Judged& each : wide)
    for (const std::string& text : each.complaints) found[text].insert("arm64");
  std::vector<std::string> all;
  for (const auto& [text, architectures] : found)
    all.push_back(architectures.size() == 2 ? text : *architectures.begin() + ": " + text);
  return all;
}

void summarize(const std::vector<Judged>& all) {
  std::map<Origin, int> counts;
  for (const Judged& each : all) ++counts[each.origin];
  std::printf("%zu uses: %d of the platform as facts/ has it, %d listed by hand, %d of our own\n",
              all.size(), counts[Origin::fact], counts[Origin::hand],
              counts[Origin::own] + counts[Origin::added]);
}

int run(const Arguments& arguments) {
  Facts facts(arguments.facts, arguments.unchecked);
  const std::vector<Judged> narrow = judged(arguments.armv7, Width::narrow, facts);
  const std::vector<Judged> wide = judged(arguments.arm64, Width::wide, facts);
  if (arguments.printsTable) {
    std::fputs(contractTable(narrow, wide, facts).c_str(), stdout);
    return 0;
  }
  std::vector<std::string> wrong = complaints(narrow, wide);
  for (const std::string& line : facts.stale()) wrong.push_back(line);
  for (const std::string& line : wrong) std::fprintf(stderr, "varnix-contract: %s\n", line.c_str());
  if (wrong.empty()) summarize(wide);
  return wrong.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  Arguments arguments;
  CLI::App app("Holds what the library uses of the platform against what is known of it.",
               "varnix-contract");
  app.add_option("--facts", arguments.facts, "folder of what is known")->required();
  app.add_option("--unchecked", arguments.unchecked, "list of what the facts do not tell")
      ->required();
  app.add_option("--armv7", arguments.armv7, "what the 32-bit library uses")->required();
  app.add_option("--arm64", arguments.arm64, "what the 64-bit library uses")->required();
  app.add_flag("--table", arguments.printsTable, "print it all as Markdown and check nothing");
  CLI11_PARSE(app, argc, argv);
  try {
    return run(arguments);
  } catch (const Error& error) {
    std::fprintf(stderr, "varnix-contract: %s\n", error.what());
    return 1;
  }
}
