// Images, bitmap contexts, colours and their parameters, byte by byte.
#include "CoreGraphics/CoreGraphics.h"

#include "objc/autorelease_pool.h"
#include "objc/owned.h"
#include "support/hosted.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Space = objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease>;
using Context = objc::Owned<CGContextRef, &CGContextRelease>;
using ImageRef = objc::Owned<CGImageRef, &CGImageRelease>;
using Provider = objc::Owned<CGDataProviderRef, &CGDataProviderRelease>;

struct Layout {
  std::size_t bitsPerComponent, bitsPerPixel;
  bool isGrey;
  CGBitmapInfo info;
};

class Drawing : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  static CGImageRef imageOf(const Bytes& bytes, std::size_t width, std::size_t height,
                            const Layout& layout, std::size_t bytesPerRow = 0,
                            const CGFloat* decode = nullptr) {
    const Space space(layout.isGrey ? CGColorSpaceCreateDeviceGray()
                                    : CGColorSpaceCreateDeviceRGB());
    const Provider provider(
        CGDataProviderCreateWithCFData(NSData::dataWithBytes(bytes.data(), bytes.size())));
    if (bytesPerRow == 0) bytesPerRow = width * layout.bitsPerPixel / 8;
    return CGImageCreate(width, height, layout.bitsPerComponent, layout.bitsPerPixel, bytesPerRow,
                         space, layout.info, provider, decode, false,
                         CGColorRenderingIntent::standard);
  }
  /// The image as red, green, blue, alpha, premultiplied.
  static Bytes rgba(CGImageRef image) {
    const std::size_t width = CGImageGetWidth(image);
    const std::size_t height = CGImageGetHeight(image);
    Bytes bytes(width * height * 4);
    const Space space(CGColorSpaceCreateDeviceRGB());
    const Context context(CGBitmapContextCreate(bytes.data(), width, height, 8, width * 4, space,
                                                kCGImageAlphaPremultipliedLast));
    CGContextDrawImage(
        context, {{0, 0}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}}, image);
    return bytes;
  }
};

constexpr CGBitmapInfo kLittle = kCGBitmapByteOrder32Little;

TEST_F(Drawing, ReadsEveryLayout) {
  const struct {
    Layout layout;
    Bytes bytes;
    Bytes expected;
  } kCases[] = {
      {{8, 32, false, kCGImageAlphaPremultipliedLast}, {10, 20, 30, 100}, {10, 20, 30, 100}},
      {{8, 32, false, kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big},
       {10, 20, 30, 100},
       {10, 20, 30, 100}},
      {{8, 32, false, kCGImageAlphaPremultipliedLast | kLittle},
       {100, 30, 20, 10},
       {10, 20, 30, 100}},
      {{8, 32, false, kCGImageAlphaPremultipliedFirst}, {100, 10, 20, 30}, {10, 20, 30, 100}},
      {{8, 32, false, kCGImageAlphaPremultipliedFirst | kLittle},
       {30, 20, 10, 100},
       {10, 20, 30, 100}},
      {{8, 32, false, kCGImageAlphaLast}, {255, 128, 0, 128}, {128, 64, 0, 128}},
      {{8, 32, false, kCGImageAlphaFirst}, {128, 255, 128, 0}, {128, 64, 0, 128}},
      {{8, 32, false, kCGImageAlphaNoneSkipLast}, {10, 20, 30, 99}, {10, 20, 30, 255}},
      {{8, 32, false, kCGImageAlphaNoneSkipFirst}, {99, 10, 20, 30}, {10, 20, 30, 255}},
      {{8, 32, false, kCGImageAlphaNone}, {10, 20, 30, 99}, {10, 20, 30, 255}},
      {{8, 24, false, kCGImageAlphaNone}, {10, 20, 30}, {10, 20, 30, 255}},
      {{8, 8, true, kCGImageAlphaNone}, {77}, {77, 77, 77, 255}},
      {{8, 16, true, kCGImageAlphaLast}, {255, 51}, {51, 51, 51, 51}},
      {{16, 48, false, kCGImageAlphaNone}, {255, 255, 128, 0, 0, 0}, {255, 128, 0, 255}},
      {{16, 48, false, kCGImageAlphaNone | kCGBitmapByteOrder16Little},
       {255, 255, 0, 128, 0, 0},
       {255, 128, 0, 255}},
  };
  for (const auto& c : kCases) {
    const ImageRef image(imageOf(c.bytes, 1, 1, c.layout));
    ASSERT_NE(static_cast<CGImageRef>(image), nullptr) << c.layout.info;
    EXPECT_EQ(rgba(image), c.expected) << c.layout.info << ' ' << c.layout.bitsPerPixel;
    EXPECT_EQ(CGImageGetBitmapInfo(image), c.layout.info);
    EXPECT_EQ(CGImageGetBitsPerPixel(image), c.layout.bitsPerPixel);
  }
}

