// PNG and JPEG files for tests, written by the formats' own libraries.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <jpeglib.h>
#include <png.h>

namespace test {

using Bytes = std::vector<std::uint8_t>;

/// How a PNG file is stored.
struct PngLook {
  int colorType;
  int bitDepth = 8;
  bool isInterlaced = false;
  std::vector<png_color> palette = {};
  Bytes paletteAlpha = {};
  std::optional<png_color_16> transparent = {};
  std::function<void(png_structp, png_infop)> prepare = {};  ///< adds chunks to the header
};

/// The rows are packed as in the format, one after another.
std::string pngFile(unsigned width, unsigned height, const PngLook& look, const Bytes& packed);

/// How a JPEG file is stored.
struct JpegLook {
  J_COLOR_SPACE given = JCS_RGB;
  J_COLOR_SPACE stored = JCS_YCbCr;
  bool isProgressive = false;
  bool hasManyScans = false;  ///< progressive, with a scan for every frequency
  unsigned restartRows = 0;
  bool hasFullColor = true;
  bool hasAdobeMarker = false;
  std::string app1 = {};     ///< contents of a segment
  std::string profile = {};  ///< an ICC profile
  int quality = 100;
};

/// The samples are interleaved, 8 bits each.
std::string jpegFile(unsigned width, unsigned height, const JpegLook& look, const Bytes& samples);

/// A small PNG file of one opaque colour.
std::string plainPng(unsigned side, std::uint8_t red, std::uint8_t green, std::uint8_t blue);

}  // namespace test
