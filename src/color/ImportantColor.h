// The colour that represents an image.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// The source of the colour that represents an image.
enum class ImportantRule { background, primary, secondary, average };

struct ImportantChoice {
  UIColor* color;
  ImportantRule rule;
  bool isSaturated;  ///< pushed to saturation 0.76
};

/// The most saturated of the background and the two text colours of the image's colour scheme,
/// pushed to saturation 0.76 if it is neither grey (0.1 and less) nor vivid (0.63 and more). While
/// the application is in the background there is no scheme, so it is the average colour's hue,
/// saturated. Runs a graphics pass on the calling thread, which may be any.
UIColor* ImportantColor(UIImage* image);

/// The same, and how it was chosen.
ImportantChoice chooseImportantColor(UIImage* image);

}  // namespace varnix::Color
