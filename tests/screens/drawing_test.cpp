// The tools for drawing screens: colours, pictures, the blur, backdrops.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <fstream>

#include "ImageIO/decode.h"
#include "drawing/blur.h"
#include "drawing/picture.h"
#include "drawing/text.h"
#include "gallery/screens/backdrop.h"
#include "support/hosted.h"

using namespace varnix::screens;
using host::imageio::Picture;

namespace {

std::uint32_t pixelAt(const Surface& surface, int x, int y) {
  cairo_surface_flush(surface.get());
  const auto* rows = cairo_image_surface_get_data(surface.get());
  const auto* row =
      rows + static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface.get());
  return reinterpret_cast<const std::uint32_t*>(row)[x];
}

/// Red, green, blue.
int channel(const Surface& surface, int x, int y, int index) {
  return static_cast<int>(pixelAt(surface, x, y) >> (16 - 8 * index) & 0xff);
}

Surface filled(int width, int height, const Color& color) {
  Surface surface = makeSurface(width, height);
  cairo_t* cr = cairo_create(surface.get());
  cairo_set_source_rgb(cr, color.red, color.green, color.blue);
  cairo_paint(cr);
  cairo_destroy(cr);
  return surface;
}

TEST(ScreenColors, AreReadFromTheirText) {
  EXPECT_EQ(parseColor("#ff000080"), (Color{1, 0, 0, 128 / 255.0}));
  for (const char* text : {"", "#", "#ff0000", "ff000080f", "#ff00008", "#ff0000800", "#gg000080",
                           "# f000080", "#-1000080"})
    EXPECT_FALSE(parseColor(text)) << text;
}

TEST(ScreenColors, SaturationKeepsTheLuma) {
  const Color color = rgb(0x8a7a6a);
  const Color vivid = saturated(color, 1.8);
  EXPECT_NEAR(luma(vivid), luma(color), 1e-9);
  EXPECT_NEAR(vivid.red - vivid.blue, 1.8 * (color.red - color.blue), 1e-9);
  EXPECT_EQ(saturated(rgb(0x777777), 5), rgb(0x777777));
  EXPECT_EQ(saturated(rgb(0xff0000), 3).red, 1);
}

TEST(Blur, LeavesAFlatPictureAsItIs) {
  const Surface soft = blurred(filled(90, 70, rgb(0x3c78c8)), 12);
  for (int y : {0, heightOf(soft) / 2, heightOf(soft) - 1}) {
    for (int x : {0, widthOf(soft) / 2, widthOf(soft) - 1}) {
      EXPECT_NEAR(channel(soft, x, y, 0), 0x3c, 1);
      EXPECT_NEAR(channel(soft, x, y, 1), 0x78, 1);
      EXPECT_NEAR(channel(soft, x, y, 2), 0xc8, 1);
    }
  }
}

/// The edge between black and white becomes the integral of the bell curve.
TEST(Blur, IsAGaussianOfItsSigma) {
  constexpr int kSide = 240;
  for (const double sigma : {3.0, 5.0, 20.0}) {
    Surface edge = filled(kSide, 40, kBlack);
    cairo_t* cr = cairo_create(edge.get());
    cairo_rectangle(cr, kSide / 2.0, 0, kSide, 40);
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_fill(cr);
    cairo_destroy(cr);
    const Surface soft = blurred(edge, sigma);
    const double factor = static_cast<double>(kSide) / widthOf(soft);
    for (int x = 0; x < widthOf(soft); ++x) {
      const double distance = (x + 0.5) * factor - kSide / 2.0;
      const double expected = 127.5 * (1 + std::erf(distance / (sigma * std::sqrt(2.0))));
      EXPECT_NEAR(channel(soft, x, heightOf(soft) / 2, 0), expected, 4) << sigma << " at " << x;
    }
  }
}

