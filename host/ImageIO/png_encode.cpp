// Writing PNG through libpng.
#include "ImageIO/formats.h"
#include "ImageIO/png_errors.h"

namespace host::imageio {

namespace {

void append(png_structp png, png_bytep bytes, std::size_t length) {
  static_cast<std::string*>(png_get_io_ptr(png))
      ->append(reinterpret_cast<const char*>(bytes), length);
}

class PngWriter {
 public:
  explicit PngWriter(const Picture& picture)
      : picture_(picture),
        png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, failPng, ignorePngWarning)) {
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
  }
  ~PngWriter() { png_destroy_write_struct(&png_, &info_); }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;

  /// libpng leaves by longjmp, so no local here needs destruction.
  bool write(std::string& bytes) {
    if (info_ == nullptr || setjmp(png_jmpbuf(png_)) != 0) return false;
    writeAll(bytes);
    return true;
  }

 private:
  void writeAll(std::string& bytes) {
    png_set_write_fn(png_, &bytes, append, nullptr);
    png_set_IHDR(png_, info_, picture_.width, picture_.height, 8,
                 picture_.hasAlpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    // Most files go to another process of ours and are read once.
    png_set_compression_level(png_, 1);
    png_set_filter(png_, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_write_info(png_, info_);
    // Skips every fourth byte.
    if (!picture_.hasAlpha) png_set_filler(png_, 0, PNG_FILLER_AFTER);
    for (std::size_t row = 0; row < picture_.height; ++row) {
      png_write_row(png_, &picture_.rgba[row * bytesPerRow(picture_)]);
    }
    png_write_end(png_, info_);
  }

  const Picture& picture_;
  png_structp png_;
  png_infop info_ = nullptr;
};

}  // namespace

std::optional<std::string> encodePng(const Picture& picture) {
  std::string bytes;
  if (!isConsistent(picture) || !PngWriter(picture).write(bytes)) return {};
  return bytes;
}

}  // namespace host::imageio
