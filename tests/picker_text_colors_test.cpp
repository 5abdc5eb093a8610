// The text colours: over hundreds of pictures, and on both sides of every limit.
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "objc/autorelease_pool.h"
#include "picker/analysis.h"
#include "platform/OpenGLES.h"

namespace {

using namespace test;
using pictures::Picture;
using reference::Color;
using Bytes = reference::Pixel;

/// What the picker reads instead of a drawn frame while it is not empty.
std::vector<Bytes> chosenFrame;

}  // namespace

extern "C" void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format,
                             GLenum type, void* pixels) {
  if (chosenFrame.empty()) {
    static auto* real = reinterpret_cast<decltype(&glReadPixels)>(dlsym(RTLD_NEXT, "glReadPixels"));
    real(x, y, width, height, format, type, pixels);
    return;
  }
  ASSERT_EQ(chosenFrame.size(), static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  __builtin_memcpy(pixels, chosenFrame.data(), chosenFrame.size() * sizeof(Bytes));
}

/// The provider of the last dump, which the library leaves behind.
static CGDataProviderRef lastProvider = nullptr;

extern "C" CGDataProviderRef CGDataProviderCreateWithData(
    void* info, const void* data, std::size_t size, CGDataProviderReleaseDataCallback release) {
  static auto* real = reinterpret_cast<decltype(&CGDataProviderCreateWithData)>(
      dlsym(RTLD_NEXT, "CGDataProviderCreateWithData"));
  return lastProvider = real(info, data, size, release);
}

// Frames that no memory can hold are asked for below.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

class PickerScheme : public Analysis, public testing::WithParamInterface<pictures::Kind> {};

TEST_P(PickerScheme, HasTheColorsOfThePlainComputation) {
  for (const Picture& picture : GetParam().make()) {
    const objc::AutoreleasePool pool;
    UIImage* image = platformImage(picture);
    const reference::Scheme expected =
        reference::schemeOf(reference::frameOf(squeezed(picture, image)));
    NSObject* scheme = schemeOf(image);
    ASSERT_NE(scheme, nullptr) << picture.name;
    EXPECT_EQ(componentsOf(background(scheme)), expected.background) << picture.name;
    EXPECT_EQ(componentsOf(primary(scheme)), expected.primary) << picture.name;
    EXPECT_EQ(componentsOf(secondary(scheme)), expected.secondary) << picture.name;
    UIColor* biggest = nullptr;
    dumpedFrame(&biggest);
    EXPECT_EQ(componentsOf(biggest), expected.background) << picture.name;
    for (UIColor* color : {background(scheme), primary(scheme), secondary(scheme), biggest})
      EXPECT_EQ(send<CGFloat>(color, "alpha"_sel), 1) << picture.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Pictures, PickerScheme, testing::ValuesIn(pictures::kKinds),
                         pictures::nameOf);

/// Around frames and colours that a test makes up.
class PickerChoice : public Analysis {
 protected:
  static constexpr Color kBlack{0, 0, 0};
  static constexpr Color kWhite{1, 1, 1};
  static constexpr Color kGreyWhite{1, 1, 1, true};
  static constexpr Color kGreyBlack{0, 0, 0, true};

  void TearDown() override { chosenFrame.clear(); }

  /// Empty frames of that size are what is read from now on.
  static void readFrame(unsigned width = reference::kSide, unsigned height = reference::kSide) {
    chosenFrame.assign(std::size_t{width} * height, {0, 0, 0, 0});
  }
  static void put(unsigned x, unsigned y, const Bytes& pixel) {
    chosenFrame[y * reference::kSide + x] = pixel;
  }
  static UIColor* platformColor(const Color& color) {
    return UIColor::colorWithRed(color.red, color.green, color.blue, 1);
  }
  /// The scheme of the frame that is read, for that background.
  NSObject* schemeFor(UIColor* background) {
    auto* scheme = make<NSObject>("CQColorScheme");
    send<void>(scheme, "setBackgroundColor:"_sel, background);
    send<void>(picker, "findTextColorsTaskForColorScheme:"_sel, scheme);
    return scheme;
  }
  Color primaryFor(const Color& background) {
    return componentsOf(primary(schemeFor(platformColor(background))));
  }
  Color secondaryFor(const Color& background) {
    return componentsOf(secondary(schemeFor(platformColor(background))));
  }
  Color mostFrequent(NSUInteger width = reference::kSide, NSUInteger height = reference::kSide) {
    return componentsOf(
        send<UIColor*>(picker, "colorWithBiggerCountFromImageWidth:height:"_sel, width, height));
  }
  Color filtered(UIColor* from, float tolerance, NSUInteger width = reference::kSide,
                 NSUInteger height = reference::kSide) {
    return componentsOf(
        send<UIColor*>(picker, "colorFromImageWithWidth:height:filteringColor:tolerance:"_sel,
                       width, height, from, tolerance));
  }
  bool contrasts(UIColor* background, UIColor* foreground) {
    return send<bool>(picker, "isSufficienteContrastBetweenBackground:andForground:"_sel,
                      background, foreground);
  }
  bool contrastsWithBlack(const Color& foreground) {
    return contrasts(platformColor(kBlack), platformColor(foreground));
  }
};

constexpr Color color(unsigned red, unsigned green, unsigned blue) {
  return {red / 255.0, green / 255.0, blue / 255.0};
}

/// The next single-precision number, and the one before.
float above(float value) { return std::nextafter(value, 2.0F); }
float below(float value) { return std::nextafter(value, 0.0F); }

TEST_F(PickerChoice, ThePrimaryIsFartherThanTheLimitFromTheBackground) {
  readFrame();
  put(0, 0, {120, 40, 16, 200});  // 16256 from black
  put(1, 0, {127, 8, 8, 5});      // 16257
  EXPECT_EQ(primaryFor(kBlack), color(127, 8, 8));
  put(1, 0, {0, 0, 0, 255});
  EXPECT_EQ(primaryFor(kBlack), kBlack);
}

TEST_F(PickerChoice, TheSecondaryIsFartherThanTheLimitFromTheBackgroundToo) {
  readFrame();
  put(0, 0, {0, 0, 0, 200});
  put(1, 0, {135, 215, 239, 100});  // 16256 from white
  put(2, 0, {0, 80, 0, 50});
  EXPECT_EQ(primaryFor(kWhite), kBlack);
  EXPECT_EQ(secondaryFor(kWhite), color(0, 80, 0));
  // One step farther it is chosen, and then lacks contrast.
  put(1, 0, {128, 247, 247, 100});
  EXPECT_EQ(secondaryFor(kWhite), kGreyBlack);
}

TEST_F(PickerChoice, TheSecondaryIsFartherThanTheLimitFromThePrimary) {
  readFrame();
  put(0, 0, {170, 170, 170, 200});
  // No three squares add up to 5852.
  put(1, 0, {245, 185, 171, 100});  // 5851 from it
  put(2, 0, {244, 186, 181, 50});   // 5853
  EXPECT_EQ(primaryFor(kBlack), color(170, 170, 170));
  EXPECT_EQ(secondaryFor(kBlack), color(244, 186, 181));
}

TEST_F(PickerChoice, WithoutASecondaryBlackIsTriedForContrast) {
  readFrame();
  put(0, 0, {0, 0, 200, 9});
  EXPECT_EQ(primaryFor(kWhite), color(0, 0, 200));
  EXPECT_EQ(secondaryFor(kWhite), kBlack);
  EXPECT_EQ(primaryFor(kBlack), color(0, 0, 200));
  EXPECT_EQ(secondaryFor(kBlack), kGreyWhite);
}

TEST_F(PickerChoice, TheFirstOfEquallyFrequentColorsWins) {
  readFrame();
  put(15, 3, {200, 0, 0, 77});
  put(14, 3, {0, 200, 0, 77});
  put(0, 4, {0, 0, 200, 77});
  EXPECT_EQ(mostFrequent(), color(0, 200, 0));
  EXPECT_EQ(primaryFor(kBlack), color(0, 200, 0));
  EXPECT_EQ(filtered(platformColor(kBlack), 0), color(0, 200, 0));
  put(0, 4, {0, 0, 200, 78});
  EXPECT_EQ(mostFrequent(), color(0, 0, 200));
}

TEST_F(PickerChoice, TheFirstOfTheSecondariesWins) {
  readFrame();
  put(0, 0, {0, 0, 255, 90});
  put(5, 9, {255, 255, 0, 80});
  put(4, 10, {255, 255, 255, 80});
  EXPECT_EQ(secondaryFor(kBlack), color(255, 255, 0));
}

TEST_F(PickerChoice, CountsEndAt255) {
  readFrame();
  put(3, 0, {255, 255, 0, 255});
  put(4, 0, {0, 255, 255, 255});
  EXPECT_EQ(mostFrequent(), color(255, 255, 0));
  EXPECT_EQ(primaryFor(kBlack), color(255, 255, 0));
}

TEST_F(PickerChoice, WhatNoSampleResemblesIsNotChosen) {
  readFrame();
  put(0, 0, {255, 255, 255, 0});
  EXPECT_EQ(mostFrequent(), kBlack);
  EXPECT_EQ(primaryFor(kBlack), kBlack);
  EXPECT_EQ(filtered(platformColor(kBlack), 0), kBlack);
}

TEST_F(PickerChoice, OnlyTheQuarterCounts) {
  readFrame();
  put(16, 0, {255, 255, 255, 255});
  put(0, 16, {255, 255, 255, 255});
  put(31, 31, {255, 255, 255, 255});
  EXPECT_EQ(mostFrequent(), kBlack);
  EXPECT_EQ(primaryFor(kBlack), kBlack);
  put(15, 15, {250, 250, 250, 1});
  EXPECT_EQ(mostFrequent(), color(250, 250, 250));
  EXPECT_EQ(primaryFor(kBlack), color(250, 250, 250));
}

TEST_F(PickerChoice, ComponentsAreTruncated) {
  readFrame();
  put(0, 0, {137, 8, 8, 5});  // 16257 from a red of 10, 16004 from one of 11
  EXPECT_EQ(primaryFor({10.9 / 255, 0, 0}), color(137, 8, 8));
  EXPECT_EQ(primaryFor({11.0 / 255, 0, 0}), kBlack);
  const float limit = std::sqrt(16256.5F) / 255;
  EXPECT_EQ(filtered(platformColor({10.9 / 255, 0, 0}), limit), color(137, 8, 8));
  EXPECT_EQ(filtered(platformColor({11.0 / 255, 0, 0}), limit), kBlack);
}

TEST_F(PickerChoice, EveryByteSurvivesTheWayThroughAColor) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    const objc::AutoreleasePool pool;
    readFrame();
    const auto value = static_cast<std::uint8_t>(byte);
    put(0, 0, {value, value, value, 9});
    EXPECT_EQ(filtered(platformColor(color(byte, byte, byte)), 0), kBlack) << byte;
  }
}

