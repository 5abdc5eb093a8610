// Images from files that are too large, or too long, to be kept whole.
#include <sys/resource.h>

#include <thread>

#include "CoreGraphics/shrink.h"
#include "ImageIO/decode.h"
#include "objc/autorelease_pool.h"
#include "support/bitmaps.h"
#include "support/hosted.h"
#include "support/image_files.h"

namespace {

using host::imageio::decode;
using host::imageio::Picture;
using test::Bytes;
using test::pngFile;
using test::PngLook;

/// More than 16 Mi pixels.
constexpr unsigned kSide = 4200;

/// Two colours mixed at random, so that the file is small.
std::string twoColors(unsigned width, unsigned height, bool hasAlpha = false) {
  PngLook look = {.colorType = PNG_COLOR_TYPE_PALETTE, .bitDepth = 1};
  look.palette = {{250, 3, 90}, {10, 200, 30}};
  if (hasAlpha) look.paletteAlpha = {255, 77};
  return pngFile(width, height, look, test::noise((width + 7) / 8 * std::size_t{height}));
}

std::string jpeg(unsigned width, unsigned height) {
  return test::jpegFile(width, height, {.quality = 60},
                        test::noise(std::size_t{width} * height * 3));
}

class LargeImage : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  static Strong<UIImage> image(const std::string& file) {
    const objc::AutoreleasePool pool;
    return Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData,
                                       NSData::dataWithBytes(file.data(), file.size())));
  }
  static CGImageRef bitmap(const Strong<UIImage>& image) {
    return send(image.get(), UIImage::CGImage);
  }
  static std::string problem(const Strong<UIImage>& image) {
    auto* text = send<NSString*>(image.get(), "standIn_problem"_sel);
    return text == nullptr ? "" : send<const char*>(text, "UTF8String"_sel);
  }
};

/// Computed in one step from the decoded pixels.
Bytes shrunk(const Picture& picture, std::size_t width, std::size_t height) {
  Bytes pixels = picture.rgba;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const unsigned alpha = pixels[i | 3];
    if (i % 4 != 3) pixels[i] = static_cast<std::uint8_t>((pixels[i] * alpha + 127) / 255);
  }
  Bytes small(width * height * 4);
  host::shrink({reinterpret_cast<std::uint32_t*>(pixels.data()), picture.width, picture.width,
                picture.height},
               {reinterpret_cast<std::uint32_t*>(small.data()), width, width, height});
  return small;
}

TEST_F(LargeImage, IsDrawnSmallerToTheLastBit) {
  for (const std::string& file :
       {twoColors(kSide, kSide), twoColors(kSide, kSide, true), jpeg(4200, 4001)}) {
    const auto made = image(file);
    ASSERT_NE(made, nullptr);
    const Picture picture = *decode(file);
    for (const auto& [width, height] : {std::pair{32, 32}, {1, 1}, {32, 32}, {7, 5}, {300, 301}}) {
      EXPECT_EQ(test::drawn(bitmap(made), width, height), shrunk(picture, width, height))
          << width << " x " << height;
    }
    EXPECT_EQ(problem(made), "");
  }
}

TEST_F(LargeImage, HasItsOwnPixelsForWhoAsks) {
  const std::string file = twoColors(kSide, kSide, true);
  const auto made = image(file);
  const auto data =
      Strong<NSData>::adopt(CGDataProviderCopyData(CGImageGetDataProvider(bitmap(made))));
  const Bytes rgba = decode(file)->rgba;
  ASSERT_EQ(send(data.get(), NSData::length), rgba.size());
  EXPECT_EQ(std::memcmp(send(data.get(), NSData::bytes), rgba.data(), rgba.size()), 0);
  EXPECT_EQ(test::drawn(bitmap(made), 32, 32), shrunk(*decode(file), 32, 32));
}

TEST_F(LargeImage, IsDrawnAsItIsWhereNothingIsShrunk) {
  const std::string file = twoColors(kSide, kSide);
  const auto made = image(file);
  // Draws its lower left corner.
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 8, 8));
  CGContextDrawImage(context, {{0, 0}, {kSide, kSide}}, bitmap(made));
  const Picture picture = *decode(file);
  for (std::size_t y = 0; y < 8; ++y) {
    const std::uint8_t* row = &picture.rgba[(kSide - 8 + y) * kSide * 4];
    EXPECT_EQ(Bytes(&bytes[y * 32], &bytes[y * 32] + 32), Bytes(row, row + 32)) << y;
  }
}

TEST_F(LargeImage, TakesLittleMemory) {
  constexpr unsigned kLongSide = 8000;
  auto mostKilobytes = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
  };
  const std::string file = twoColors(kLongSide, kLongSide);
  const auto before = mostKilobytes();
  const auto made = image(file);
  EXPECT_EQ(test::drawn(bitmap(made), 32, 32).size(), 32U * 32 * 4);
  // All pixels would take 250,000.
  EXPECT_LT(mostKilobytes() - before, 60'000);
}

TEST_F(LargeImage, ACutOneHasTheRowsThatAreThere) {
  const std::string file = twoColors(kSide, kSide);
  const auto made = image(file.substr(0, file.size() / 2));
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(problem(made), "the image is truncated or damaged: only a part of it is there");
  const Bytes whole = shrunk(*decode(file), 10, 10);
  const Bytes part = test::drawn(bitmap(made), 10, 10);
  EXPECT_TRUE(std::equal(part.begin(), part.begin() + 4 * 40, whole.begin()));
  for (std::size_t i = 6 * 40; i < part.size(); ++i) EXPECT_EQ(part[i], i % 4 == 3 ? 255 : 0) << i;
  // Not a single row is left.
  EXPECT_EQ(image(file.substr(0, 120)), nullptr);
}

