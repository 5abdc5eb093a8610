// MediaPlayerUI, a private framework: the playing track.
#pragma once

#include "platform/UIKit.h"

struct MPUNowPlayingController : NSObject {};
