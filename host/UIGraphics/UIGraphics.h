// What the stand-in offers of UIKit's image contexts beyond what the library calls.
#pragma once

#include "export.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

extern "C" {
/// Not opaque, a pixel a point.
HOST_EXPORT void UIGraphicsBeginImageContext(CGSize size);
/// A context of the caller's own becomes the current one, its origin wherever the caller has it. No
/// image comes of it.
HOST_EXPORT void UIGraphicsPushContext(CGContextRef context);
/// Takes back the push; nothing where an image context was begun since.
HOST_EXPORT void UIGraphicsPopContext();
/// Lossless. Nil for an image without bitmap.
HOST_EXPORT NSData* UIImagePNGRepresentation(UIImage* image);
}
