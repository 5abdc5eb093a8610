// A colour of whole numbers, and how far two of them are apart.
#pragma once

#include "platform/Foundation.h"

/// Each 0 to 255.
struct CQRGBPixel {
  NSUInteger red, green, blue;
};

/// The sum of the squared differences: 0 to 195075.
NSUInteger squareDistanceInRGBSpaceBetweenColor(CQRGBPixel a, CQRGBPixel b);
