// Makes images smaller. A large one is read a few rows at a time, so that its pixels are never all
// in memory.
#include <functional>

#include "CoreGraphics/objects.h"

namespace {

constexpr std::size_t kRowsAtOnce = 16;

bool isLarge(const CGImage& image) {
  return image.width * image.height > host::kMostKeptPixels || image.width > host::kLongestSide ||
         image.height > host::kLongestSide;
}

host::PixelRows rowsOf(cairo_surface_t* surface) {
  return {reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface)),
          static_cast<std::size_t>(cairo_image_surface_get_stride(surface)) / 4,
          static_cast<std::size_t>(cairo_image_surface_get_width(surface)),
          static_cast<std::size_t>(cairo_image_surface_get_height(surface))};
}

void readStrips(CGImage& image, const std::function<void(const host::PixelRows&)>& take) {
  if (image.file != nullptr && !image.file->isDecoded()) return image.file->readStrips(take);
  const std::uint8_t* bytes = image.provider->start();
  std::vector<std::uint32_t> strip(image.width * kRowsAtOnce);
  for (std::size_t y = 0; y < image.height; y += kRowsAtOnce) {
    const std::size_t rows = std::min(kRowsAtOnce, image.height - y);
    for (std::size_t i = 0; i < rows; ++i)
      host::unpackRow(image.format, bytes + (y + i) * image.bytesPerRow, image.width,
                      image.decode.empty() ? nullptr : image.decode.data(),
                      &strip[i * image.width]);
    take({strip.data(), image.width, image.width, rows});
  }
}

/// Also keeps the mean of all pixels as a second copy, since it is usually requested too.
std::vector<std::uint32_t> shrunkByStrips(CGImage& image, std::size_t width, std::size_t height) {
  if (auto copy = image.copies->find(width, height)) return *copy;
  std::vector<std::uint32_t> pixels(width * height);
  std::vector<std::uint32_t> mean(1);
  host::Shrinking smaller(image.width, image.height, {pixels.data(), width, width, height});
  host::Shrinking smallest(image.width, image.height, {mean.data(), 1, 1, 1});
  readStrips(image, [&](const host::PixelRows& rows) {
    smaller.add(rows);
    smallest.add(rows);
  });
  image.copies->keep(width, height, pixels);
  image.copies->keep(1, 1, mean);
  return pixels;
}

}  // namespace

CairoSurface CGImage::shrunk(std::size_t newWidth, std::size_t newHeight) {
  CairoSurface small(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(newWidth),
                                                static_cast<int>(newHeight)));
  if (cairo_surface_status(small.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  const host::PixelRows to = rowsOf(small.get());
  if (isLarge(*this)) {
    const auto made = shrunkByStrips(*this, newWidth, newHeight);
    for (std::size_t y = 0; y < newHeight; ++y)
      std::copy_n(&made[y * newWidth], newWidth, to.pixels + y * to.stride);
  } else {
    if (cairo_surface_status(surface()) != CAIRO_STATUS_SUCCESS) return nullptr;
    host::shrink(rowsOf(surface()), to);
  }
  cairo_surface_mark_dirty(small.get());
  return small;
}
