#include "contrast/of_theme.h"

#include <algorithm>
#include <thread>

#include "Foundation/property_list.h"
#include "common/errors.h"
#include "common/interruption.h"
#include "common/json.h"
#include "common/temporary_container.h"
#include "contrast/legibility.h"
#include "objc/autorelease_pool.h"

namespace varnix::cli {

using varnix::screens::Screen;

namespace {

bool goesOn() {
  throwIfInterrupted();
  return true;
}

/// The process of the screen, and what it has to draw.
ProcessQuestion questionFor(const Screen& screen, const Tab& tab, const Materials& materials,
                            const std::string& root) {
  ProcessQuestion question{processOf(screen, tab, materials), true, tab.artwork, {},
                           materials.wallpaperColors(),       false};
  question.process.root = root;
  std::vector<const Screen*> drawn = materials.screens;
  if (std::ranges::find(drawn, &coveredScreen(tab)) == drawn.end())
    drawn.push_back(&coveredScreen(tab));
  for (const Screen* other : drawn) {
    if (std::string_view(other->bundle) == screen.bundle) question.screens.push_back(other);
  }
  return question;
}

}  // namespace

Json legibilityOf(const Tab& tab, const AskedTab& asked, const Materials& materials, bool advises) {
  const objc::AutoreleasePool pool;
  const TemporaryContainer container;
  const std::string file = container.root() + kSettingsPath;
  std::filesystem::create_directories(std::filesystem::path(file).parent_path());
  const Ask ask = [&](const Screen& screen, const std::string& settings) {
    if (!host::writeFile(file, settings, false)) throw Failure("cannot write", file);
    return askProcesses({questionFor(screen, tab, materials, container.root())}).front();
  };
  Sights sights{materials.screens, materials.scenes, &coveredScreen(tab)};
  for (auto& [name, scene] : sights.scenes) scene.isPlaying = !tab.artwork.empty();
  auto* stored = objc::as<NSDictionary>(host::propertyListFromFile(tab.root + kSettingsPath));
  Legibility legibility(std::move(sights), ask, stored, asked.before, asked.after);
  legibility.measure(std::max(std::thread::hardware_concurrency(), 1U), goesOn);
  return legibility.json(advises, goesOn);
}

}  // namespace varnix::cli
