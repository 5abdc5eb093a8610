// varnix-check: checks finished libraries and bundles against the platform's rules.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <sstream>

#include "linker/stub_library.h"
#include "macho/error.h"
#include "macho/files.h"
#include "rules/check.h"

namespace {

using namespace varnix::device;

/// "150" or "1290.11", packed as in load commands.
uint32_t versionOf(const std::string& text) {
  unsigned major = 0, minor = 0, patch = 0;
  if (std::sscanf(text.c_str(), "%u.%u.%u", &major, &minor, &patch) < 1)
    throw Error("not a version: " + text);
  return major << 16 | minor << 8 | patch;
}

/// Each line has an install name, a tab and a version; # begins a comment.
void readVersions(const std::string& path, Offers& offers) {
  if (path.empty()) return;
  std::istringstream lines(readTextFile(path));
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line[0] == '#') continue;
    const size_t tabulator = line.find('\t');
    if (tabulator == std::string::npos) throw Error(path + ": no version: " + line);
    offers[line.substr(0, tabulator)].compatibilityVersion = versionOf(line.substr(tabulator + 1));
  }
}

Offers readOffers(const std::vector<std::string>& paths) {
  Offers offers;
  for (const std::string& path : paths) {
    try {
      // Slices of both widths are checked.
      StubLibrary stub = readStubLibrary(readTextFile(path), "");
      offers[stub.installName] = {stub.compatibilityVersion, std::move(stub.symbols)};
    } catch (const Error& error) {
      throw Error(path + ": " + error.what());
    }
  }
  return offers;
}

/// The number of broken rules.
size_t check(const std::string& path, const Offers& offers, Asked asked) {
  const auto broken = checkLibrary(readFile(path), offers, asked);
  for (const Broken& each : broken)
    std::printf("%s: %s: %.*s: %s\n", path.c_str(), each.slice.c_str(),
                static_cast<int>(each.rule.size()), each.rule.data(), each.what.c_str());
  return broken.size();
}

void listRules() {
  for (const RuleName& rule : allRules())
    std::printf("%-28.*s %.*s\n", static_cast<int>(rule.name.size()), rule.name.data(),
                static_cast<int>(rule.sentence.size()), rule.sentence.data());
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int kUnusable = 2;
  std::vector<std::string> files, stubs;
  std::string versions;
  bool isListing = false, isOfOthers = false;
  CLI::App app(
      "Checks libraries and bundles against the rules of the platform's loader, kernel and\n"
      "Objective-C run-time. Prints a line for each broken rule, as FILE: SLICE: RULE: what is\n"
      "wrong. The exit status is 1 if a rule is broken, and 2 if a file cannot be read.",
      "varnix-check");
  app.add_option("file", files, "libraries and bundles, for one processor or several");
  app.add_option("--stub", stubs, "a text stub of a linked library; may be repeated")
      ->allow_extra_args(false);
  app.add_option("--versions", versions,
                 "a table of libraries and their versions, which overrides stubs");
  app.add_flag("--platform-only", isOfOthers,
               "leave out the rules that only this project has, as for other people's binaries");
  app.add_flag("--rules", isListing, "list every rule");
  try {
    app.parse(argc, argv);
    if (!isListing && files.empty()) throw CLI::RequiredError("file");
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kUnusable;
  }
  if (isListing) {
    listRules();
    return 0;
  }
  const Asked asked = isOfOthers ? Asked::platformAlone : Asked::all;
  int status = 0;
  try {
    Offers offers = readOffers(stubs);
    readVersions(versions, offers);
    for (const std::string& path : files) {
      // An unreadable file does not stop the check of the others.
      try {
        if (check(path, offers, asked) != 0 && status == 0) status = 1;
      } catch (const Error& error) {
        std::fprintf(stderr, "varnix-check: %s\n", error.what());
        status = kUnusable;
      }
    }
  } catch (const Error& error) {
    std::fprintf(stderr, "varnix-check: %s\n", error.what());
    return kUnusable;
  }
  return status;
}
