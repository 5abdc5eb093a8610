// The library's internal plain functions, under names that a test can look up.
#include "color/AverageColor.h"
#include "color/CQRGBPixel.h"
#include "color/Darken.h"
#include "color/ImportantColor.h"
#include "color/RecolorImage.h"
#include "color/TintImage.h"
#include "prefs/IconColor.h"

#pragma GCC visibility push(default)
extern "C" {
UIColor* plainDarken(UIColor* color, float amount) { return varnix::Color::Darken(color, amount); }
UIColor* plainAverageColor(UIImage* image) { return varnix::Color::AverageColor(image); }
UIColor* plainImportantColor(UIImage* image) { return varnix::Color::ImportantColor(image); }
UIImage* plainRecolorImage(UIImage* image, UIColor* color) {
  return varnix::Color::RecolorImage(image, color);
}
UIImage* plainTintImage(UIImage* image, UIColor* color) {
  return varnix::Color::TintImage(image, color);
}
UIColor* plainIconColor(NSString* identifier, UIColor* fallback, VNXManager* manager) {
  return varnix::Color::IconColor(identifier, fallback, manager);
}
NSUInteger plainSquareDistance(const NSUInteger* a, const NSUInteger* b) {
  return squareDistanceInRGBSpaceBetweenColor({a[0], a[1], a[2]}, {b[0], b[1], b[2]});
}
}
#pragma GCC visibility pop
