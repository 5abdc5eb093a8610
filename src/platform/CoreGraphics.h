// CoreGraphics: geometry.
#pragma once

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
