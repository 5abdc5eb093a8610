// Converts colours with Little CMS.
#include "ImageIO/color_conversion.h"

#include <lcms2.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace host::imageio {

namespace {

constexpr std::size_t kLargestProfile = 4 << 20;

struct CloseProfile {
  void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;

struct FreeCurve {
  void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;

cmsColorSpaceSignature spaceOf(Samples samples) {
  switch (samples) {
    case Samples::rgb:
      return cmsSigRgbData;
    case Samples::grey:
      return cmsSigGrayData;
    default:
      return cmsSigCmykData;
  }
}

cmsUInt32Number layoutOf(Samples samples) {
  switch (samples) {
    case Samples::rgb:
      return TYPE_RGBA_8;
    case Samples::inks:
      return TYPE_CMYK_8;
    case Samples::invertedInks:
      return TYPE_CMYK_8_REV;
    default:
      return 0;
  }
}

Curve curveOf(double gamma) {
  if (gamma > 0) return Curve(cmsBuildGamma(nullptr, 1 / gamma));
  const double srgb[] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
  return Curve(cmsBuildParametricToneCurve(nullptr, 4, srgb));
}

Profile profileOf(const Chromaticities& places, cmsToneCurve* curve, Samples samples) {
  const cmsCIExyY white = {places.white[0], places.white[1], 1};
  if (samples == Samples::grey) return Profile(cmsCreateGrayProfile(&white, curve));
  const cmsCIExyYTRIPLE primaries = {{places.red[0], places.red[1], 1},
                                     {places.green[0], places.green[1], 1},
                                     {places.blue[0], places.blue[1], 1}};
  cmsToneCurve* curves[] = {curve, curve, curve};
  return Profile(cmsCreateRGBProfile(&white, &primaries, curves));
}

}  // namespace

ColorConversion::ColorConversion() = default;
ColorConversion::~ColorConversion() = default;

void ColorConversion::Delete::operator()(void* conversion) const { cmsDeleteTransform(conversion); }

void ColorConversion::useProfile(std::string_view bytes, Samples samples) {
  if (bytes.empty() || bytes.size() > kLargestProfile) return;
  const Profile profile(
      cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
  if (profile == nullptr || cmsGetColorSpace(profile.get()) != spaceOf(samples)) return;
  use(profile.get(), samples);
}

void ColorConversion::useGamma(double gamma, const Chromaticities& places, Samples samples) {
  const Curve curve = curveOf(gamma);
  if (curve == nullptr) return;
  const Profile profile = profileOf(places, curve.get(), samples);
  if (profile != nullptr) use(profile.get(), samples);
}

void ColorConversion::use(void* profile, Samples samples) {
  const Profile srgb(cmsCreate_sRGBProfile());
  if (srgb == nullptr) return;
  areInks_ = samples == Samples::inks || samples == Samples::invertedInks;
  if (samples == Samples::grey) convertGreys(profile, srgb.get());
  else
    conversion_.reset(cmsCreateTransform(
        profile, layoutOf(samples), srgb.get(), TYPE_RGBA_8, INTENT_RELATIVE_COLORIMETRIC,
        cmsFLAGS_BLACKPOINTCOMPENSATION | (areInks_ ? 0 : cmsFLAGS_COPY_ALPHA)));
  if (isNeeded() && makesSense(samples) && (areInks_ || !isAsGoodAsSrgb())) return;
  conversion_.reset();
  greys_.clear();
}

/// Greys stay grey: one channel of the result gives the lightness. With bytes Little CMS would be
/// off by several counts in the dark.
void ColorConversion::convertGreys(void* profile, void* srgb) {
  constexpr std::size_t kGreys = 256;
  const std::unique_ptr<void, Delete> exact(
      cmsCreateTransform(profile, TYPE_GRAY_DBL, srgb, TYPE_RGB_DBL, INTENT_RELATIVE_COLORIMETRIC,
                         cmsFLAGS_BLACKPOINTCOMPENSATION | cmsFLAGS_NOOPTIMIZE));
  if (exact == nullptr) return;
  std::vector<double> all(kGreys), converted(kGreys * 3);
  for (std::size_t i = 0; i < kGreys; ++i) all[i] = static_cast<double>(i) / 255;
  cmsDoTransform(exact.get(), all.data(), converted.data(), kGreys);
  for (std::size_t i = 0; i < kGreys; ++i) {
    const double green = converted[i * 3 + 1];
    greys_.push_back(green > 0 ? static_cast<std::uint8_t>(std::lround(std::min(green, 1.0) * 255))
                               : 0);
  }
}

/// A profile with damage inside may still open, and then make all colours the same.
bool ColorConversion::makesSense(Samples samples) const {
  constexpr int kLeastDifference = 3 * 64;
  std::uint8_t low[4] = {0, 0, 0, 0};
  std::uint8_t high[4] = {255, 255, 255, 255};
  apply(low, 1);
  apply(high, 1);
  const int difference = high[0] + high[1] + high[2] - low[0] - low[1] - low[2];
  return (samples == Samples::inks ? -difference : difference) >= kLeastDifference;
}

/// Profiles of sRGB itself differ from each other by a count here and there. For these the bytes
/// are kept unchanged.
bool ColorConversion::isAsGoodAsSrgb() const {
  constexpr int kStep = 15;  // divides 255
  constexpr int kTolerance = 1;
  for (int red = 0; red < 256; red += kStep) {
    for (int green = 0; green < 256; green += kStep) {
      for (int blue = 0; blue < 256; blue += kStep) {
        const bool isGrey = red == green && green == blue;
        if (!greys_.empty() && !isGrey) continue;
        const std::uint8_t before[4] = {static_cast<std::uint8_t>(red),
                                        static_cast<std::uint8_t>(green),
                                        static_cast<std::uint8_t>(blue), 255};
        std::uint8_t after[4] = {before[0], before[1], before[2], 255};
        apply(after, 1);
        for (int i = 0; i < 3; ++i) {
          if (std::abs(after[i] - before[i]) > kTolerance) return false;
        }
      }
    }
  }
  return true;
}

void ColorConversion::apply(std::uint8_t* row, std::size_t width) const {
  if (!greys_.empty()) {
    for (std::size_t i = 0; i < width * 4; i += 4)
      row[i] = row[i + 1] = row[i + 2] = greys_[row[i]];
    return;
  }
  if (conversion_ == nullptr) return;
  cmsDoTransform(conversion_.get(), row, row, static_cast<cmsUInt32Number>(width));
  if (!areInks_) return;
  for (std::size_t i = 3; i < width * 4; i += 4) row[i] = 255;
}

}  // namespace host::imageio
