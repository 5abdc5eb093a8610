// Images: a bitmap, its scale and which way up it is.
#include "UIKit/UIImage.h"

#include <cmath>
#include <filesystem>

#include "CoreGraphics/CoreGraphics.h"
#include "Foundation/file_contents.h"
#include "Foundation/text.h"
#include "process/container.h"

using host::Image;
using objc::ClassMethod;
using objc::Ivar;
using objc::Method;

OBJC_CLASS_NAMED(
    UIImage, NSObject, Image, NSObject, Ivar<"_bitmap", &Image::bitmap>,
    Ivar<"_scale", &Image::scale>, Ivar<"_imageOrientation", &Image::orientation>,
    Ivar<"_capInsets", &Image::capInsets>, Ivar<"_alignmentRectInsets", &Image::alignment>,
    Ivar<"_renderingMode", &Image::renderingMode>, Ivar<"_resizable", &Image::resizable>,
    ClassMethod<"imageWithCGImage:", &Image::withBitmap>,
    ClassMethod<"imageWithCGImage:scale:orientation:", &Image::withBitmapAt>,
    ClassMethod<"imageWithData:", &Image::withData>,
    ClassMethod<"imageWithData:scale:", &Image::withDataAt>,
    ClassMethod<"imageWithContentsOfFile:", &Image::withFile>,
    Method<"initWithCGImage:", &Image::initWithBitmap>,
    Method<"initWithCGImage:scale:orientation:", &Image::initWithBitmapAt>,
    Method<"initWithData:", &Image::initWithData>,
    Method<"initWithData:scale:", &Image::initWithDataAt>, Method<"size", &Image::sizeOf>,
    Method<"scale", &Image::scaleOf>, Method<"imageOrientation", &Image::orientationOf>,
    Method<"capInsets", &Image::capInsetsOf>, Method<"alignmentRectInsets", &Image::alignmentOf>,
    Method<"renderingMode", &Image::renderingModeOf>, Method<"_isResizable", &Image::isResizable>,
    Method<"resizableImageWithCapInsets:", &Image::withCapInsets>,
    Method<"imageWithAlignmentRectInsets:", &Image::withAlignment>,
    Method<"imageWithRenderingMode:", &Image::withRenderingMode>,
    Method<"CGImage", &Image::bitmapOf>, Method<"drawInRect:", &Image::drawInRect>,
    Method<"drawAtPoint:", &Image::drawAtPoint>,
    Method<"drawInRect:blendMode:alpha:", &Image::drawBlended>,
    Method<"standIn_problem", &Image::problem>)

