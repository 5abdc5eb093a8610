// What the stand-in offers of UIKit's image contexts beyond what the library calls.
#pragma once

#include "export.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

extern "C" {
/// Not opaque, one pixel per point.
HOST_EXPORT void UIGraphicsBeginImageContext(CGSize size);
/// Makes a context of the caller's the current one, with the caller's origin. It gives no image.
HOST_EXPORT void UIGraphicsPushContext(CGContextRef context);
/// Undoes the push; does nothing if an image context was begun since.
HOST_EXPORT void UIGraphicsPopContext();
/// Lossless. Nil for an image without bitmap.
HOST_EXPORT NSData* UIImagePNGRepresentation(UIImage* image);
}
