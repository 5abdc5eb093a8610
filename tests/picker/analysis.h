// A hosted application with the analysis of pictures.
#pragma once

#include <limits>
#include <stdexcept>

#include "CoreGraphics/CoreGraphics.h"
#include "picker/pictures.h"
#include "picker/reference.h"
#include "support/hosted.h"
#include "support/pictures.h"

namespace pictures {

inline std::string nameOf(const testing::TestParamInfo<Kind>& kind) { return kind.param.name; }
/// For GoogleTest's messages.
inline void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

}  // namespace pictures

namespace reference {

inline void PrintTo(const Color& color, std::ostream* out) {
  *out << (color.isGrey ? "grey " : "") << color.red * 255 << ' ' << color.green * 255 << ' '
       << color.blue * 255;
}

}  // namespace reference

namespace test {

/// The limit for rounding errors of a few operations on components.
inline constexpr double kRounding = 4 * double{std::numeric_limits<CGFloat>::epsilon()};

/// The plain function of that name, with PlainAnalysis.
template <class Function>
Function* plainFunction(const char* name) {
  void* function = host::librarySymbol(VARNIX_PLAIN_FUNCTIONS, name);
  if (function == nullptr) throw std::runtime_error(std::string("no ") + name);
  return reinterpret_cast<Function*>(function);
}

inline UIImage* platformImage(const pictures::Picture& from) {
  return picture(from.width, from.height, [&](std::size_t x, std::size_t y) {
    const std::uint8_t* p = &from.rgba[(y * from.width + x) * 4];
    return Pixel{p[0], p[1], p[2], p[3]};
  });
}

/// The pixels of a 32 x 32 image, premultiplied.
inline reference::Pixels pixelsOf(UIImage* image) {
  reference::Pixels pixels{};
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  CGContextRef context =
      CGBitmapContextCreate(pixels.data(), reference::kSide, reference::kSide, 8,
                            reference::kSide * 4, space, kCGImageAlphaPremultipliedLast);
  CGContextDrawImage(context, {{0, 0}, {reference::kSide, reference::kSide}},
                     send<CGImageRef>(image, "CGImage"_sel));
  CGContextRelease(context);
  CGColorSpaceRelease(space);
  return pixels;
}

inline reference::Color componentsOf(UIColor* color) {
  CGFloat c[3] = {-1, -1, -1};
  send<bool>(color, "getRed:green:blue:alpha:"_sel, &c[0], &c[1], &c[2],
             static_cast<CGFloat*>(nullptr));
  const bool isGrey = CGColorGetNumberOfComponents(send<CGColorRef>(color, "CGColor"_sel)) == 2;
  return {c[0], c[1], c[2], isGrey};
}

/// A fixture with one picker.
class Analysis : public Hosted {
 protected:
  explicit Analysis(const char* library = VARNIX_LIBRARY) : library_(library) {}

  void SetUp() override {
    start("com.example.app");
    host::loadLibrary(library_);
    picker = make<NSObject>("CQColorPicker");
    ASSERT_NE(picker, nullptr);
  }

  /// For tests of a request's separate steps: without a context there is no frame.
  void makeContextCurrent() { ASSERT_TRUE(send<bool>(picker, "setupContext"_sel)); }

  NSObject* schemeOf(UIImage* image) {
    return send<NSObject*>(picker, "colorSchemeFromImage:"_sel, image);
  }
  static UIColor* background(NSObject* scheme) {
    return send<UIColor*>(scheme, "backgroundColor"_sel);
  }
  static UIColor* primary(NSObject* scheme) {
    return send<UIColor*>(scheme, "primaryTextColor"_sel);
  }
  static UIColor* secondary(NSObject* scheme) {
    return send<UIColor*>(scheme, "secondaryTextColor"_sel);
  }

  /// What the pass sees of a picture: the picture itself if it has the right size, else the
  /// picker's squeezed copy.
  reference::Pixels squeezed(const pictures::Picture& picture, UIImage* image) {
    if (picture.width != reference::kSide || picture.height != reference::kSide) {
      return pixelsOf(send<UIImage*>(picker, "scaleImage:width:height:"_sel, image,
                                     double{reference::kSide}, double{reference::kSide}));
    }
    reference::Pixels pixels{};
    __builtin_memcpy(pixels.data(), picture.rgba.data(), picture.rgba.size());
    return pixels;
  }

  /// The last pass's frame. The library does not release the dumped image's provider, so this does.
  reference::Pixels dumpedFrame(UIColor** biggest = nullptr) {
    makeContextCurrent();
    auto* image =
        send<UIImage*>(picker, "dumpImageWithWidth:height:biggestAlphaColorReturn:"_sel,
                       NSUInteger{reference::kSide}, NSUInteger{reference::kSide}, biggest);
    auto* dumped = send<CGImageRef>(image, "CGImage"_sel);
    // If the image is enlarged, its pixels must stay visible.
    EXPECT_FALSE(CGImageGetShouldInterpolate(dumped));
    CGDataProviderRef provider = CGImageGetDataProvider(dumped);
    auto* data = static_cast<NSData*>(objc_autorelease(CGDataProviderCopyData(provider)));
    reference::Pixels pixels{};
    EXPECT_EQ(send(data, NSData::length), sizeof pixels);
    if (send(data, NSData::length) == sizeof pixels)
      __builtin_memcpy(pixels.data(), send(data, NSData::bytes), sizeof pixels);
    CGDataProviderRelease(provider);
    return pixels;
  }

  NSObject* picker = nullptr;

 private:
  const char* library_;
};

/// With the library's internal functions: a module with them is loaded instead of the library.
class PlainAnalysis : public Analysis {
 protected:
  PlainAnalysis() : Analysis(VARNIX_PLAIN_FUNCTIONS) {}
};

}  // namespace test