TEST_F(PickerChoice, ANilColorCountsAsBlack) {
  readFrame();
  put(0, 0, {120, 40, 16, 200});
  put(1, 0, {127, 8, 8, 5});
  EXPECT_EQ(componentsOf(primary(schemeFor(nullptr))), color(127, 8, 8));
  EXPECT_EQ(componentsOf(secondary(schemeFor(nullptr))), kGreyWhite);
  EXPECT_EQ(filtered(nullptr, 0.5F), color(127, 8, 8));
}

TEST_F(PickerChoice, AColorThatIsNoNumberCountsAsBlack) {
  readFrame();
  put(0, 0, {127, 8, 8, 5});
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(componentsOf(primary(schemeFor(platformColor({none, 0, 0})))), color(127, 8, 8));
  EXPECT_EQ(filtered(platformColor({none, none, none}), 0.5F), color(127, 8, 8));
}

TEST_F(PickerChoice, ANilSchemeIsLeftAlone) {
  readFrame();
  send<void>(picker, "findTextColorsTaskForColorScheme:"_sel, static_cast<NSObject*>(nullptr));
}

TEST_F(PickerChoice, ToleranceIsAShareOfTheRange) {
  readFrame();
  put(0, 0, {0, 0, 1, 9});
  put(1, 0, {120, 40, 16, 8});  // 16256 from black
  put(2, 0, {127, 8, 8, 7});    // 16257
  put(3, 0, {255, 0, 0, 6});    // 65025
  put(4, 0, {255, 0, 1, 5});    // 65026
  UIColor* black = platformColor(kBlack);
  EXPECT_EQ(filtered(black, 0), color(0, 0, 1));
  EXPECT_EQ(filtered(black, -0.0F), color(0, 0, 1));
  EXPECT_EQ(filtered(black, 1 / 256.0F), color(0, 0, 1));
  EXPECT_EQ(filtered(black, 1.5F / 255), color(120, 40, 16));
  EXPECT_EQ(filtered(black, 0.5F), color(127, 8, 8));
  EXPECT_EQ(filtered(black, 1), color(255, 0, 1));
  EXPECT_EQ(filtered(black, below(1)), color(255, 0, 0));
}

