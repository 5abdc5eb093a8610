// Converts colours from a file's own space to sRGB.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace host::imageio {

/// The kind of the stored samples, which a profile must match.
enum class Samples {
  rgb,
  grey,          ///< red, green and blue are the same
  inks,          ///< cyan, magenta, yellow and black; 255 is all of an ink
  invertedInks,  ///< 255 is none
};

/// The x and y of red, green, blue and white, and the power that turns light into samples.
struct Chromaticities {
  double white[2], red[2], green[2], blue[2];
};
inline constexpr Chromaticities kSrgbPlaces = {
    {0.3127, 0.3290}, {0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}};

/// Does nothing unless it was given something other than sRGB.
class ColorConversion {
 public:
  ColorConversion();
  ~ColorConversion();
  ColorConversion(const ColorConversion&) = delete;
  ColorConversion& operator=(const ColorConversion&) = delete;

  /// From an ICC profile. One that is broken, larger than 4 MiB, for another kind of samples, or
  /// practically sRGB changes nothing.
  void useProfile(std::string_view profile, Samples samples);

  /// From chromaticities and power: samples are light to the power of gamma, or sRGB's if that is
  /// 0.
  void useGamma(double gamma, const Chromaticities& places, Samples samples);

  bool isNeeded() const { return conversion_ != nullptr || !greys_.empty(); }

  /// Converts a row of RGBA, or of four inks, to sRGB. Alpha stays; inks become opaque.
  void apply(std::uint8_t* row, std::size_t width) const;

 private:
  void use(void* profile, Samples samples);
  void convertGreys(void* profile, void* srgb);
  bool makesSense(Samples samples) const;
  bool isAsGoodAsSrgb() const;

  struct Delete {
    void operator()(void* conversion) const;
  };
  std::unique_ptr<void, Delete> conversion_;
  std::vector<std::uint8_t> greys_;  ///< sRGB's grey for each of the file's
  bool areInks_ = false;
};

}  // namespace host::imageio