TEST_F(Drawing, RefusesWhatIsNoLayout) {
  const Layout kGood{8, 32, false, kCGImageAlphaPremultipliedLast};
  const Bytes pixel(4);
  const Layout kBad[] = {{8, 16, false, 0}, {5, 16, false, 0},  {8, 40, false, 0},
                         {8, 24, false, 1}, {8, 32, false, 31}, {32, 128, false, 1}};
  for (const Layout& layout : kBad)
    EXPECT_EQ(imageOf(Bytes(64), 1, 1, layout, 64), nullptr) << layout.bitsPerPixel;
  EXPECT_EQ(imageOf(pixel, 0, 1, kGood), nullptr);
  EXPECT_EQ(imageOf(pixel, 1, 0, kGood), nullptr);
  EXPECT_EQ(imageOf(pixel, 2, 1, kGood), nullptr) << "too few bytes";
  EXPECT_EQ(imageOf(pixel, 2, 1, kGood, 4), nullptr) << "rows that overlap";
  EXPECT_EQ(imageOf(pixel, 1, 3, kGood, SIZE_MAX / 2), nullptr) << "rows beyond all memory";
  EXPECT_EQ(imageOf(pixel, SIZE_MAX / 2, SIZE_MAX / 2, kGood), nullptr);
  EXPECT_EQ(CGImageCreate(1, 1, 8, 32, 4, nullptr, 1, nullptr, nullptr, false,
                          CGColorRenderingIntent::standard),
            nullptr);
}

TEST_F(Drawing, PassesOverTheEndsOfRows) {
  const ImageRef image(imageOf({1, 99, 99, 2, 99, 99}, 1, 2, {8, 8, true, 0}, 3));
  EXPECT_EQ(rgba(image), (Bytes{1, 1, 1, 255, 2, 2, 2, 255}));
}

TEST_F(Drawing, DecodesThroughRanges) {
  const CGFloat kInverted[] = {1, 0, 1, 0, 1, 0};
  const ImageRef image(imageOf({0, 100, 255}, 1, 1, {8, 24, false, 0}, 3, kInverted));
  EXPECT_EQ(rgba(image), (Bytes{255, 155, 0, 255}));
}

TEST_F(Drawing, GivesItsBytesAsTheyWereGiven) {
  const Bytes bytes{1, 2, 3, 4};
  const ImageRef image(imageOf(bytes, 1, 1, {8, 32, false, kCGImageAlphaNone}));
  NSData* copy = CGDataProviderCopyData(CGImageGetDataProvider(image));
  EXPECT_EQ(Bytes(static_cast<const std::uint8_t*>(copy->bytes()),
                  static_cast<const std::uint8_t*>(copy->bytes()) + copy->length()),
            bytes);
  objc_release(copy);
}

TEST_F(Drawing, AProviderGivesItsDataBackOnceAtTheEnd) {
  static int given = 0;
  static const std::uint8_t kPixel[4] = {1, 2, 3, 255};
  auto count = [](void* info, const void* data, std::size_t size) {
    EXPECT_EQ(info, &given);
    EXPECT_EQ(data, kPixel);
    EXPECT_EQ(size, 4U);
    ++given;
  };
  const Space space(CGColorSpaceCreateDeviceRGB());
  {
    CGDataProviderRef provider = CGDataProviderCreateWithData(&given, kPixel, 4, count);
    const ImageRef image(CGImageCreate(1, 1, 8, 32, 4, space, 1, provider, nullptr, false,
                                       CGColorRenderingIntent::standard));
    CGDataProviderRelease(provider);
    EXPECT_EQ(rgba(image), (Bytes{1, 2, 3, 255}));
    EXPECT_EQ(given, 0);
  }
  EXPECT_EQ(given, 1);
}