TEST_F(PickerChoice, AToleranceBeyondTheRange) {
  readFrame();
  put(0, 0, {255, 255, 254, 9});
  put(1, 0, {255, 255, 255, 1});  // 195075 from black: the square root is 441.67
  UIColor* black = platformColor(kBlack);
  EXPECT_EQ(filtered(black, 441.5F / 255), kWhite);
  EXPECT_EQ(filtered(black, 441.7F / 255), kBlack);
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (float tolerance : {2.0F, 1e3F, 1e30F, std::numeric_limits<float>::max(), kInfinity,
                          -kInfinity, std::numeric_limits<float>::quiet_NaN()}) {
    EXPECT_EQ(filtered(black, tolerance), kBlack) << tolerance;
  }
  EXPECT_EQ(filtered(black, -441.5F / 255), kWhite);
}

TEST_F(PickerChoice, AgreesWithThePlainComputationOnNoise) {
  const pictures::Picture noise = pictures::noise().front();
  readFrame();
  for (std::size_t i = 0; i < chosenFrame.size(); ++i)
    __builtin_memcpy(&chosenFrame[i], &noise.rgba[i * 4 % noise.rgba.size()], 3);
  for (std::size_t i = 0; i < chosenFrame.size(); ++i)
    chosenFrame[i].alpha = static_cast<std::uint8_t>(i * 97 % 256);
  for (unsigned step = 0; step < 20; ++step) {
    const Color from = reference::colorOf(chosenFrame[step * 31]);
    const float tolerance = static_cast<float>(step) / 20;
    const auto limit = static_cast<unsigned>(tolerance * 255 * (tolerance * 255));
    EXPECT_EQ(filtered(platformColor(from), tolerance),
              reference::farthestFrequent(chosenFrame, 32, 32, from, limit))
        << step;
  }
}

