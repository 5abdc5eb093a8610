// varnix-link-armv7: links one object file, and the libraries that it uses, into a dynamic library
// or a bundle.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <sstream>

#include "linker/link.h"
#include "macho/error.h"
#include "macho/files.h"
#include "macho/version.h"

namespace {

using namespace varnix::device;

/// One name a line; "#" begins a comment.
std::vector<std::string> readNames(const std::string& path) {
  std::vector<std::string> names;
  std::istringstream lines(readTextFile(path));
  for (std::string line; std::getline(lines, line);)
    if (!line.empty() && line[0] != '#') names.push_back(line);
  return names;
}

struct Arguments {
  bool isBundle = false, dropsUnusedLibraries = false;
  std::string object, output, installName, version, exports;
  std::vector<std::string> stubs, weakStubs;
};

StubLibrary readStub(const std::string& path) {
  try {
    return readStubLibrary(readTextFile(path));
  } catch (const Error& error) {
    throw Error(path + ": " + error.what());
  }
}

void run(const Arguments& arguments) {
  LinkOptions options;
  options.isBundle = arguments.isBundle;
  options.dropsUnusedLibraries = arguments.dropsUnusedLibraries;
  options.installName = arguments.installName;
  if (!arguments.isBundle) options.currentVersion = parseVersion(arguments.version);
  options.exports = readNames(arguments.exports);
  for (const std::string& path : arguments.stubs) options.libraries.push_back(readStub(path));
  for (const std::string& path : arguments.weakStubs) {
    options.libraries.push_back(readStub(path));
    options.libraries.back().isWeak = true;
  }
  const std::vector<uint8_t> file = readFile(arguments.object);
  writeFile(arguments.output, link(readObject(Reader(file)), options));
}

}  // namespace

int main(int argc, char** argv) {
  Arguments arguments;
  CLI::App app("Links one Thumb object file for armv7 into a dynamic library or a bundle.",
               "varnix-link-armv7");
  app.add_option("object", arguments.object, "the object file")->required();
  app.add_option("stubs", arguments.stubs, "text stubs of the libraries, in load order")
      ->required();
  app.add_option("--weak-library", arguments.weakStubs,
                 "text stub of one that may be missing; loaded after the others")
      ->allow_extra_args(false);
  app.add_option("-o,--output", arguments.output, "the file to write")->required();
  auto* name =
      app.add_option("--install-name", arguments.installName, "a library's path on the device");
  auto* version = app.add_option("--current-version", arguments.version, "a library's version");
  app.add_flag("--bundle", arguments.isBundle, "a bundle, which has neither")
      ->excludes(name)
      ->excludes(version);
  app.add_flag("--dead-strip-dylibs", arguments.dropsUnusedLibraries,
               "leave out libraries that nothing is imported from");
  app.add_option("--exports", arguments.exports, "file that names what others may link")
      ->required();
  try {
    app.parse(argc, argv);
    for (const CLI::Option* needed : {name, version})
      if (!arguments.isBundle && needed->empty()) throw CLI::RequiredError(needed->get_name());
  } catch (const CLI::ParseError& error) {
    return app.exit(error);
  }
  try {
    run(arguments);
  } catch (const Error& error) {
    std::fprintf(stderr, "varnix-link-armv7: %s\n", error.what());
    return 1;
  }
  return 0;
}
