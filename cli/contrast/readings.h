// How well text and symbols can be read on the screens of a theme, measured on what is drawn.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "common/json_forward.h"
#include "drawing/ink.h"
#include "gallery/ask/ask.h"
#include "gallery/screens/screen.h"

namespace varnix::cli {

/// What the screens are drawn from, besides the answers.
struct Sights {
  std::vector<const varnix::screens::Screen*> screens;
  std::map<std::string, varnix::screens::Scene> scenes;  ///< by the wallpaper's name
  const varnix::screens::Screen* covered = nullptr;      ///< what panels cover
};

/// A screen on a wallpaper.
struct Sight {
  const varnix::screens::Screen* screen;
  std::string wallpaper;
};
/// One that shows no wallpaper is there once.
std::vector<Sight> sightsOf(const Sights& sights);

/// What the process of a screen answers with other settings, which are a settings file's bytes.
using Ask = std::function<ProcessAnswer(const varnix::screens::Screen& screen,
                                        const std::string& settings)>;

/// The screens with certain settings. Asks each process once, when it is needed.
class Attempt {
 public:
  Attempt(const Sights& sights, Ask ask, std::string settings)
      : sights_(sights), ask_(std::move(ask)), settings_(std::move(settings)) {}
  /// What has been answered already, by process.
  void know(const std::map<std::string, ProcessAnswer>& answers) { known_ = answers; }

  const varnix::screens::Answers& answers(const varnix::screens::Screen& screen,
                                          const std::string& wallpaper);
  std::vector<varnix::screens::Layer> layers(const Sight& sight);
  std::vector<drawing::Reading> read(const Sight& sight);

 private:
  const Sights& sights_;
  Ask ask_;
  std::string settings_;
  std::map<std::string, ProcessAnswer> known_;
};

/// The worst place of a surface of a process.
struct SurfaceReading {
  Sight sight;
  drawing::Place place;
};
/// By process and "CLASS PROPERTY".
using SurfaceReadings = std::map<std::pair<std::string, std::string>, SurfaceReading>;

bool holds(const drawing::Place& place);
/// Whether the first misses more of what it needs.
bool isWorse(const drawing::Place& one, const drawing::Place& other);

/// Keeps what is worse than what is known.
void take(SurfaceReadings& readings, const Sight& sight, const std::vector<drawing::Reading>& read);

/// {"ratio", "needed", "kind": "text" | "large text" | "symbol", "screen", "title", "wallpaper",
/// "place", "mark": [x, y, width, height] in points, "ink", "ground": "#rrggbb"}. The ratio is cut
/// to two decimals. The wallpaper is null for a screen that shows none.
Json readingJson(const SurfaceReading& reading);

}  // namespace varnix::cli
