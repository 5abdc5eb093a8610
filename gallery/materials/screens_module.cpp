#include "gallery/materials/screens_module.h"

#include <algorithm>
#include <type_traits>

#include "common/errors.h"
#include "common/joined.h"
#include "common/module.h"
#include "common/warning.h"

namespace varnix::cli {

using varnix::screens::Module;
using varnix::screens::Screen;

namespace {

constexpr ModuleName<Module> kName{varnix::screens::kModuleFile, varnix::screens::kModuleEntry,
                                   "what draws the screens"};
static_assert(std::is_same_v<ModuleName<Module>::Entry, varnix::screens::ModuleEntry>);

}  // namespace

const Module& screensModule() {
  static const Module& module = loadModule(kName);
  return module;
}

std::vector<const Screen*> screensNamed(const std::vector<std::string>& identifiers) {
  const auto all = screensModule().screens;
  for (const std::string& identifier : identifiers) {
    const bool isKnown = std::any_of(
        all.begin(), all.end(), [&](const Screen* screen) { return identifier == screen->id; });
    if (isKnown) continue;
    std::vector<std::string> known;
    for (const Screen* screen : all) known.emplace_back(screen->id);
    throw UsageError("no such screen (there are: " + joined(known, ", ") + ")", identifier);
  }
  std::vector<const Screen*> chosen;
  for (const Screen* screen : all) {
    const bool isWanted = identifiers.empty() || std::find(identifiers.begin(), identifiers.end(),
                                                           screen->id) != identifiers.end();
    if (isWanted) chosen.push_back(screen);
  }
  return chosen;
}

varnix::screens::Surface pictureFrom(const std::string& file,
                                     const varnix::screens::Pixels& covered) {
  try {
    std::string problem;
    auto picture = screensModule().readPicture(file, covered, problem);
    if (!problem.empty()) warn(file + ": " + problem);
    return picture;
  } catch (const std::runtime_error& error) {
    throw Failure("cannot use the picture " + file, error.what());
  }
}

}  // namespace varnix::cli
