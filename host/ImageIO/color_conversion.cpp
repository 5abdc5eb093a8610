// Through Little CMS.
#include "ImageIO/color_conversion.h"

#include <lcms2.h>

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
    case Samples::grey:
      return TYPE_GRAY_8;
    case Samples::inks:
      return TYPE_CMYK_8;
    case Samples::invertedInks:
      return TYPE_CMYK_8_REV;
  }
  return 0;
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
  const bool isGrey = samples == Samples::grey;
  areInks_ = samples == Samples::inks || samples == Samples::invertedInks;
  conversion_.reset(cmsCreateTransform(
      profile, layoutOf(samples), srgb.get(), TYPE_RGBA_8, INTENT_RELATIVE_COLORIMETRIC,
      cmsFLAGS_BLACKPOINTCOMPENSATION | (samples == Samples::rgb ? cmsFLAGS_COPY_ALPHA : 0)));
  if (conversion_ == nullptr) return;
  if (isGrey) {
    // Greys stay grey: one channel of the result says how light each is.
    std::vector<std::uint8_t> all(256), converted(256 * 4);
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
    cmsDoTransform(conversion_.get(), all.data(), converted.data(), 256);
    for (std::size_t i = 0; i < all.size(); ++i) greys_.push_back(converted[i * 4 + 1]);
    conversion_.reset();
  }
  if (!areInks_ && isAsGoodAsSrgb()) {
    conversion_.reset();
    greys_.clear();
  }
}

/// Profiles of sRGB itself differ from each other by a count here and there: then the bytes are
/// taken as they stand.
bool ColorConversion::isAsGoodAsSrgb() const {
  constexpr int kStep = 15;  // which divides 255
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
