// A colour with integer components, and the distance between two.
#pragma once

#include "platform/Foundation.h"

/// Each 0 to 255.
struct CQRGBPixel {
  NSUInteger red, green, blue;
};

/// The sum of the squared differences: 0 to 195075.
NSUInteger squareDistanceInRGBSpaceBetweenColor(CQRGBPixel a, CQRGBPixel b);