namespace host {

namespace {

constexpr std::size_t kLargestFile = 256 << 20;

Image* allocated() { return static_cast<Image*>(class_createInstance(&objc_class_UIImage, 0)); }

UIImage* autoreleased(Image* image) { return static_cast<UIImage*>(objc_autorelease(image)); }

bool isSideways(Orientation orientation) {
  return orientation == Orientation::left || orientation == Orientation::right ||
         orientation == Orientation::leftMirrored || orientation == Orientation::rightMirrored;
}

/// From a unit square with the origin at the upper left, as the image is shown, to the same square
/// as the bitmap has it.
CGAffineTransform toShown(Orientation orientation) {
  switch (orientation) {
    case Orientation::up:
      return {1, 0, 0, 1, 0, 0};
    case Orientation::down:
      return {-1, 0, 0, -1, 1, 1};
    case Orientation::left:
      return {0, -1, 1, 0, 0, 1};
    case Orientation::right:
      return {0, 1, -1, 0, 1, 0};
    case Orientation::upMirrored:
      return {-1, 0, 0, 1, 1, 0};
    case Orientation::downMirrored:
      return {1, 0, 0, -1, 0, 1};
    case Orientation::leftMirrored:
      return {0, 1, 1, 0, 0, 0};
    case Orientation::rightMirrored:
      return {0, -1, -1, 0, 1, 1};
  }
  return {1, 0, 0, 1, 0, 0};
}

/// The end of a file's name without its extension that says how many pixels it has per point.
constexpr std::string_view kDoubled = "@2x";
constexpr std::string_view kTripled = "@3x";

struct PictureFile {
  std::string path;  ///< this machine's
  CGFloat scale;
};

/// The picture for this screen, which has two pixels per point: that with "@2x" where there is one.
PictureFile pictureFor(const std::filesystem::path& device) {
  const std::string stem = device.stem().string();
  if (stem.ends_with(kDoubled)) return {readablePath(device.string()), 2};
  if (stem.ends_with(kTripled)) return {readablePath(device.string()), 3};
  const auto doubled = device.parent_path() / (stem + std::string(kDoubled));
  std::string path = readablePath(doubled.string() + device.extension().string());
  std::error_code ignored;
  if (!stem.empty() && std::filesystem::is_regular_file(path, ignored)) return {path, 2};
  return {readablePath(device.string()), 1};
}

}  // namespace

UIImage* Image::withBitmap(CGImageRef image) { return withBitmapAt(image, 1, 0); }
UIImage* Image::withBitmapAt(CGImageRef image, CGFloat scale, NSInteger orientation) {
  return image == nullptr ? nullptr
                          : autoreleased(allocated()->initWithBitmapAt(image, scale, orientation));
}
UIImage* Image::withData(NSData* data) { return withDataAt(data, 1); }
UIImage* Image::withDataAt(NSData* data, CGFloat scale) {
  return autoreleased(allocated()->initWithDataAt(data, scale));
}
UIImage* Image::withFile(NSString* path) {
  const PictureFile file = pictureFor(text(path));
  NSData* contents = fileData(file.path, kLargestFile);
  return contents == nullptr ? nullptr : withDataAt(contents, file.scale);
}

Image* Image::initWithBitmap(CGImageRef image) { return initWithBitmapAt(image, 1, 0); }
Image* Image::initWithBitmapAt(CGImageRef image, CGFloat imageScale, NSInteger value) {
  bitmap = Strong<::CGImage>::retain(image);
  scale = imageScale > 0 && std::isfinite(imageScale) ? imageScale : 1;
  orientation = value >= 0 && value <= 7 ? static_cast<Orientation>(value) : Orientation::up;
  return this;
}
Image* Image::initWithData(NSData* data) { return initWithDataAt(data, 1); }
Image* Image::initWithDataAt(NSData* data, CGFloat imageScale) {
  NSInteger turned = 0;
  const auto made = Strong<::CGImage>::adopt(imageFromFile(data, turned));
  if (made != nullptr) return initWithBitmapAt(made, imageScale, turned);
  objc_release(this);
  return nullptr;
}

Image* Image::copyOf() {
  Image* made = allocated()->initWithBitmapAt(bitmap, scale, orientationOf());
  made->capInsets = capInsets;
  made->alignment = alignment;
  made->renderingMode = renderingMode;
  made->resizable = resizable;
  return made;
}
UIImage* Image::withCapInsets(UIEdgeInsets insets) {
  Image* made = copyOf();
  made->capInsets = insets;
  made->resizable = true;
  return autoreleased(made);
}
UIImage* Image::withAlignment(UIEdgeInsets insets) {
  Image* made = copyOf();
  made->alignment = insets;
  return autoreleased(made);
}
UIImage* Image::withRenderingMode(NSInteger mode) {
  Image* made = copyOf();
  made->renderingMode = mode;
  return autoreleased(made);
}

CGSize Image::sizeOf() {
  const CGFloat width = static_cast<CGFloat>(CGImageGetWidth(bitmap)) / scaleOf();
  const CGFloat height = static_cast<CGFloat>(CGImageGetHeight(bitmap)) / scaleOf();
  return isSideways(orientation) ? CGSize{height, width} : CGSize{width, height};
}

NSString* Image::problem() {
  const std::string found = problemOf(bitmap);
  return found.empty() ? nullptr : NSString::stringWithUTF8String(found.c_str());
}

void Image::drawAtPoint(CGPoint point) { drawInRect({point, sizeOf()}); }

void Image::drawBlended(CGRect rect, std::int32_t mode, CGFloat alpha) {
  CGContextRef context = UIGraphicsGetCurrentContext();
  CGContextSaveGState(context);
  CGContextSetBlendMode(context, CGBlendMode{mode});
  CGContextSetAlpha(context, alpha);
  drawInRect(rect);
  CGContextRestoreGState(context);
}

void Image::drawInRect(CGRect rect) {
  CGContextRef context = UIGraphicsGetCurrentContext();
  if (context == nullptr) return;
  CGContextSaveGState(context);
  CGContextTranslateCTM(context, rect.origin.x, rect.origin.y);
  CGContextScaleCTM(context, rect.size.width, rect.size.height);
  CGContextConcatCTM(context, toShown(orientation));
  // CoreGraphics draws upwards.
  CGContextTranslateCTM(context, 0, 1);
  CGContextScaleCTM(context, 1, -1);
  CGContextDrawImage(context, {{0, 0}, {1, 1}}, bitmap);
  CGContextRestoreGState(context);
}

}  // namespace host
