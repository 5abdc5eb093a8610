// Discs of colours, for rows.
#pragma once

#include "platform/UIKit.h"
#include "prefs/presets.h"

namespace varnix::pane {

/// 29 points across, in one colour; empty with a ring for nil.
UIImage* disc(UIColor* color);

/// The same in the preset's colours, side by side.
UIImage* disc(const settings::Preset& preset);

}  // namespace varnix::pane