TEST_F(PickerChoice, OddFrames) {
  readFrame(3, 3);
  for (Bytes& pixel : chosenFrame) pixel = {9, 9, 9, 200};
  chosenFrame[0] = {0, 200, 0, 1};
  EXPECT_EQ(mostFrequent(3, 3), color(0, 200, 0));
  EXPECT_EQ(filtered(nullptr, 0, 3, 3), color(0, 200, 0));
  readFrame(5, 2);
  chosenFrame[1] = {0, 0, 200, 9};
  chosenFrame[2] = {200, 0, 0, 10};
  EXPECT_EQ(mostFrequent(5, 2), color(0, 0, 200));
  EXPECT_EQ(filtered(nullptr, 0, 5, 2), color(0, 0, 200));
  readFrame(2, 5);
  chosenFrame[2] = {0, 200, 200, 9};
  chosenFrame[4] = {200, 0, 0, 10};
  EXPECT_EQ(mostFrequent(2, 5), color(0, 200, 200));
  EXPECT_EQ(filtered(nullptr, 0, 2, 5), color(0, 200, 200));
}

TEST_F(PickerChoice, FramesWithoutAQuarterAreBlack) {
  using Size = std::pair<NSUInteger, NSUInteger>;
  for (const auto& [width, height] : {Size{1, 1}, Size{1, 32}, Size{32, 1}}) {
    readFrame(static_cast<unsigned>(width), static_cast<unsigned>(height));
    for (Bytes& pixel : chosenFrame) pixel = {255, 255, 255, 255};
    EXPECT_EQ(mostFrequent(width, height), kBlack);
    EXPECT_EQ(filtered(nullptr, 0, width, height), kBlack);
  }
}

