// The glyph of the share button.
#pragma once

#include "platform/UIKit.h"

namespace varnix::pane {

/// An arrow out of a box, 20 points across; the bar dyes it.
UIImage* shareGlyph();

}  // namespace varnix::pane
