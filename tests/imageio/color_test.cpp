// Colours that are given in a space other than sRGB.
#include <gtest/gtest.h>

#include <lcms2.h>
#include <zlib.h>

#include <cmath>

#include "ImageIO/decode.h"
#include "support/image_files.h"

using host::imageio::decode;
using test::Bytes;
using test::jpegFile;
using test::JpegLook;
using test::pngFile;
using test::PngLook;

namespace {

/// From ITU-R BT.2020: far wider than sRGB.
constexpr cmsCIExyYTRIPLE kWide = {{0.708, 0.292, 1}, {0.170, 0.797, 1}, {0.131, 0.046, 1}};
constexpr cmsCIExyYTRIPLE kSrgb = {{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}};
constexpr cmsCIExyY kDaylight = {0.3127, 0.3290, 1};

std::string saved(cmsHPROFILE profile) {
  cmsUInt32Number length = 0;
  cmsSaveProfileToMem(profile, nullptr, &length);
  std::string bytes(length, '\0');
  cmsSaveProfileToMem(profile, bytes.data(), &length);
  cmsCloseProfile(profile);
  return bytes;
}

std::string rgbProfile(const cmsCIExyYTRIPLE& primaries, double gamma) {
  cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
  cmsToneCurve* curves[] = {curve, curve, curve};
  const std::string bytes = saved(cmsCreateRGBProfile(&kDaylight, &primaries, curves));
  cmsFreeToneCurve(curve);
  return bytes;
}

std::string greyProfile(double gamma) {
  cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
  const std::string bytes = saved(cmsCreateGrayProfile(cmsD50_xyY(), curve));
  cmsFreeToneCurve(curve);
  return bytes;
}

/// Limits the amount of ink: a profile from CMYK to CMYK.
std::string inkProfile() { return saved(cmsCreateInkLimitingDeviceLink(cmsSigCmykData, 300)); }

/// A profile in which only black ink counts: the lightness goes from white to nothing.
std::string blackInkProfile() {
  cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
  cmsSetProfileVersion(profile, 2.1);
  cmsSetDeviceClass(profile, cmsSigOutputClass);
  cmsSetColorSpace(profile, cmsSigCmykData);
  cmsSetPCS(profile, cmsSigLabData);
  cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 4, 3);
  cmsStage* table = cmsStageAllocCLut16bit(nullptr, 2, 4, 3, nullptr);
  cmsStageSampleCLut16bit(
      table,
      [](const cmsUInt16Number* inks, cmsUInt16Number* lab, void*) {
        lab[0] = static_cast<cmsUInt16Number>(65'535 - inks[3]);
        lab[1] = lab[2] = 0x8000;
        return TRUE;
      },
      nullptr, 0);
  cmsPipelineInsertStage(pipeline, cmsAT_BEGIN, table);
  cmsWriteTag(profile, cmsSigAToB0Tag, pipeline);
  cmsWriteTag(profile, cmsSigAToB1Tag, pipeline);
  cmsPipelineFree(pipeline);
  return saved(profile);
}

/// A profile of sRGB, but with a table and rounding, as in most files.
std::string tabledProfile() {
  std::vector<cmsUInt16Number> table;
  for (int i = 0; i < 1024; ++i) {
    const double value = i / 1023.0;
    const double light = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    table.push_back(static_cast<cmsUInt16Number>(std::lround(light * 65'535)));
  }
  const cmsCIExyYTRIPLE rounded = {
      {0.6401, 0.3299, 1}, {0.30005, 0.59995, 1}, {0.15000, 0.06005, 1}};
  cmsToneCurve* curve = cmsBuildTabulatedToneCurve16(nullptr, 1024, table.data());
  cmsToneCurve* curves[] = {curve, curve, curve};
  const std::string bytes = saved(cmsCreateRGBProfile(&kDaylight, &rounded, curves));
  cmsFreeToneCurve(curve);
  return bytes;
}

std::string srgbProfile() { return saved(cmsCreate_sRGBProfile()); }

/// The sRGB value of that fraction of light.
int encoded(double light) {
  const double value =
      light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
  return static_cast<int>(std::lround(value * 255));
}

using Prepare = std::function<void(png_structp, png_infop)>;

Prepare withProfile(const std::string& profile) {
  return [profile](png_structp png, png_infop info) {
    png_set_benign_errors(png, 1);
    png_set_iCCP(png, info, "profile", PNG_COMPRESSION_TYPE_BASE,
                 reinterpret_cast<png_const_bytep>(profile.data()),
                 static_cast<png_uint_32>(profile.size()));
  };
}

const Bytes kColors = {200, 30, 60, 0, 0, 0, 255, 255, 255, 17, 120, 5};
const Bytes kAsTheyStand = {200, 30, 60, 255, 0, 0, 0, 255, 255, 255, 255, 255, 17, 120, 5, 255};

Bytes pngColors(Prepare prepare) {
  const auto picture = decode(
      pngFile(4, 1, {.colorType = PNG_COLOR_TYPE_RGB, .prepare = std::move(prepare)}, kColors));
  return picture ? picture->rgba : Bytes{};
}

Bytes pngGreys(Prepare prepare, const Bytes& greys) {
  const auto picture =
      decode(pngFile(static_cast<unsigned>(greys.size()), 1,
                     {.colorType = PNG_COLOR_TYPE_GRAY, .prepare = std::move(prepare)}, greys));
  return picture ? picture->rgba : Bytes{};
}

void expectClose(const Bytes& found, const Bytes& expected, int tolerance = 1) {
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i)
    EXPECT_LE(std::abs(found[i] - expected[i]), tolerance)
        << "byte " << i << ": " << int(found[i]) << ", not " << int(expected[i]);
}

/// The colours with each light raised to that power.
Bytes powered(double power) {
  Bytes bytes = kAsTheyStand;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i % 4 != 3)
      bytes[i] = static_cast<std::uint8_t>(encoded(std::pow(bytes[i] / 255.0, power)));
  }
  return bytes;
}

TEST(ColorsOfPng, WithoutAWordAreSrgb) { EXPECT_EQ(pngColors({}), kAsTheyStand); }

TEST(ColorsOfPng, FollowGamma) {
  expectClose(pngColors([](auto png, auto info) { png_set_gAMA(png, info, 1.0); }), powered(1));
  expectClose(pngColors([](auto png, auto info) { png_set_gAMA(png, info, 1 / 1.8); }),
              powered(1.8));
}

TEST(ColorsOfPng, OfTheUsualGammaAreSrgb) {
  for (const int gamma : {45'455, 45'454, 45'500, 45'000})
    EXPECT_EQ(pngColors([&](auto png, auto info) { png_set_gAMA_fixed(png, info, gamma); }),
              kAsTheyStand)
        << gamma;
}

TEST(ColorsOfPng, FollowChromaticities) {
  const Bytes wide = pngColors([](auto png, auto info) {
    png_set_cHRM(png, info, 0.3127, 0.3290, 0.708, 0.292, 0.170, 0.797, 0.131, 0.046);
  });
  ASSERT_EQ(wide.size(), kAsTheyStand.size());
  // A red in a wider space is redder in sRGB; greys are the same.
  EXPECT_GT(wide[0], 210);
  EXPECT_EQ(wide[1], 0);
  expectClose(Bytes(wide.begin() + 4, wide.begin() + 12), {0, 0, 0, 255, 255, 255, 255, 255});
  EXPECT_EQ(pngColors([](auto png, auto info) {
              png_set_gAMA_fixed(png, info, 45'455);
              png_set_cHRM(png, info, 0.3127, 0.3290, 0.64, 0.33, 0.30, 0.60, 0.15, 0.06);
            }),
            kAsTheyStand);
}

TEST(ColorsOfPng, ThatCallThemselvesSrgbAre) {
  // Inserted by hand, since libpng writes no such contradiction.
  std::string file = pngFile(4, 1,
                             {.colorType = PNG_COLOR_TYPE_RGB,
                              .prepare = [](auto png, auto info) { png_set_gAMA(png, info, 1.0); }},
                             kColors);
  EXPECT_NE(decode(file)->rgba, kAsTheyStand);
  const std::string summed("sRGB\0", 5);
  std::string chunk("\0\0\0\x01", 4);
  chunk += summed;
  const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(summed.data()), summed.size());
  for (int shift = 24; shift >= 0; shift -= 8) chunk += static_cast<char>(sum >> shift);
  file.insert(33, chunk);
  EXPECT_EQ(decode(file)->rgba, kAsTheyStand);
}

TEST(ColorsOfPng, FollowProfiles) {
  expectClose(pngColors(withProfile(rgbProfile(kSrgb, 1))), powered(1));
  const Bytes wide = pngColors(withProfile(rgbProfile(kWide, 2.2)));
  ASSERT_EQ(wide.size(), kAsTheyStand.size());
  EXPECT_GT(wide[0], 210);
  EXPECT_EQ(wide[1], 0);
  // It takes precedence over gamma.
  auto both = [](png_structp png, png_infop info) {
    png_set_gAMA(png, info, 0.9);
    withProfile(rgbProfile(kSrgb, 1))(png, info);
  };
  expectClose(pngColors(both), powered(1));
}

TEST(ColorsOfPng, OfAProfileOfSrgbStayToTheBit) {
  // Rounded profiles differ first at the ends of the channels.
  Bytes all;
  for (unsigned i = 0; i < 18 * 18 * 18; ++i)
    all.insert(all.end(), {static_cast<std::uint8_t>(i / 324 * 15),
                           static_cast<std::uint8_t>(i / 18 % 18 * 15),
                           static_cast<std::uint8_t>(i % 18 * 15)});
  auto read = [&](Prepare prepare) {
    return decode(pngFile(81, 72, {.colorType = PNG_COLOR_TYPE_RGB, .prepare = std::move(prepare)},
                          all))
        ->rgba;
  };
  EXPECT_EQ(read(withProfile(srgbProfile())), read({}));
  EXPECT_EQ(read(withProfile(tabledProfile())), read({}));
}

TEST(ColorsOfPng, AlphaStays) {
  const PngLook look = {.colorType = PNG_COLOR_TYPE_RGB_ALPHA,
                        .prepare = withProfile(rgbProfile(kSrgb, 1))};
  const Bytes rgba = decode(pngFile(2, 1, look, {100, 100, 100, 7, 50, 50, 50, 200}))->rgba;
  EXPECT_EQ(rgba[3], 7);
  EXPECT_EQ(rgba[7], 200);
  EXPECT_NEAR(rgba[0], encoded(100 / 255.0), 1);
}

TEST(ColorsOfPng, GreysFollowToo) {
  Bytes greys, expected;
  for (int i = 0; i < 256; i += 5) {
    greys.push_back(static_cast<std::uint8_t>(i));
    const auto value = static_cast<std::uint8_t>(encoded(i / 255.0));
    expected.insert(expected.end(), {value, value, value, 255});
  }
  expectClose(pngGreys([](auto png, auto info) { png_set_gAMA(png, info, 1.0); }, greys), expected);
  expectClose(pngGreys(withProfile(greyProfile(1)), greys), expected);
}

TEST(ColorsOfPng, ProfilesThatMakeNoSenseAreIgnored) {
  const std::string sound = rgbProfile(kSrgb, 1);
  for (std::size_t length : {0UL, 1UL, 100UL, 130UL, sound.size() / 2, sound.size() - 40}) {
    std::string cut = sound.substr(0, length);
    cut.resize(sound.size());
    const Bytes colors = pngColors(withProfile(cut));
    EXPECT_EQ(colors, kAsTheyStand) << length;
  }
  EXPECT_EQ(pngColors(withProfile(inkProfile())), kAsTheyStand);
  EXPECT_EQ(pngColors(withProfile(greyProfile(1))), kAsTheyStand);
  EXPECT_EQ(pngGreys(withProfile(sound), {100}), (Bytes{100, 100, 100, 255}));
}

// --- JPEG ----------------------------------------------------------------------------------------

Bytes jpegOf(std::uint8_t value, const JpegLook& look, int channels = 3) {
  const auto picture = decode(jpegFile(8, 8, look, Bytes(std::size_t{64} * channels, value)));
  if (!picture) return {};
  return {picture->rgba.begin(), picture->rgba.begin() + 4};
}

Bytes grey(int value) {
  const auto byte = static_cast<std::uint8_t>(value);
  return {byte, byte, byte, 255};
}

TEST(ColorsOfJpeg, FollowProfiles) {
  expectClose(jpegOf(100, {.profile = rgbProfile(kSrgb, 1)}), grey(encoded(100 / 255.0)));
  expectClose(
      jpegOf(100, {.given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE, .profile = greyProfile(1)}, 1),
      grey(encoded(100 / 255.0)));
  EXPECT_EQ(jpegOf(100, {.profile = srgbProfile()}), grey(100));
}

TEST(ColorsOfJpeg, InksFollowTheirsToo) {
  const std::string profile = blackInkProfile();
  const JpegLook plain = {.given = JCS_CMYK, .stored = JCS_CMYK, .profile = profile};
  const JpegLook adobe = {
      .given = JCS_CMYK, .stored = JCS_CMYK, .hasAdobeMarker = true, .profile = profile};
  // Lightness 100 and 60 per cent; cyan, magenta and yellow would darken it. What counts as black
  // is a matter of taste, which changes the second.
  expectClose(jpegOf(0, plain, 4), grey(255));
  expectClose(jpegOf(102, plain, 4), grey(145), 8);
  expectClose(jpegOf(255, adobe, 4), grey(255));
  expectClose(jpegOf(153, adobe, 4), grey(145), 8);
}

TEST(ColorsOfJpeg, ALargeProfileComesInPieces) {
  // Padded to more than one segment holds; its header gives the length.
  std::string profile = rgbProfile(kSrgb, 1);
  profile.resize(200'000);
  for (int i = 0; i < 4; ++i)
    profile[static_cast<std::size_t>(i)] = static_cast<char>(200'000 >> (24 - 8 * i));
  expectClose(jpegOf(100, {.profile = profile}), grey(encoded(100 / 255.0)));
}

TEST(ColorsOfJpeg, ProfilesThatMakeNoSenseAreIgnored) {
  const std::string sound = rgbProfile(kSrgb, 1);
  EXPECT_EQ(jpegOf(100, {.profile = "no profile"}), grey(100));
  EXPECT_EQ(jpegOf(100, {.profile = sound.substr(0, sound.size() / 2)}), grey(100));
  EXPECT_EQ(jpegOf(100, {.profile = inkProfile()}), grey(100));
  EXPECT_EQ(jpegOf(100, {.profile = greyProfile(1)}), grey(100));
  EXPECT_EQ(jpegOf(100, {.given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE, .profile = sound}, 1),
            grey(100));
  // Valid, but too large.
  std::string huge = sound;
  huge.resize((4 << 20) + 1);
  for (int i = 0; i < 4; ++i)
    huge[static_cast<std::size_t>(i)] = static_cast<char>(huge.size() >> (24 - 8 * i));
  EXPECT_EQ(jpegOf(100, {.profile = huge}), grey(100));
  // The file's inks do not match the profile.
  const JpegLook inks = {.given = JCS_CMYK, .stored = JCS_CMYK, .profile = sound};
  EXPECT_EQ(jpegOf(0, inks, 4), (Bytes{255, 255, 255, 255}));
}

}  // namespace