TEST_F(Drawing, DrawsIntoEveryContextThatThePlatformHas) {
  const ImageRef image(imageOf({10, 20, 30, 255}, 1, 1, {8, 32, false, 1}));
  const struct {
    CGBitmapInfo info;
    Bytes expected;
  } kCases[] = {
      {kCGImageAlphaPremultipliedLast, {10, 20, 30, 255}},
      {kCGImageAlphaPremultipliedLast | kLittle, {255, 30, 20, 10}},
      {kCGImageAlphaPremultipliedFirst, {255, 10, 20, 30}},
      {kCGImageAlphaPremultipliedFirst | kLittle, {30, 20, 10, 255}},
      {kCGImageAlphaNoneSkipLast, {10, 20, 30, 7}},
      {kCGImageAlphaNoneSkipFirst | kLittle, {30, 20, 10, 7}},
  };
  const Space space(CGColorSpaceCreateDeviceRGB());
  for (const auto& c : kCases) {
    Bytes memory(4, 7);
    if ((c.info & 0x1f) <= 2) memory.assign(4, 0);
    const Context context(CGBitmapContextCreate(memory.data(), 1, 1, 8, 4, space, c.info));
    ASSERT_NE(static_cast<CGContextRef>(context), nullptr) << c.info;
    CGContextDrawImage(context, {{0, 0}, {1, 1}}, image);
    EXPECT_EQ(memory, c.expected) << c.info;
  }
  const Space grey(CGColorSpaceCreateDeviceGray());
  Bytes memory(1);
  const Context context(CGBitmapContextCreate(memory.data(), 1, 1, 8, 1, grey, 0));
  const ImageRef white(imageOf({255, 255, 255, 255}, 1, 1, {8, 32, false, 1}));
  CGContextDrawImage(context, {{0, 0}, {1, 1}}, white);
  EXPECT_EQ(memory, Bytes{255});
}

TEST_F(Drawing, RefusesOtherContextsWithALine) {
  const Space rgb(CGColorSpaceCreateDeviceRGB());
  const Space grey(CGColorSpaceCreateDeviceGray());
  Bytes memory(64);
  auto refused = [&](std::size_t width, std::size_t bits, std::size_t bytesPerRow,
                     CGColorSpaceRef space, CGBitmapInfo info) {
    return CGBitmapContextCreate(memory.data(), width, 1, bits, bytesPerRow, space, info) ==
           nullptr;
  };
  EXPECT_TRUE(refused(1, 8, 4, rgb, kCGImageAlphaLast));
  EXPECT_TRUE(refused(1, 8, 4, rgb, kCGImageAlphaNone));
  EXPECT_TRUE(refused(1, 8, 4, grey, kCGImageAlphaPremultipliedLast));
  EXPECT_TRUE(refused(1, 16, 8, rgb, kCGImageAlphaPremultipliedLast));
  EXPECT_TRUE(refused(2, 8, 7, rgb, kCGImageAlphaPremultipliedLast));
  EXPECT_TRUE(refused(0, 8, 4, rgb, kCGImageAlphaPremultipliedLast));
  EXPECT_TRUE(refused(1, 8, 4, nullptr, kCGImageAlphaPremultipliedLast));
  EXPECT_EQ(log().size(), 7U);
  EXPECT_EQ(
      log()[0],
      "3 CGBitmapContextCreate: unsupported parameter combination: 1 x 1, 8 bits a component, "
      "4 bytes a row, bitmap info 3");
}

TEST_F(Drawing, LaysOverWhatWasThereAndLeavesTheEndsOfRows) {
  Bytes memory{0, 0, 200, 255, 55, 56, 0, 0, 100, 255, 57, 58};
  const Space space(CGColorSpaceCreateDeviceRGB());
  const Context context(
      CGBitmapContextCreate(memory.data(), 1, 2, 8, 6, space, kCGImageAlphaPremultipliedLast));
  // Half covered red over the lower row.
  const ImageRef image(imageOf({128, 0, 0, 128}, 1, 1, {8, 32, false, 1}));
  CGContextDrawImage(context, {{0, 0}, {1, 1}}, image);
  EXPECT_EQ(memory, (Bytes{0, 0, 200, 255, 55, 56, 128, 0, 50, 255, 57, 58}));
}

