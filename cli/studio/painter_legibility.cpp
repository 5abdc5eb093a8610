// Measuring what the painter draws, with answers that it has or asks for.
#include <exception>
#include <utility>

#include "gallery/materials/screens_module.h"
#include "studio/painter.h"

namespace varnix::cli {

using varnix::screens::Screen;

ProcessAnswer Painter::askedWith(const Screen& screen, const View& view, const Dressed& dressed,
                                 const std::string& settings) {
  return Loan(*this)->ask(question(screen, view, dressed), settings);
}

std::unique_ptr<Legibility> Painter::legibility(const View& view, long revision,
                                                NSDictionary* settings) {
  std::shared_ptr<const Dressed> dressed;
  {
    const std::lock_guard lock(mutex_);
    dressed = dressed_;
  }
  const Materials& materials = dressed->byScale.at(2);
  Sights sights{materials.screens, materials.scenes,
                screensNamed({view.isInFront ? "application" : "home"}).front()};
  for (auto& [name, scene] : sights.scenes) scene.isPlaying = view.plays;
  View without = view, with = view;
  without.isBefore = true;
  with.isBefore = false;
  Legibility::Answers before, after;
  for (const Screen* screen : sights.screens) {
    if (after.contains(screen->bundle)) continue;
    before[screen->bundle] = *answersOf(*screen, without, revision, *dressed);
    after[screen->bundle] = *answersOf(*screen, with, revision, *dressed);
  }
  const Ask ask = [this, with, dressed](const Screen& screen, const std::string& bytes) {
    return askedWith(screen, with, *dressed, bytes);
  };
  return std::make_unique<Legibility>(std::move(sights), ask, settings, before, after);
}

}  // namespace varnix::cli