TEST_F(LargeImage, MayBeDrawnByManyAtOnce) {
  const std::string file = twoColors(kSide, kSide);
  const auto made = image(file);
  const Bytes expected = shrunk(*decode(file), 9, 9);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([&] {
      EXPECT_EQ(test::drawn(bitmap(made), 9, 9), expected);
      EXPECT_EQ(test::drawn(bitmap(made), 1, 1), shrunk(*decode(file), 1, 1));
    });
  for (auto& thread : threads) thread.join();
}

// --- sides ---------------------------------------------------------------------------------------

TEST_F(LargeImage, SidesAreAsLongAsTheFormatsHaveThem) {
  for (const unsigned side : {32'767U, 32'768U, 40'000U, 65'535U}) {
    for (const bool isTall : {false, true}) {
      const std::string file = twoColors(isTall ? 2 : side, isTall ? side : 2);
      const auto made = image(file);
      ASSERT_NE(made, nullptr) << side;
      const auto size = send(made.get(), UIImage::size);
      EXPECT_EQ(isTall ? size.height : size.width, side);
      EXPECT_EQ(isTall ? size.width : size.height, 2);
      EXPECT_EQ(test::drawn(bitmap(made), 2, 2), shrunk(*decode(file), 2, 2)) << side;
    }
  }
  EXPECT_EQ(image(twoColors(65'536, 1)), nullptr);
  EXPECT_EQ(image(twoColors(1, 65'536)), nullptr);
}

TEST_F(LargeImage, WhatIsLongerThanABitmapIsDrawnWhole) {
  // Two halves side by side: the bitmap shows where they meet.
  constexpr unsigned kLong = 65'535;
  PngLook look = {.colorType = PNG_COLOR_TYPE_GRAY};
  Bytes row(kLong, 0);
  std::fill(row.begin() + 32'000, row.end(), 255);
  const auto made = image(pngFile(kLong, 1, look, row));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 32'100, 1));
  CGContextDrawImage(context, {{0, 0}, {kLong, 1}}, bitmap(made));
  EXPECT_EQ(bytes[31'990 * 4], 0);
  EXPECT_EQ(bytes[32'010 * 4], 255);
}

TEST_F(LargeImage, ImagesOfBytesAreAsLong) {
  for (const std::size_t side : {32'767UL, 32'768UL, 65'535UL}) {
    const test::Bitmap made(test::createImage(Bytes(side * 4, 200), {.width = side}));
    ASSERT_NE(made, nullptr) << side;
    EXPECT_EQ(test::drawn(made, 3, 1), Bytes(12, 200)) << side;
  }
  EXPECT_EQ(test::createImage(Bytes(65'536 * 4), {.width = 65'536}), nullptr);
  EXPECT_EQ(test::createImage(Bytes(65'536 * 4), {.height = 65'536}), nullptr);
}

TEST_F(LargeImage, BitmapsAreShorterAndTheLogSaysSo) {
  Bytes bytes;
  const test::Context longest(test::createContext(bytes, 32'767, 1));
  EXPECT_NE(longest, nullptr);
  const test::Context longer(test::createContext(bytes, 32'768, 1));
  EXPECT_EQ(longer, nullptr);
  EXPECT_TRUE(host::logLines().back().line.ends_with("a side has 32767 pixels at most"))
      << host::logLines().back().line;
}

// --- greys ---------------------------------------------------------------------------------------

TEST_F(LargeImage, GreysStayGreys) {
  const auto made = image(pngFile(3, 1, {.colorType = PNG_COLOR_TYPE_GRAY}, {0, 100, 255}));
  EXPECT_EQ(CGImageGetBitsPerPixel(bitmap(made)), 8U);
  EXPECT_EQ(CGImageGetAlphaInfo(bitmap(made)), kCGImageAlphaNone);
  EXPECT_EQ(CGColorSpaceGetModel(CGImageGetColorSpace(bitmap(made))),
            CGColorSpaceModel::monochrome);
  EXPECT_EQ(test::drawn(bitmap(made)),
            (Bytes{0, 0, 0, 255, 100, 100, 100, 255, 255, 255, 255, 255}));
}

TEST_F(LargeImage, GreysCoverAsAMask) {
  Bytes lines(std::size_t{5000} * 4000, 0);
  std::fill(lines.begin() + 5000 * 1000, lines.begin() + 5000 * 2000, 255);
  std::fill(lines.begin() + 5000 * 2000, lines.begin() + 5000 * 3000, 128);
  for (const auto& made :
       {image(pngFile(1, 4, {.colorType = PNG_COLOR_TYPE_GRAY}, {0, 255, 128, 0})),
        image(pngFile(5000, 4000, {.colorType = PNG_COLOR_TYPE_GRAY}, lines))}) {
    Bytes bytes;
    const test::Context context(test::createContext(bytes, 1, 4));
    CGContextClipToMask(context, {{0, 0}, {1, 4}}, bitmap(made));
    CGContextFillRect(context, {{0, 0}, {1, 4}});
    EXPECT_EQ((Bytes{bytes[3], bytes[7], bytes[11], bytes[15]}), (Bytes{0, 255, 128, 0}));
  }
}

}  // namespace