TEST_F(PickerChoice, FramesThatCannotBeReadAreBlack) {
  using Size = std::pair<NSUInteger, NSUInteger>;
  constexpr NSUInteger kMost = std::numeric_limits<NSUInteger>::max();
  constexpr NSUInteger kLongest = 0x7fffffff;
  for (const auto& [width, height] :
       {Size{0, 0}, Size{0, 32}, Size{32, 0}, Size{kMost, kMost}, Size{kMost, 2}, Size{2, kMost},
        Size{kMost / 2 + 1, 2}, Size{kLongest + 1, 2}, Size{2, kLongest + 1},
        Size{kLongest, kLongest}, Size{NSUInteger{1} << 32, NSUInteger{1} << 32}}) {
    EXPECT_EQ(mostFrequent(width, height), kBlack) << width << " x " << height;
    EXPECT_EQ(filtered(nullptr, 0, width, height), kBlack) << width << " x " << height;
  }
}

TEST_F(PickerChoice, ContrastTakes125OfBrightness) {
  EXPECT_FALSE(contrastsWithBlack(color(255, 33, 255)));  // 124.7
  EXPECT_TRUE(contrastsWithBlack(color(255, 34, 255)));   // 125.3
  // The very limit is enough. Its components are single-precision numbers.
  float green = 33.0F / 255;
  while (reference::yOf({1, green, 1}) * 255 < 125) green = above(green);
  ASSERT_EQ(reference::yOf({1, green, 1}) * 255, 125.0F);
  EXPECT_TRUE(contrastsWithBlack({1, green, 1}));
  EXPECT_FALSE(contrastsWithBlack({1, below(green), 1}));
}

TEST_F(PickerChoice, ContrastTakesMoreThan500OfColor) {
  EXPECT_FALSE(contrastsWithBlack(color(255, 245, 0)));
  EXPECT_TRUE(contrastsWithBlack(color(255, 246, 0)));
  float green = 244.9F / 255;
  while ((1 + green) * 255 < 500) green = above(green);
  ASSERT_EQ((1 + green) * 255, 500.0F);
  EXPECT_FALSE(contrastsWithBlack({1, green, 0}));
  while ((1 + green) * 255 <= 500) green = above(green);
  EXPECT_TRUE(contrastsWithBlack({1, green, 0}));
}

TEST_F(PickerChoice, ContrastIsTheSameBothWays) {
  UIColor* dark = platformColor(color(10, 20, 30));
  UIColor* light = platformColor(color(240, 230, 220));
  EXPECT_TRUE(contrasts(dark, light));
  EXPECT_TRUE(contrasts(light, dark));
  EXPECT_FALSE(contrasts(dark, dark));
}

TEST_F(PickerChoice, AGreyAndNilContrastAsBlack) {
  UIColor* white = platformColor(kWhite);
  UIColor* black = platformColor(kBlack);
  EXPECT_TRUE(contrasts(white, UIColor::whiteColor()));
  EXPECT_TRUE(contrasts(white, UIColor::blackColor()));
  EXPECT_TRUE(contrasts(UIColor::whiteColor(), white));
  EXPECT_TRUE(contrasts(nullptr, white));
  EXPECT_TRUE(contrasts(white, nullptr));
  EXPECT_FALSE(contrasts(UIColor::whiteColor(), UIColor::blackColor()));
  EXPECT_FALSE(contrasts(black, UIColor::whiteColor()));
  EXPECT_FALSE(contrasts(UIColor::whiteColor(), black));
  EXPECT_FALSE(contrasts(nullptr, nullptr));
}

TEST_F(PickerChoice, ContrastAgreesWithThePlainComputation) {
  const Picture colors = pictures::noise().front();
  ASSERT_GE(colors.rgba.size(), 4000U);
  int sufficient = 0;
  for (std::size_t i = 0; i < 500; ++i) {
    const objc::AutoreleasePool pool;
    const std::uint8_t* p = &colors.rgba[i * 8];
    const Color a = color(p[0], p[1], p[2]);
    const Color b = color(p[4], p[5], p[6]);
    const bool expected = reference::contrasts(a, b);
    EXPECT_EQ(contrasts(platformColor(a), platformColor(b)), expected) << i;
    sufficient += expected;
  }
  EXPECT_GE(sufficient, 5);
}