TEST(Blur, AShapesShadowKeepsItsSizeAndItsWeight) {
  Surface shape = makeSurface(80, 80, CAIRO_FORMAT_A8);
  cairo_t* cr = cairo_create(shape.get());
  cairo_rectangle(cr, 30, 30, 20, 20);
  cairo_fill(cr);
  cairo_destroy(cr);
  auto sum = [](const Surface& s) {
    cairo_surface_flush(s.get());
    long total = 0;
    for (int y = 0; y < heightOf(s); ++y) {
      const auto* row = cairo_image_surface_get_data(s.get()) +
                        static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(s.get());
      for (int x = 0; x < widthOf(s); ++x) total += row[x];
    }
    return static_cast<double>(total);
  };
  const Surface soft = blurredShape(shape, 5);
  EXPECT_EQ(widthOf(soft), 80);
  EXPECT_NEAR(sum(soft) / sum(shape), 1, 0.03);
}

Answers tinted(bool uses, double alpha, double mask) {
  Answers answers;
  answers.values = {{"tint", std::string("#ff8000ff")},
                    {"tint alpha", alpha},
                    {"tint mask alpha", mask},
                    {"tinted", uses}};
  return answers;
}

TEST(Backdrop, LaysTheTintOverTheBlurByBothAlphas) {
  const Color below = rgb(0x204060);
  const Canvas canvas(40, 40, 1);
  canvas.fill({0, 0, 40, 40}, below);
  drawBackdrop(canvas, {0, 0, 40, 20}, 0, {kBlack.withAlpha(0), tintOf(tinted(true, 0.6, 0.7))});
  const Color expected = over(rgb(0xff8000, 0.42), saturated(below, 1.8));
  EXPECT_NEAR(channel(canvas.surface(), 20, 5, 0), 255 * expected.red, 2);
  EXPECT_NEAR(channel(canvas.surface(), 20, 5, 1), 255 * expected.green, 2);
  EXPECT_NEAR(channel(canvas.surface(), 20, 5, 2), 255 * expected.blue, 2);
  EXPECT_EQ(pixelAt(canvas.surface(), 20, 30) & 0xffffff, 0x204060U) << "outside of the box";
}

TEST(Backdrop, HasNoTintThatIsNotUsed) {
  EXPECT_FALSE(tintOf(tinted(false, 0.6, 0.7)));
  Answers none = tinted(true, 0.6, 0.7);
  none.values["tint"] = {};
  EXPECT_FALSE(tintOf(none));
  EXPECT_FALSE(tintOf({}));
  EXPECT_EQ(tintOf(tinted(true, 0, 0.7))->alpha, 0);
}

class Files : public testing::Test {
 protected:
  std::string write(const std::string& bytes) const {
    std::ofstream(file(), std::ios::binary) << bytes;
    return file();
  }
  std::string file() const { return folder.path() + "/picture"; }
  static Surface loaded(const std::string& file, const Pixels& covered) {
    std::string problem;
    Surface picture = readPicture(file, covered, problem);
    EXPECT_EQ(problem, "");
    return picture;
  }
  test::Folder folder;
};

/// Red at the left, blue at the right.
Picture twoHalves(unsigned width, unsigned height) {
  Picture picture{width, height, false, 0, {}};
  for (unsigned i = 0; i < width * height; ++i) {
    const std::uint8_t red = i % width < width / 2 ? 255 : 0;
    picture.rgba.insert(picture.rgba.end(), {red, 0, static_cast<std::uint8_t>(255 - red), 255});
  }
  return picture;
}

TEST_F(Files, AreShrunkAsFarAsTheyStillCover) {
  write(*host::imageio::encodePng(twoHalves(400, 300)));
  const Surface picture = loaded(file(), {100, 100});
  EXPECT_EQ(widthOf(picture), 133);
  EXPECT_EQ(heightOf(picture), 100);
  EXPECT_EQ(pixelAt(picture, 10, 50), 0xffff0000U);
  EXPECT_EQ(pixelAt(picture, 120, 50), 0xff0000ffU);
  EXPECT_EQ(widthOf(loaded(file(), {4000, 10})), 400) << "never enlarged";
  EXPECT_EQ(widthOf(loaded(file(), {1, 1})), 1);
}

