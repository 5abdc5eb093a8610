// What the stand-in offers of CoreGraphics beyond what the library calls.
#pragma once

#include "export.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

enum class CGColorSpaceModel : std::int32_t { unknown = -1, monochrome = 0, rgb = 1 };

/// For images drawn larger than they are: none repeats pixels, all others smooth.
enum class CGInterpolationQuality : std::int32_t {
  standard = 0,
  none = 1,
  low = 2,
  high = 3,
  medium = 4,
};

/// Whether a gradient continues beyond its two points, in the colours it has there.
inline constexpr CGGradientDrawingOptions kCGGradientDrawsBeforeStartLocation = 1;
inline constexpr CGGradientDrawingOptions kCGGradientDrawsAfterEndLocation = 2;

struct CGAffineTransform {
  CGFloat a, b, c, d, tx, ty;
};

extern "C" {
HOST_EXPORT CGColorSpaceRef CGColorSpaceCreateDeviceGray();
HOST_EXPORT CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space);
/// Unknown for nil.
HOST_EXPORT CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space);
/// Without alpha; 0 for nil.
HOST_EXPORT std::size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space);

HOST_EXPORT CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components);
HOST_EXPORT CGColorRef CGColorRetain(CGColorRef color);
HOST_EXPORT void CGColorRelease(CGColorRef color);

HOST_EXPORT CGDataProviderRef CGDataProviderCreateWithCFData(NSData* data);
HOST_EXPORT CGDataProviderRef CGDataProviderRetain(CGDataProviderRef provider);
/// The bytes exactly as given; nil for nil.
HOST_EXPORT NSData* CGDataProviderCopyData(CGDataProviderRef provider);

HOST_EXPORT std::size_t CGImageGetBitsPerComponent(CGImageRef image);
HOST_EXPORT std::size_t CGImageGetBitsPerPixel(CGImageRef image);
HOST_EXPORT std::size_t CGImageGetBytesPerRow(CGImageRef image);
HOST_EXPORT CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image);
HOST_EXPORT CGBitmapInfo CGImageGetAlphaInfo(CGImageRef image);
HOST_EXPORT bool CGImageGetShouldInterpolate(CGImageRef image);
/// Not owned by the caller.
HOST_EXPORT CGDataProviderRef CGImageGetDataProvider(CGImageRef image);
HOST_EXPORT CGImageRef CGImageRetain(CGImageRef image);

/// A copy of what has been drawn so far.
HOST_EXPORT CGImageRef CGBitmapContextCreateImage(CGContextRef context);
HOST_EXPORT void* CGBitmapContextGetData(CGContextRef context);
HOST_EXPORT std::size_t CGBitmapContextGetWidth(CGContextRef context);
HOST_EXPORT std::size_t CGBitmapContextGetHeight(CGContextRef context);
HOST_EXPORT std::size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
HOST_EXPORT CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef context);
HOST_EXPORT CGColorSpaceRef CGBitmapContextGetColorSpace(CGContextRef context);

HOST_EXPORT CGContextRef CGContextRetain(CGContextRef context);

HOST_EXPORT void CGContextConcatCTM(CGContextRef context, CGAffineTransform transform);
/// In radians.
HOST_EXPORT void CGContextRotateCTM(CGContextRef context, CGFloat angle);
/// From the user's space to one with the origin at the bitmap's lower left pixel. Identity for nil.
HOST_EXPORT CGAffineTransform CGContextGetCTM(CGContextRef context);
HOST_EXPORT void CGContextSetAlpha(CGContextRef context, CGFloat alpha);
HOST_EXPORT void CGContextSetFillColorWithColor(CGContextRef context, CGColorRef color);
HOST_EXPORT void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green,
                                          CGFloat blue, CGFloat alpha);
// The colour of lines, which is opaque black at first.
HOST_EXPORT void CGContextSetStrokeColorWithColor(CGContextRef context, CGColorRef color);
HOST_EXPORT void CGContextSetRGBStrokeColor(CGContextRef context, CGFloat red, CGFloat green,
                                            CGFloat blue, CGFloat alpha);
HOST_EXPORT void CGContextAddEllipseInRect(CGContextRef context, CGRect rect);
HOST_EXPORT void CGContextClearRect(CGContextRef context, CGRect rect);
HOST_EXPORT void CGContextClipToRect(CGContextRef context, CGRect rect);
HOST_EXPORT void CGContextSetInterpolationQuality(CGContextRef context,
                                                  CGInterpolationQuality quality);
HOST_EXPORT void CGContextSetShouldAntialias(CGContextRef context, bool shouldAntialias);
}