TEST_F(PickerChoice, TheFallbackIsWhiteOnDarkAndBlackOnLight) {
  readFrame();
  EXPECT_EQ(secondaryFor(color(0, 217, 0)), kGreyWhite);  // Y 0.4995
  EXPECT_EQ(secondaryFor(color(0, 218, 0)), kGreyBlack);  // Y 0.5018
  float green = 217.0F / 255;
  while (reference::yOf({0, green, 0}) < 0.5F) green = above(green);
  ASSERT_EQ(reference::yOf({0, green, 0}), 0.5F);
  EXPECT_EQ(secondaryFor({0, green, 0}), kGreyBlack);
  EXPECT_EQ(secondaryFor({0, below(green), 0}), kGreyWhite);
}

TEST_F(PickerChoice, AGreyBackgroundIsTakenForDark) {
  readFrame();
  EXPECT_EQ(componentsOf(secondary(schemeFor(UIColor::whiteColor()))), kGreyWhite);
  EXPECT_EQ(secondaryFor(kWhite), kBlack);
}

TEST_F(PickerChoice, KnownSchemes) {
  const Picture black{"black", 32, 32, std::vector<std::uint8_t>(4096, 0)};
  NSObject* scheme = schemeOf(platformImage(black));
  EXPECT_EQ(componentsOf(background(scheme)), kBlack);
  EXPECT_EQ(componentsOf(primary(scheme)), kBlack);
  EXPECT_EQ(componentsOf(secondary(scheme)), kGreyWhite);
  Picture white{"white", 32, 32, std::vector<std::uint8_t>(4096, 255)};
  scheme = schemeOf(platformImage(white));
  EXPECT_EQ(componentsOf(background(scheme)), kWhite);
  EXPECT_EQ(componentsOf(primary(scheme)), kBlack);
  EXPECT_EQ(componentsOf(secondary(scheme)), kBlack);
}

TEST_F(PickerChoice, ANewSchemeHasNoColors) {
  auto* scheme = make<NSObject>("CQColorScheme");
  EXPECT_EQ(background(scheme), nullptr);
  EXPECT_EQ(primary(scheme), nullptr);
  EXPECT_EQ(secondary(scheme), nullptr);
}

TEST_F(PickerChoice, DumpsOfFramesThatCannotBeRead) {
  constexpr NSUInteger kMost = std::numeric_limits<NSUInteger>::max();
  using Size = std::pair<NSUInteger, NSUInteger>;
  for (const auto& [width, height] : {Size{0, 0}, Size{kMost, kMost}, Size{kMost / 4 + 1, 1}}) {
    UIColor* biggest = nullptr;
    auto* image = send<UIImage*>(picker, "dumpImageWithWidth:height:biggestAlphaColorReturn:"_sel,
                                 width, height, &biggest);
    CGDataProviderRelease(std::exchange(lastProvider, nullptr));
    EXPECT_EQ(image, nullptr) << width << " x " << height;
    EXPECT_EQ(componentsOf(biggest), kBlack) << width << " x " << height;
  }
}

TEST_F(PickerChoice, MethodsHaveTheirEncodings) {
  constexpr std::array<std::array<const char*, 2>, 6> kMethods{
      {{"findTextColorsTaskForColorScheme:", "v@:@"},
       {"isSufficienteContrastBetweenBackground:andForground:", "B@:@@"},
       {"colorFromImageWithWidth:height:filteringColor:tolerance:", "@@:QQ@f"},
       {"colorWithBiggerCountFromImageWidth:height:", "@@:QQ"},
       {"dumpImageWithWidth:height:biggestAlphaColorReturn:", "@@:QQ^@"},
       {"scaleImage:width:height:", "@@:@dd"}}};
  for (const auto& [name, types] : kMethods) {
    objc_method* method =
        class_getInstanceMethod(objc_getClass("CQColorPicker"), sel_registerName(name));
    ASSERT_NE(method, nullptr) << name;
    EXPECT_STREQ(method_getTypeEncoding(method), types) << name;
  }
}

}  // namespace
