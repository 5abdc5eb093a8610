// Colour spaces and colours.
#include "CoreGraphics/objects.h"

OBJC_EXPORTED_CLASS(CGColorSpace, NSObject, objc::Ivar<"model", &CGColorSpace::model>)
OBJC_EXPORTED_CLASS(CGColor, NSObject, objc::Ivar<"count", &CGColor::count>,
                    objc::Ivar<"components", &CGColor::components>)

CGColorSpace* CGColorSpace::make(CGColorSpaceModel model) {
  auto* space = host::makeObject<CGColorSpace>();
  space->model = model;
  return space;
}

extern "C" {

HOST_EXPORT CGColorSpaceRef CGColorSpaceCreateDeviceRGB() {
  return CGColorSpace::make(CGColorSpaceModel::rgb);
}
HOST_EXPORT CGColorSpaceRef CGColorSpaceCreateDeviceGray() {
  return CGColorSpace::make(CGColorSpaceModel::monochrome);
}
HOST_EXPORT CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space) {
  return static_cast<CGColorSpaceRef>(objc_retain(space));
}
HOST_EXPORT void CGColorSpaceRelease(CGColorSpaceRef space) { objc_release(space); }
HOST_EXPORT CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space) {
  return space == nullptr ? CGColorSpaceModel::unknown : space->model;
}
HOST_EXPORT std::size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space) {
  if (space == nullptr) return 0;
  return space->model == CGColorSpaceModel::rgb ? 3 : 1;
}

HOST_EXPORT CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components) {
  if (space == nullptr || components == nullptr) return nullptr;
  auto* color = host::makeObject<CGColor>();
  color->count = CGColorSpaceGetNumberOfComponents(space) + 1;
  for (std::size_t i = 0; i < color->count; ++i) color->components[i] = components[i];
  return color;
}
HOST_EXPORT CGColorRef CGColorRetain(CGColorRef color) {
  return static_cast<CGColorRef>(objc_retain(color));
}
HOST_EXPORT void CGColorRelease(CGColorRef color) { objc_release(color); }
HOST_EXPORT std::size_t CGColorGetNumberOfComponents(CGColorRef color) {
  return color == nullptr ? 0 : color->count;
}
HOST_EXPORT const CGFloat* CGColorGetComponents(CGColorRef color) {
  return color == nullptr ? nullptr : color->components.data();
}
}
