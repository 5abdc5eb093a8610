// CoreGraphics: geometry, colours and their spaces, images, bitmap contexts.
#pragma once

#include <cstddef>
#include <cstdint>

#include "objc/encoding.h"

#if defined(__LP64__)
using CGFloat = double;
#else
using CGFloat = float;
#endif

struct CGPoint {
  CGFloat x, y;
};
struct CGSize {
  CGFloat width, height;
};
struct CGRect {
  CGPoint origin;
  CGSize size;
};

OBJC_STRUCT(CGPoint, CGFloat, CGFloat);
OBJC_STRUCT(CGSize, CGFloat, CGFloat);
OBJC_STRUCT(CGRect, CGPoint, CGSize);

// The caller of a function with Create in its name owns the result. Every Release accepts nil.
struct CGColor;
struct CGColorSpace;
struct CGContext;
struct CGDataProvider;
struct CGGradient;
struct CGImage;
OBJC_OPAQUE(CGColor);
OBJC_OPAQUE(CGColorSpace);
OBJC_OPAQUE(CGContext);
OBJC_OPAQUE(CGDataProvider);
OBJC_OPAQUE(CGGradient);
OBJC_OPAQUE(CGImage);
using CGColorRef = CGColor*;
using CGColorSpaceRef = CGColorSpace*;
using CGContextRef = CGContext*;
using CGDataProviderRef = CGDataProvider*;
using CGGradientRef = CGGradient*;
using CGImageRef = CGImage*;

/// The position of a pixel's alpha (low five bits), and the order of its bytes (bits 12 to 14).
using CGBitmapInfo = std::uint32_t;
inline constexpr CGBitmapInfo kCGImageAlphaNone = 0;
inline constexpr CGBitmapInfo kCGImageAlphaPremultipliedLast = 1;
inline constexpr CGBitmapInfo kCGImageAlphaPremultipliedFirst = 2;
inline constexpr CGBitmapInfo kCGImageAlphaLast = 3;
inline constexpr CGBitmapInfo kCGImageAlphaFirst = 4;
inline constexpr CGBitmapInfo kCGImageAlphaNoneSkipLast = 5;
inline constexpr CGBitmapInfo kCGImageAlphaNoneSkipFirst = 6;
inline constexpr CGBitmapInfo kCGImageAlphaOnly = 7;
inline constexpr CGBitmapInfo kCGBitmapAlphaInfoMask = 0x1f;
inline constexpr CGBitmapInfo kCGBitmapFloatComponents = 1 << 8;
inline constexpr CGBitmapInfo kCGBitmapByteOrderDefault = 0;
inline constexpr CGBitmapInfo kCGBitmapByteOrder16Little = 1 << 12;
inline constexpr CGBitmapInfo kCGBitmapByteOrder32Little = 2 << 12;
inline constexpr CGBitmapInfo kCGBitmapByteOrder16Big = 3 << 12;
inline constexpr CGBitmapInfo kCGBitmapByteOrder32Big = 4 << 12;
inline constexpr CGBitmapInfo kCGBitmapByteOrderMask = 0x7000;

enum class CGColorRenderingIntent : std::int32_t { standard = 0 };

/// Two of many.
enum class CGBlendMode : std::int32_t { normal = 0, hue = 12 };
using CGGradientDrawingOptions = std::uint32_t;

using CGDataProviderReleaseDataCallback = void (*)(void* info, const void* data, std::size_t size);

#pragma GCC visibility push(default)
extern "C" {
CGColorSpaceRef CGColorSpaceCreateDeviceRGB();
void CGColorSpaceRelease(CGColorSpaceRef space);

/// Including alpha: four for red, green and blue, two for a grey. 0 for nil.
std::size_t CGColorGetNumberOfComponents(CGColorRef color);
/// That many values, each 0 to 1, alpha last. They live as long as the colour. Nil for nil.
const CGFloat* CGColorGetComponents(CGColorRef color);

/// The callback, which may be null, frees the data when it is no longer needed.
CGDataProviderRef CGDataProviderCreateWithData(void* info, const void* data, std::size_t size,
                                               CGDataProviderReleaseDataCallback release);
void CGDataProviderRelease(CGDataProviderRef provider);

/// In pixels; 0 for nil.
std::size_t CGImageGetWidth(CGImageRef image);
std::size_t CGImageGetHeight(CGImageRef image);
/// Not owned by the caller; nil for nil and for a mask.
CGColorSpaceRef CGImageGetColorSpace(CGImageRef image);
/// Nil if the parameters match no pixel format.
CGImageRef CGImageCreate(std::size_t width, std::size_t height, std::size_t bitsPerComponent,
                         std::size_t bitsPerPixel, std::size_t bytesPerRow, CGColorSpaceRef space,
                         CGBitmapInfo bitmapInfo, CGDataProviderRef provider, const CGFloat* decode,
                         bool shouldInterpolate, CGColorRenderingIntent intent);
void CGImageRelease(CGImageRef image);

/// A context over the caller's memory, or over its own if data is null. The first row in memory is
/// the top one; (0, 0) is the lower left corner. Nil if the parameters match no pixel format.
CGContextRef CGBitmapContextCreate(void* data, std::size_t width, std::size_t height,
                                   std::size_t bitsPerComponent, std::size_t bytesPerRow,
                                   CGColorSpaceRef space, CGBitmapInfo bitmapInfo);
/// Upright, stretched to the rectangle. Does nothing for a nil context or image.
void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image);
void CGContextRelease(CGContextRef context);

void CGContextSaveGState(CGContextRef context);
void CGContextRestoreGState(CGContextRef context);
void CGContextTranslateCTM(CGContextRef context, CGFloat x, CGFloat y);
void CGContextScaleCTM(CGContextRef context, CGFloat x, CGFloat y);
void CGContextSetBlendMode(CGContextRef context, CGBlendMode mode);
/// Everything drawn from now on is masked by the image's alpha, stretched to the rectangle.
void CGContextClipToMask(CGContextRef context, CGRect rect, CGImageRef mask);
// A path. The corner of an arc is rounded from the line before it to the line after it.
void CGContextBeginPath(CGContextRef context);
void CGContextMoveToPoint(CGContextRef context, CGFloat x, CGFloat y);
void CGContextAddLineToPoint(CGContextRef context, CGFloat x, CGFloat y);
void CGContextAddArcToPoint(CGContextRef context, CGFloat cornerX, CGFloat cornerY, CGFloat endX,
                            CGFloat endY, CGFloat radius);
void CGContextClosePath(CGContextRef context);
void CGContextAddRect(CGContextRef context, CGRect rect);
void CGContextAddEllipseInRect(CGContextRef context, CGRect rect);
/// Everything drawn from now on stays inside the path.
void CGContextClip(CGContextRef context);
void CGContextSetLineWidth(CGContextRef context, CGFloat width);
void CGContextStrokePath(CGContextRef context);
void CGContextFillPath(CGContextRef context);
/// In the current fill colour, which is opaque black at first.
void CGContextFillRect(CGContextRef context, CGRect rect);

/// From an NSArray of CGColors. Without locations they are evenly spaced from 0 to 1. Nil for an
/// empty list.
CGGradientRef CGGradientCreateWithColors(CGColorSpaceRef space, NSObject* colors,
                                         const CGFloat* locations);
void CGGradientRelease(CGGradientRef gradient);
/// Without options it does not extend beyond its two points. Does nothing for a nil gradient.
void CGContextDrawLinearGradient(CGContextRef context, CGGradientRef gradient, CGPoint start,
                                 CGPoint end, CGGradientDrawingOptions options);
}
#pragma GCC visibility pop
