// MediaPlayerUI, a private framework: the playing track.
#pragma once

#include "platform/UIKit.h"

struct MPUNowPlayingController : objc::View<MPUNowPlayingController, NSObject> {
  /// Not kept alive.
  static constexpr Message<"setDelegate:", void(NSObject*)> setDelegate{};
  static constexpr Message<"startUpdating", void()> startUpdating{};
  /// A byte. Only its lowest bit counts.
  static constexpr Message<"isPlaying", unsigned char()> isPlaying{};
  /// Nil without a track, and for a track without artwork.
  static constexpr Message<"currentNowPlayingArtwork", UIImage*()> currentNowPlayingArtwork{};
};
