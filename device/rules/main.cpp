// varnix-check: holds finished libraries and bundles against the platform's rules.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <sstream>

#include "linker/stub_library.h"
#include "macho/error.h"
#include "macho/files.h"
#include "rules/check.h"

namespace {

using namespace varnix::device;

/// "150" or "1290.11" as load commands have it.
uint32_t versionOf(const std::string& text) {
  unsigned major = 0, minor = 0, patch = 0;
  if (std::sscanf(text.c_str(), "%u.%u.%u", &major, &minor, &patch) < 1)
    throw Error("no version: " + text);
  return major << 16 | minor << 8 | patch;
}

/// Lines of an install name, a tabulator and a version; # begins a comment.
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

/// How many rules are broken.
size_t check(const std::string& path, const Offers& offers) {
  const auto broken = checkLibrary(readFile(path), offers);
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
  bool isListing = false;
  CLI::App app(
      "Holds libraries and bundles against the rules of the platform's loader, kernel and "
      "run-time\n"
      "of classes. Prints a line for each that is broken, as FILE: SLICE: RULE: what is wrong. "
      "The\n"
      "exit status is 1 where one is, and 2 where a file cannot be read.",
      "varnix-check");
  app.add_option("file", files, "libraries and bundles, of one processor or of several");
  app.add_option("--stub", stubs, "a text stub of a library that is linked; may be repeated")
      ->allow_extra_args(false);
  app.add_option("--versions", versions,
                 "a table of libraries and the versions that they have; stands above stubs");
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
  int status = 0;
  try {
    Offers offers = readOffers(stubs);
    readVersions(versions, offers);
    for (const std::string& path : files) {
      // The others are checked all the same.
      try {
        if (check(path, offers) != 0 && status == 0) status = 1;
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