TEST_F(Files, AreTurnedAsTheyAreToBeSeen) {
  const Picture picture = twoHalves(40, 20);
  struct {
    const char* exif;
    int width;
    bool isRedFirst;
  } constexpr kTurned[] = {{"\x01", 40, true},
                           {"\x03", 40, false},
                           {"\x02", 40, false},
                           {"\x06", 20, true},
                           {"\x08", 20, false}};
  for (const auto& [orientation, width, isRedFirst] : kTurned) {
    std::string jpeg = *host::imageio::encodeJpeg(picture, 1);
    // A TIFF block with one entry, the orientation, directly after the start of the image.
    std::string exif(
        "\xff\xe1\x00\x22"
        "Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0",
        29);
    exif.append(orientation, 1).append(6, '\0');
    jpeg.insert(2, exif);
    const Surface turned = loaded(write(jpeg), {500, 500});
    EXPECT_EQ(widthOf(turned), width) << int(*orientation);
    EXPECT_EQ(channel(turned, 3, 3, 0) > 128, isRedFirst) << int(*orientation);
  }
}

TEST_F(Files, ThatAreNoPicturesAreRefused) {
  for (const char* bytes : {"", "text", "\x89PNG\r\n\x1a\n", "\xff\xd8\xff"})
    EXPECT_THROW(loaded(write(bytes), {10, 10}), std::runtime_error);
  EXPECT_THROW(loaded(folder.path(), {10, 10}), std::runtime_error);
  EXPECT_THROW(loaded("/nowhere", {10, 10}), std::runtime_error);
  EXPECT_THROW(loaded(write(*host::imageio::encodePng(twoHalves(40000, 1))), {10, 10}),
               std::runtime_error);
}

TEST_F(Files, MayBeAsLongAsTheFormatsHaveThem) {
  for (const unsigned width : {32'767U, 32'768U, 65'535U}) {
    const Surface small = loaded(write(*host::imageio::encodePng(twoHalves(width, 40))), {100, 1});
    EXPECT_EQ(widthOf(small), std::lround(width / 40.0)) << width;
    EXPECT_EQ(heightOf(small), 1);
    EXPECT_EQ(pixelAt(small, 300, 0), 0xffff0000U);
    EXPECT_EQ(pixelAt(small, widthOf(small) - 300, 0), 0xff0000ffU);
  }
}

TEST_F(Files, OfWhichAPartIsThereSaySo) {
  const std::string whole = *host::imageio::encodePng(twoHalves(400, 300));
  std::string problem;
  const Surface part = readPicture(write(whole.substr(0, whole.size() - 30)), {10, 10}, problem);
  EXPECT_EQ(problem, "the image is truncated or damaged: only a part of it is there");
  EXPECT_EQ(pixelAt(part, 1, 1), 0xffff0000U);
}

TEST_F(Files, AreWrittenAsTheyAre) {
  const Canvas canvas(9, 7, 1);
  canvas.fill({0, 0, 4, 7}, rgb(0x123456));
  canvas.fill({4, 0, 5, 7}, rgb(0xfedcba));
  const auto back = host::imageio::decode(encodePng(canvas.surface()));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->width, 9U);
  EXPECT_EQ(back->height, 7U);
  EXPECT_EQ(std::vector<std::uint8_t>(back->rgba.begin(), back->rgba.begin() + 4),
            (std::vector<std::uint8_t>{0x12, 0x34, 0x56, 255}));
  EXPECT_EQ(std::vector<std::uint8_t>(back->rgba.end() - 4, back->rgba.end()),
            (std::vector<std::uint8_t>{0xfe, 0xdc, 0xba, 255}));
}

