// The playing track, in SpringBoard: its controller, and an announcement of every change.
#pragma once

#include "platform/MediaPlayerUI.h"

namespace varnix {

/// Makes the controller and listens to it, for good. Without the framework, or with one
/// that lacks what is asked of its controller, nothing happens.
void startNowPlaying();

/// The name of the notification that a change of the track is.
NSString* trackChanged();

/// Nil before startNowPlaying() and without the framework.
MPUNowPlayingController* nowPlayingController();

/// Whether something plays; no without a controller.
bool isPlaying();

}  // namespace varnix
