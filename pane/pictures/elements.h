// Small pictures of the elements, each with a colour where the element carries one.
#pragma once

#include "platform/UIKit.h"
#include "prefs/elements.h"

namespace varnix::pane {

/// In points.
inline constexpr CGSize kPictureSize{240, 96};

/// A nil colour means the system's own look. Nil for an element without picture.
UIImage* pictureOf(const settings::Element& element, UIColor* color);

}  // namespace varnix::pane
