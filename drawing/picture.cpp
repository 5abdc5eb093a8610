#include "drawing/picture.h"

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstdint>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <png.h>
#include <zlib.h>

#include "CoreGraphics/shrink.h"
#include "Foundation/file_contents.h"
#include "ImageIO/decode.h"

namespace varnix::drawing {

namespace {

constexpr std::size_t kMaximumBytes = 256 << 20;
constexpr double kPi = 3.14159265358979323846;

host::PixelRows rowsOf(const Surface& surface) {
  cairo_surface_flush(surface.get());
  return {reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface.get())),
          static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get())) / 4,
          static_cast<std::size_t>(widthOf(surface)), static_cast<std::size_t>(heightOf(surface))};
}

constexpr unsigned kLongest = 32'767;  ///< cairo's limit

/// How many pixels a picture of that size needs, in its stored orientation.
Pixels enough(const host::imageio::Header& header, const Pixels& covered) {
  const bool liesOnSide = (header.orientation & 2) != 0;
  const double width = header.width, height = header.height;
  const double factor = liesOnSide ? std::max(covered.width / height, covered.height / width)
                                   : std::max(covered.width / width, covered.height / height);
  auto part = [&](unsigned side) {
    const long pixels = factor >= 1 ? long{side} : std::lround(side * factor);
    return static_cast<int>(std::clamp(pixels, 1L, long{side}));
  };
  return {part(header.width), part(header.height)};
}

/// Shrinks a picture while its rows come.
class SmallPicture final : public host::imageio::Rows {
 public:
  explicit SmallPicture(const Pixels& covered) : covered_(covered) {}

  bool begin(const host::imageio::Header& header) override {
    header_ = header;
    const Pixels size = enough(header, covered_);
    isTooLong_ = size.width > int{kLongest} || size.height > int{kLongest};
    if (isTooLong_) return false;
    surface = makeSurface(size.width, size.height);
    shrinking_.emplace(header.width, header.height, rowsOf(surface));
    row_.resize(header.width);
    return true;
  }
  bool take(const std::uint8_t* from) override {
    for (std::uint32_t& pixel : row_) {
      const unsigned alpha = from[3];
      auto part = [&](int i) { return (from[i] * alpha + 127) / 255; };
      pixel = alpha << 24 | part(0) << 16 | part(1) << 8 | part(2);
      from += 4;
    }
    shrinking_->add({row_.data(), row_.size(), row_.size(), 1});
    return true;
  }
  bool isTooLong() const { return isTooLong_; }
  int orientation() const { return header_.orientation; }

  Surface surface;

 private:
  Pixels covered_;
  host::imageio::Header header_;
  bool isTooLong_ = false;
  std::optional<host::Shrinking> shrinking_;
  std::vector<std::uint32_t> row_;
};

/// By UIImageOrientation.
Surface turned(const Surface& source, int orientation) {
  if (orientation == 0) return source;
  const bool liesOnSide = (orientation & 2) != 0;
  const int width = widthOf(source), height = heightOf(source);
  auto target = liesOnSide ? makeSurface(height, width) : makeSurface(width, height);
  constexpr double kTurns[] = {0, kPi, -kPi / 2, kPi / 2};
  cairo_t* cr = cairo_create(target.get());
  cairo_translate(cr, widthOf(target) / 2.0, heightOf(target) / 2.0);
  cairo_rotate(cr, kTurns[orientation & 3]);
  if (orientation >= 4) cairo_scale(cr, -1, 1);
  cairo_set_source_surface(cr, source.get(), -width / 2.0, -height / 2.0);
  cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_NEAREST);
  cairo_paint(cr);
  cairo_destroy(cr);
  return target;
}

struct Writer {
  std::string bytes;
  std::vector<std::uint8_t> row;
};

void append(png_structp png, png_bytep bytes, std::size_t count) {
  static_cast<Writer*>(png_get_io_ptr(png))->bytes.append(bytes, bytes + count);
}

