#include "color/CQRGBPixel.h"

// A difference below zero wraps around, but so does its square, which gives the right value.
NSUInteger squareDistanceInRGBSpaceBetweenColor(CQRGBPixel a, CQRGBPixel b) {
  const NSUInteger red = a.red - b.red;
  const NSUInteger green = a.green - b.green;
  const NSUInteger blue = a.blue - b.blue;
  return red * red + green * green + blue * blue;
}
