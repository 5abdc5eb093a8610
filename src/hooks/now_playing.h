// The playing track, in SpringBoard: its controller, and an announcement of every change.
#pragma once

#include "platform/MediaPlayerUI.h"

namespace varnix {

/// Makes the controller and listens to it from then on. Does nothing without the framework, or if
/// its controller lacks a method that we need.
void startNowPlaying();

/// The name of the notification of a change of the track.
NSString* trackChanged();

/// Nil before startNowPlaying() and without the framework.
MPUNowPlayingController* nowPlayingController();

/// Whether something is playing; no without a controller.
bool isPlaying();

}  // namespace varnix