/// Nothing here owns memory, because libpng leaves it by longjmp.
bool write(png_structp png, png_infop info, Writer& writer, cairo_surface_t* surface,
           Effort effort) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  const int width = cairo_image_surface_get_width(surface);
  const int height = cairo_image_surface_get_height(surface);
  const unsigned char* rows = cairo_image_surface_get_data(surface);
  png_set_write_fn(png, &writer, append, nullptr);
  png_set_IHDR(png, info, static_cast<unsigned>(width), static_cast<unsigned>(height), 8,
               PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(png, effort == Effort::kept ? 3 : 1);
  // Runs of the same byte are quickly found.
  if (effort == Effort::shown) png_set_compression_strategy(png, Z_RLE);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
  png_write_info(png, info);
  for (int y = 0; y < height; ++y) {
    const auto* from = reinterpret_cast<const std::uint32_t*>(
        rows + static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface));
    std::uint8_t* to = writer.row.data();
    for (int x = 0; x < width; ++x, to += 3) {
      to[0] = static_cast<std::uint8_t>(from[x] >> 16);
      to[1] = static_cast<std::uint8_t>(from[x] >> 8);
      to[2] = static_cast<std::uint8_t>(from[x]);
    }
    png_write_row(png, writer.row.data());
  }
  png_write_end(png, nullptr);
  return true;
}

}  // namespace

Surface makeSurface(int width, int height, cairo_format_t format) {
  Surface surface(cairo_image_surface_create(format, width, height), &cairo_surface_destroy);
  const cairo_status_t status = cairo_surface_status(surface.get());
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
  return surface;
}

int widthOf(const Surface& surface) { return cairo_image_surface_get_width(surface.get()); }
int heightOf(const Surface& surface) { return cairo_image_surface_get_height(surface.get()); }

Surface shrunk(const Surface& source, int width, int height) {
  Surface target =
      makeSurface(std::clamp(width, 1, widthOf(source)), std::clamp(height, 1, heightOf(source)),
                  cairo_image_surface_get_format(source.get()));
  shrink(rowsOf(source), rowsOf(target));
  cairo_surface_mark_dirty(target.get());
  return target;
}

Surface readPicture(const std::string& file, const Pixels& covered, std::string& problem) {
  const auto bytes = host::fileContents(file, kMaximumBytes);
  if (!bytes) throw std::runtime_error("cannot be read");
  SmallPicture picture(covered);
  if (!host::imageio::readRows(*bytes, picture, problem)) throw std::runtime_error(problem);
  if (picture.isTooLong())
    throw std::runtime_error("is longer than " + std::to_string(kLongest) + " pixels");
  cairo_surface_mark_dirty(picture.surface.get());
  return turned(picture.surface, picture.orientation());
}

Surface readPng(std::string_view png) {
  auto read = [](void* state, unsigned char* to, unsigned length) {
    auto& left = *static_cast<std::string_view*>(state);
    if (left.size() < length) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(to, left.data(), length);
    left.remove_prefix(length);
    return CAIRO_STATUS_SUCCESS;
  };
  Surface surface(cairo_image_surface_create_from_png_stream(read, &png), cairo_surface_destroy);
  const cairo_status_t status = cairo_surface_status(surface.get());
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
  return surface;
}

Color meanColor(const Surface& surface) {
  const unsigned char* rows = cairo_image_surface_get_data(surface.get());
  double sums[3] = {};
  for (int y = 0; y < heightOf(surface); ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(
        rows + static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface.get()));
    for (int x = 0; x < widthOf(surface); ++x) {
      for (int i = 0; i < 3; ++i) sums[i] += row[x] >> (16 - 8 * i) & 0xff;
    }
  }
  const double count = 255.0 * widthOf(surface) * heightOf(surface);
  return {sums[0] / count, sums[1] / count, sums[2] / count};
}

std::string encodePng(const Surface& surface, Effort effort) {
  cairo_surface_flush(surface.get());
  Writer writer;
  writer.row.resize(static_cast<std::size_t>(widthOf(surface)) * 3);
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
  const bool isWritten = info != nullptr && write(png, info, writer, surface.get(), effort);
  png_destroy_write_struct(&png, &info);
  if (!isWritten) throw std::runtime_error("a picture cannot be written as PNG");
  return std::move(writer.bytes);
}

}  // namespace varnix::drawing