TEST_F(Drawing, BeginsAtTheLowerLeftAndKeepsImagesUpright) {
  Bytes memory(2 * 2 * 4);
  const Space space(CGColorSpaceCreateDeviceRGB());
  const Context context(
      CGBitmapContextCreate(memory.data(), 2, 2, 8, 8, space, kCGImageAlphaPremultipliedLast));
  // One column: red above green.
  const ImageRef image(imageOf({255, 0, 0, 255, 0, 255, 0, 255}, 1, 2, {8, 32, false, 1}));
  CGContextDrawImage(context, {{1, 0}, {1, 2}}, image);
  EXPECT_EQ(memory, (Bytes{0, 0, 0, 0, 255, 0, 0, 255, 0, 0, 0, 0, 0, 255, 0, 255}));
}

TEST_F(Drawing, FillsAndRestoresItsState) {
  Bytes memory(2 * 4);
  const Space space(CGColorSpaceCreateDeviceRGB());
  const Context context(
      CGBitmapContextCreate(memory.data(), 2, 1, 8, 8, space, kCGImageAlphaPremultipliedLast));
  CGContextSaveGState(context);
  CGContextTranslateCTM(context, 1, 0);
  CGContextSetRGBFillColor(context, 1, 0, 0, 1);
  CGContextFillRect(context, {{0, 0}, {1, 1}});
  CGContextRestoreGState(context);
  CGContextFillRect(context, {{0, 0}, {1, 1}});  // black, to begin with
  EXPECT_EQ(memory, (Bytes{0, 0, 0, 255, 255, 0, 0, 255}));
  CGContextClearRect(context, {{1, 0}, {1, 1}});
  EXPECT_EQ(memory, (Bytes{0, 0, 0, 255, 0, 0, 0, 0}));
}

TEST_F(Drawing, CopiesWhatIsDrawn) {
  const Space space(CGColorSpaceCreateDeviceRGB());
  const Context context(
      CGBitmapContextCreate(nullptr, 1, 1, 8, 0, space, kCGImageAlphaPremultipliedLast));
  CGContextFillRect(context, {{0, 0}, {1, 1}});
  const ImageRef copy(CGBitmapContextCreateImage(context));
  CGContextClearRect(context, {{0, 0}, {1, 1}});
  EXPECT_EQ(rgba(copy), (Bytes{0, 0, 0, 255}));
}

TEST_F(Drawing, NilIsNothing) {
  CGContextDrawImage(nullptr, {{0, 0}, {1, 1}}, nullptr);
  CGContextFillRect(nullptr, {{0, 0}, {1, 1}});
  CGContextSaveGState(nullptr);
  CGContextRestoreGState(nullptr);
  CGImageRelease(nullptr);
  CGContextRelease(nullptr);
  CGColorSpaceRelease(nullptr);
  CGDataProviderRelease(nullptr);
  EXPECT_EQ(CGImageGetWidth(nullptr) + CGImageGetHeight(nullptr), 0U);
  EXPECT_EQ(CGImageGetColorSpace(nullptr), nullptr);
  EXPECT_EQ(CGBitmapContextCreateImage(nullptr), nullptr);
  EXPECT_EQ(CGColorGetNumberOfComponents(nullptr), 0U);
  EXPECT_EQ(CGColorGetComponents(nullptr), nullptr);
}

TEST_F(Drawing, ColorsHaveTheirComponents) {
  auto components = [](UIColor* color) {
    auto cgColor = send<CGColorRef>(color, "CGColor"_sel);
    const CGFloat* first = CGColorGetComponents(cgColor);
    return std::vector<CGFloat>(first, first + CGColorGetNumberOfComponents(cgColor));
  };
  EXPECT_EQ(components(UIColor::colorWithRed(0.25, 0.5, 0.75, 0.125)),
            (std::vector<CGFloat>{0.25, 0.5, 0.75, 0.125}));
  EXPECT_EQ(components(UIColor::whiteColor()), (std::vector<CGFloat>{1, 1}));
  EXPECT_EQ(components(UIColor::blackColor()), (std::vector<CGFloat>{0, 1}));
  UIColor* color = UIColor::colorWithRed(0.25, 0.5, 0.75, 1);
  auto* same = send<UIColor*>(objc_getClass("UIColor"), "colorWithCGColor:"_sel,
                              send<CGColorRef>(color, "CGColor"_sel));
  EXPECT_TRUE(color->isEqual(same));
}

}  // namespace
