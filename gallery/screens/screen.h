// The screens: what each asks, and how it is drawn from the answers.
#pragma once

#include <map>
#include <span>
#include <string>

#include "drawing/canvas.h"
#include "gallery/screens/answers.h"
#include "process/process.h"

namespace varnix::screens {

/// In points.
inline constexpr double kWidth = 375;
inline constexpr double kHeight = 667;

/// What a process is told before it is asked anything.
struct Surroundings {
  Color wallpaper;  ///< its mean colour
};

/// What a picture is drawn from, besides the answers.
struct Scene {
  Surface wallpaper;
  Color wallpaperColor;
  std::map<std::string, Surface> icons;  ///< of applications, by identifier
  Surface photograph;                    ///< in a feed
  bool isPlaying = false;                ///< whether a track plays
};

struct Screen {
  const char* id;
  const char* title;
  const char* bundle;
  host::ProcessKind kind;
  /// Whether its picture depends on the wallpaper.
  bool showsWallpaper;
  /// Whether it covers another one: the application in front, or else the home screen.
  bool coversAnother;
  /// Asks this process, which must be a hosted one, by messages alone.
  Answers (*ask)(const Surroundings& surroundings);
  void (*draw)(const Canvas& canvas, const Answers& answers, const Scene& scene);
};

/// One screen of a picture; the lowest comes first.
struct Layer {
  const Screen* screen;
  const Answers* answers;
};

extern const Screen kApplication, kMessages, kHome, kControlCenter, kNotificationCenter, kVolume,
    kInstagram, kTwitter, kSettingsFront, kSettingsElement, kSettingsApplications,
    kSettingsApplication, kSettingsPicker, kSettingsPreset;

}  // namespace varnix::screens
