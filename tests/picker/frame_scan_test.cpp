// The most frequent colour of a frame of any size, with or without a distance from another colour.
#include <limits>
#include <utility>

#include "objc/autorelease_pool.h"
#include "picker/chosen_frame.h"

/// The provider of the last dump, which the library does not release.
static CGDataProviderRef lastProvider = nullptr;

extern "C" CGDataProviderRef CGDataProviderCreateWithData(
    void* info, const void* data, std::size_t size, CGDataProviderReleaseDataCallback release) {
  static auto* real = reinterpret_cast<decltype(&CGDataProviderCreateWithData)>(
      dlsym(RTLD_NEXT, "CGDataProviderCreateWithData"));
  return lastProvider = real(info, data, size, release);
}

// The tests below ask for frames that no memory can hold.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

using namespace test;
using reference::Color;
using Bytes = reference::Pixel;

class PickerFrameScan : public ChosenFrame {};

TEST_F(PickerFrameScan, TheFirstOfEquallyFrequentColorsWins) {
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

TEST_F(PickerFrameScan, CountsEndAt255) {
  readFrame();
  put(3, 0, {255, 255, 0, 255});
  put(4, 0, {0, 255, 255, 255});
  EXPECT_EQ(mostFrequent(), color(255, 255, 0));
  EXPECT_EQ(primaryFor(kBlack), color(255, 255, 0));
}

TEST_F(PickerFrameScan, WhatNoSampleResemblesIsNotChosen) {
  readFrame();
  put(0, 0, {255, 255, 255, 0});
  EXPECT_EQ(mostFrequent(), kBlack);
  EXPECT_EQ(primaryFor(kBlack), kBlack);
  EXPECT_EQ(filtered(platformColor(kBlack), 0), kBlack);
}

TEST_F(PickerFrameScan, OnlyTheQuarterCounts) {
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

TEST_F(PickerFrameScan, EveryByteSurvivesTheWayThroughAColor) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    const objc::AutoreleasePool pool;
    readFrame();
    const auto value = static_cast<std::uint8_t>(byte);
    put(0, 0, {value, value, value, 9});
    EXPECT_EQ(filtered(platformColor(color(byte, byte, byte)), 0), kBlack) << byte;
  }
}

TEST_F(PickerFrameScan, ToleranceIsAShareOfTheRange) {
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

TEST_F(PickerFrameScan, AToleranceBeyondTheRange) {
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

TEST_F(PickerFrameScan, AgreesWithThePlainComputationOnNoise) {
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

TEST_F(PickerFrameScan, OddFrames) {
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

TEST_F(PickerFrameScan, FramesWithoutAQuarterAreBlack) {
  using Size = std::pair<NSUInteger, NSUInteger>;
  for (const auto& [width, height] : {Size{1, 1}, Size{1, 32}, Size{32, 1}}) {
    readFrame(static_cast<unsigned>(width), static_cast<unsigned>(height));
    for (Bytes& pixel : chosenFrame) pixel = {255, 255, 255, 255};
    EXPECT_EQ(mostFrequent(width, height), kBlack);
    EXPECT_EQ(filtered(nullptr, 0, width, height), kBlack);
  }
}

TEST_F(PickerFrameScan, FramesThatCannotBeReadAreBlack) {
  using Size = std::pair<NSUInteger, NSUInteger>;
  constexpr NSUInteger kMost = std::numeric_limits<NSUInteger>::max();
  constexpr NSUInteger kLongest = 0x7fffffff;
  // Their product overflows to zero.
  constexpr NSUInteger kRoot = NSUInteger{1} << sizeof(NSUInteger) * 4;
  for (const auto& [width, height] :
       {Size{0, 0}, Size{0, 32}, Size{32, 0}, Size{kMost, kMost}, Size{kMost, 2}, Size{2, kMost},
        Size{kMost / 2 + 1, 2}, Size{kLongest + 1, 2}, Size{2, kLongest + 1},
        Size{kLongest, kLongest}, Size{kRoot, kRoot}}) {
    EXPECT_EQ(mostFrequent(width, height), kBlack) << width << " x " << height;
    EXPECT_EQ(filtered(nullptr, 0, width, height), kBlack) << width << " x " << height;
  }
}

TEST_F(PickerFrameScan, DumpsOfFramesThatCannotBeRead) {
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

}  // namespace
