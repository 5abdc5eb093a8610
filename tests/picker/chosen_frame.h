// Frames that a test makes up, which the picker reads instead of drawn ones. Include this in only
// one source file of an executable: it defines a platform function.
#pragma once

#include <dlfcn.h>

#include <cmath>
#include <vector>

#include "picker/analysis.h"
#include "platform/OpenGLES.h"

namespace test {

/// What the picker reads, unless it is empty.
inline std::vector<reference::Pixel> chosenFrame;

}  // namespace test

extern "C" void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format,
                             GLenum type, void* pixels) {
  using test::chosenFrame;
  if (chosenFrame.empty()) {
    static auto* real = reinterpret_cast<decltype(&glReadPixels)>(dlsym(RTLD_NEXT, "glReadPixels"));
    real(x, y, width, height, format, type, pixels);
    return;
  }
  ASSERT_EQ(chosenFrame.size(), static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  __builtin_memcpy(pixels, chosenFrame.data(), chosenFrame.size() * sizeof(reference::Pixel));
}

namespace test {

/// A fixture for frames and colours that a test makes up.
class ChosenFrame : public Analysis {
 protected:
  static constexpr reference::Color kBlack{0, 0, 0};
  static constexpr reference::Color kWhite{1, 1, 1};
  static constexpr reference::Color kGreyWhite{1, 1, 1, true};
  static constexpr reference::Color kGreyBlack{0, 0, 0, true};

  void SetUp() override {
    Analysis::SetUp();
    makeContextCurrent();
  }
  void TearDown() override { chosenFrame.clear(); }

  /// From now on, empty frames of that size are read.
  static void readFrame(unsigned width = reference::kSide, unsigned height = reference::kSide) {
    chosenFrame.assign(std::size_t{width} * height, {0, 0, 0, 0});
  }
  static void put(unsigned x, unsigned y, const reference::Pixel& pixel) {
    chosenFrame[y * reference::kSide + x] = pixel;
  }
  static UIColor* platformColor(const reference::Color& color) {
    return UIColor::colorWithRed(color.red, color.green, color.blue, 1);
  }
  /// The scheme for that background, from the frame that is read.
  NSObject* schemeFor(UIColor* background) {
    auto* scheme = make<NSObject>("CQColorScheme");
    send<void>(scheme, "setBackgroundColor:"_sel, background);
    send<void>(picker, "findTextColorsTaskForColorScheme:"_sel, scheme);
    return scheme;
  }
  reference::Color primaryFor(const reference::Color& background) {
    return componentsOf(primary(schemeFor(platformColor(background))));
  }
  reference::Color secondaryFor(const reference::Color& background) {
    return componentsOf(secondary(schemeFor(platformColor(background))));
  }
  reference::Color mostFrequent(NSUInteger width = reference::kSide,
                                NSUInteger height = reference::kSide) {
    return componentsOf(
        send<UIColor*>(picker, "colorWithBiggerCountFromImageWidth:height:"_sel, width, height));
  }
  reference::Color filtered(UIColor* from, float tolerance, NSUInteger width = reference::kSide,
                            NSUInteger height = reference::kSide) {
    return componentsOf(
        send<UIColor*>(picker, "colorFromImageWithWidth:height:filteringColor:tolerance:"_sel,
                       width, height, from, tolerance));
  }
  bool contrasts(UIColor* background, UIColor* foreground) {
    return send<bool>(picker, "isSufficienteContrastBetweenBackground:andForground:"_sel,
                      background, foreground);
  }
  bool contrastsWithBlack(const reference::Color& foreground) {
    return contrasts(platformColor(kBlack), platformColor(foreground));
  }
};

constexpr reference::Color color(unsigned red, unsigned green, unsigned blue) {
  constexpr CGFloat kRange = 255;
  return {red / kRange, green / kRange, blue / kRange};
}

/// The next larger single-precision number, and the next smaller one.
inline float above(float value) { return std::nextafter(value, 2.0F); }
inline float below(float value) { return std::nextafter(value, 0.0F); }

}  // namespace test