TEST(ScreenCanvas, SharpPicturesHaveSquarePixels) {
  const Surface two = makeSurface(2, 1);
  auto* pixels = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(two.get()));
  pixels[0] = 0xffff0000;
  pixels[1] = 0xff0000ff;
  cairo_surface_mark_dirty(two.get());
  const Canvas canvas(40, 20, 1);
  canvas.sharpPicture(two, {10, 5, 20, 10});
  for (int x = 0; x < 40; ++x) {
    const bool isInside = x >= 10 && x < 30;
    const std::uint32_t expected = !isInside ? 0 : x < 20 ? 0xff0000 : 0x0000ff;
    EXPECT_EQ(pixelAt(canvas.surface(), x, 10) & 0xffffff, expected) << x;
    EXPECT_EQ(pixelAt(canvas.surface(), x, 4) & 0xffffff, 0U);
  }
}

TEST(ScreenCanvas, GradientsGoFromOnePointToTheOther) {
  const Canvas canvas(30, 10, 1);
  canvas.saveWithin({0, 0, 30, 5});
  canvas.rectangle({0, 0, 30, 10});
  canvas.fillGradient({10, 0}, {20, 0}, {rgb(0xff0000), rgb(0x0000ff)});
  canvas.restore();
  EXPECT_EQ(pixelAt(canvas.surface(), 9, 4) & 0xffffff, 0xff0000U);
  EXPECT_NEAR(channel(canvas.surface(), 15, 4, 0), 115, 3);
  EXPECT_NEAR(channel(canvas.surface(), 15, 4, 2), 140, 3);
  EXPECT_EQ(pixelAt(canvas.surface(), 20, 4) & 0xffffff, 0x0000ffU);
  EXPECT_EQ(pixelAt(canvas.surface(), 9, 5) & 0xffffff, 0U) << "outside of the box";
}

TEST(Text, APlainFaceKeepsItsOwnSpaces) {
  const Canvas canvas(200, 40, 2);
  for (const double size : {11.0, 16.0, 24.0}) {
    const TextStyle plain{size, kWhite, Weight::medium, Align::left, Face::plain};
    EXPECT_GT(textWidth(canvas, "Varnix", plain),
              textWidth(canvas, "Varnix", {size, kWhite, Weight::medium}));
    EXPECT_EQ(textWidth(canvas, "Varnix", plain.with(kBlack).with(Align::right)),
              textWidth(canvas, "Varnix", plain));
  }
}

TEST(Text, IsAsWideAsItIsLongAndCutWhereThereIsNoRoom) {
  const Canvas canvas(200, 40, 2);
  const TextStyle style{17, kWhite};
  const double one = textWidth(canvas, "Varnix", style);
  EXPECT_GT(one, 40);
  EXPECT_LT(one, 60);
  EXPECT_GT(textWidth(canvas, "Varnix Varnix", style), 2 * one);
  EXPECT_EQ(textWidth(canvas, "", style), 0);
  // Invalid UTF-8 is drawn somehow.
  drawText(canvas, {10, 30}, "a\xff\xfe", style);
  drawText(canvas, {10, 30}, "Varnix Varnix Varnix Varnix", style, 60);
  for (int x = 2 * 75; x < 400; ++x) {
    for (int y = 0; y < 80; ++y)
      ASSERT_EQ(pixelAt(canvas.surface(), x, y) & 0xffffff, 0U) << "beyond its width";
  }
}

TEST(Text, AParagraphsLinesAreBrokenAtItsWidth) {
  const Canvas canvas(200, 200, 1);
  const Paragraph words{{{"some words to be broken", kWhite}}, 17, 20, 90};
  const Extent extent = measure(canvas, words);
  EXPECT_LE(extent.width, 90);
  EXPECT_EQ(extent.height, 60);
  EXPECT_EQ(drawParagraph(canvas, {0, 0}, words), 60);
}

}  // namespace
