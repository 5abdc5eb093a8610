// The situations in which platform objects are asked: of which class an object is, and what
// happens to it. Reports, scripts and pictures all take them from here.
#pragma once

#include "objc/strong.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

namespace varnix::probe {

/// What an object is given, where a situation has something to give.
struct Given {
  UIColor* color = nullptr;  ///< nil for the situation's own
  CGPoint phase{};           ///< an icon's place on the wallpaper
  bool hasPicture = false;   ///< whether an icon is given the piece of wallpaper behind it
};

/// By messages alone, as an application would do it.
struct Situation {
  struct Tone {
    CGFloat red, green, blue;
  };

  const char* className;
  /// What happens to the object; null if it only has to exist. May happen again.
  void (*happen)(NSObject* object, const Given& given) = nullptr;
  Tone color{};  ///< what is given if the caller does not choose
  /// Null for init, which a view passes on to initWithFrame: and a controller to
  /// initWithNibName:bundle:. No answer depends on a frame.
  Strong<NSObject> (*make)(Class cls, const Given& given) = nullptr;
};

// Controls.
extern const Situation kView, kLabel, kButton, kNavigationBar, kTabBar, kSlider;
extern const Situation kSegmentedControl, kSegment, kLaidOutSwitch;
extern const Situation kTintedView, kTintedSegmentedControl, kTintedSegment, kTintedSwitch;
/// The system asks for its attributes.
extern const Situation kStatusBar;
extern const Situation kKeyboard, kKeyRendering;
// Applications. Classes that are asked themselves have no object.
extern const Situation kLink, kTintedLink, kBalloon, kTextColors;
// SpringBoard. A badge's object is its image.
extern const Situation kControlCenter, kNotificationCenter, kVolume;
extern const Situation kFolder, kIcon, kBadge;

/// A new object to which nothing has happened yet; nil if the process does not have the class.
Strong<NSObject> make(const Situation& situation, const Given& given = {});
void happen(const Situation& situation, NSObject* object, const Given& given = {});
/// A new object in the situation.
Strong<NSObject> staged(const Situation& situation, const Given& given = {});

/// A track with that artwork, or nil, plays or pauses. Without the framework nothing happens.
void playTrack(NSObject* artwork, bool plays);

/// A new object of that class, by init; nil for nil.
Strong<NSObject> make(Class cls);

/// The settings of a surface's backdrop; nil for nil and for an object without one.
NSObject* backdropSettings(NSObject* surface);

}  // namespace varnix::probe
