#include "color/CQRGBPixel.h"

// A difference below zero wraps around, and so does its square: back to what it ought to be.
NSUInteger squareDistanceInRGBSpaceBetweenColor(CQRGBPixel a, CQRGBPixel b) {
  const NSUInteger red = a.red - b.red;
  const NSUInteger green = a.green - b.green;
  const NSUInteger blue = a.blue - b.blue;
  return red * red + green * green + blue * blue;
}
