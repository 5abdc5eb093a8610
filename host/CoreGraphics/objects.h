// CoreGraphics' objects. They are objects of the run-time, so they are retained and released as
// such.
#pragma once

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "CoreGraphics/CoreGraphics.h"
#include "CoreGraphics/file_image.h"
#include "CoreGraphics/pixel_format.h"
#include "CoreGraphics/small_copies.h"
#include "objc/define.h"
#include "objc/strong.h"

struct FreeSurface {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, FreeSurface>;

struct FreeCairo {
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using Cairo = std::unique_ptr<cairo_t, FreeCairo>;

struct FreeMemory {
  void operator()(std::uint8_t* memory) const { std::free(memory); }
};

struct CGColorSpace : NSObject {
  static CGColorSpace* make(CGColorSpaceModel model);

  CGColorSpaceModel model;
};

struct CGColor : NSObject {
  std::size_t count;                  ///< alpha included
  std::array<CGFloat, 4> components;  ///< the first `count` of them
};

struct CGDataProvider : NSObject {
  void dealloc();

  /// The given ones, or those of the file, which are now decoded if they were not yet.
  const std::uint8_t* start() { return file != nullptr ? file->pixels() : bytes; }

  const std::uint8_t* bytes;
  std::size_t size;
  void* info;
  CGDataProviderReleaseDataCallback release;
  std::shared_ptr<host::FileImage> file;  ///< in place of bytes
};

struct CGImage : NSObject {
  /// The pixels in cairo's format, converted on first use.
  cairo_surface_t* surface();
  /// The image made smaller, as a surface that the caller owns; nil if there is no memory.
  CairoSurface shrunk(std::size_t newWidth, std::size_t newHeight);

  std::size_t width, height, bytesPerRow;
  host::PixelFormat format;
  Strong<CGColorSpace> space;
  Strong<CGDataProvider> provider;
  std::vector<CGFloat> decode;
  bool interpolates;
  std::once_flag converted;
  CairoSurface pixels;
  std::shared_ptr<host::FileImage> file;      ///< which the pixels are read from as they are
  std::shared_ptr<host::SmallCopies> copies;  ///< of a large image
};

struct CGContext : NSObject {
  /// Copies the caller's memory in before drawing, and back after it.
  void load();
  void store();

  /// An image whose alpha masks what is drawn, and the space in which the clip was made.
  struct Mask {
    Strong<CGImage> image;  ///< whose pixels the pattern reads
    std::shared_ptr<cairo_pattern_t> pattern;
    cairo_matrix_t place;
  };
  struct State {
    std::array<CGFloat, 4> fill{0, 0, 0, 1};
    std::array<CGFloat, 4> stroke{0, 0, 0, 1};
    CGFloat alpha = 1;
    std::vector<Mask> masks;
    CGInterpolationQuality interpolation = CGInterpolationQuality::standard;
  };
  State& state() {
    if (states.empty()) states.emplace_back();
    return states.back();
  }

  std::size_t width, height, bytesPerRow;
  host::PixelFormat format;
  Strong<CGColorSpace> space;
  std::uint8_t* memory;  ///< the caller's, or `own`
  std::unique_ptr<std::uint8_t, FreeMemory> own;
  bool inPlace;  ///< cairo draws into the memory itself
  CairoSurface surface;
  Cairo cairo;
  std::vector<State>
      states;  ///< what cairo does not keep of the saved ones, and of the present one
};

struct CGGradient : NSObject {
  struct Stop {
    double at;
    std::array<CGFloat, 4> color;
  };
  std::vector<Stop> stops;
};

namespace host {

/// A new instance of one of the classes above, owned by the caller.
template <class T>
T* makeObject() {
  return static_cast<T*>(class_createInstance(objc::classOf<T>(), 0));
}

}  // namespace host
