#include "preview/screens_module.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "common/errors.h"
#include "process/process.h"

namespace varnix::cli {

using host::screens::Module;
using host::screens::Screen;

namespace {

/// Beside the host library, as everything that was built.
const Module& load() {
  const auto folder = std::filesystem::path(host::defaultLibraryPath()).parent_path();
  const auto file = folder / host::screens::kModuleFile;
  void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* entry = module == nullptr ? nullptr : dlsym(module, host::screens::kModuleEntry);
  if (entry == nullptr) throw Failure("cannot load what draws the screens", dlerror());
  return *reinterpret_cast<host::screens::ModuleEntry>(entry)();
}

}  // namespace

const Module& screensModule() {
  static const Module& module = load();
  return module;
}

std::vector<const Screen*> screensNamed(const std::vector<std::string>& identifiers) {
  const auto all = screensModule().screens;
  for (const std::string& identifier : identifiers) {
    const bool isKnown = std::any_of(
        all.begin(), all.end(), [&](const Screen* screen) { return identifier == screen->id; });
    if (isKnown) continue;
    std::string known;
    for (const Screen* screen : all) known.append(known.empty() ? "" : ", ").append(screen->id);
    throw UsageError("no such screen (there are: " + known + ")", identifier);
  }
  std::vector<const Screen*> chosen;
  for (const Screen* screen : all) {
    const bool isWanted = identifiers.empty() || std::find(identifiers.begin(), identifiers.end(),
                                                           screen->id) != identifiers.end();
    if (isWanted) chosen.push_back(screen);
  }
  return chosen;
}

host::screens::Surface pictureFrom(const std::string& file, const host::screens::Pixels& covered) {
  try {
    std::string problem;
    auto picture = screensModule().readPicture(file, covered, problem);
    if (!problem.empty()) std::cerr << "varnix: " << file << ": " << problem << '\n';
    return picture;
  } catch (const std::runtime_error& error) {
    throw Failure("cannot use the picture " + file, error.what());
  }
}

}  // namespace varnix::cli
