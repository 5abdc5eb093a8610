// Reading PNG through libpng.
#include <png.h>

#include <cstring>

#include "ImageIO/formats.h"
#include "ImageIO/png_errors.h"

namespace host::imageio {

namespace {

// Signature, then length and name of the first chunk, which is the header.
constexpr std::size_t kSizeOffset = 16;

/// No deflated byte stands for more.
constexpr std::uint64_t kLargestExpansion = 1032;

std::uint64_t bigEndian(std::string_view bytes, std::size_t at) {
  std::uint64_t value = 0;
  for (char byte : bytes.substr(at, 4)) value = value << 8 | static_cast<std::uint8_t>(byte);
  return value;
}

void take(png_structp png, png_bytep target, std::size_t length) {
  auto& rest = *static_cast<std::string_view*>(png_get_io_ptr(png));
  if (rest.size() < length) png_error(png, "truncated");
  std::memcpy(target, rest.data(), length);
  rest.remove_prefix(length);
}

class PngReader {
 public:
  explicit PngReader(std::string_view bytes)
      : rest_(bytes),
        size_(bytes.size()),
        png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, failPng, ignorePngWarning)) {
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
  }
  ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  bool read(Picture& picture) {
    return info_ != nullptr && guarded<&PngReader::readHeader>(picture) &&
           guarded<&PngReader::readRows>(picture);
  }

 private:
  /// libpng leaves a step by a jump: a step has no local that would have to be destroyed.
  template <void (PngReader::*step)(Picture&)>
  [[gnu::noinline]] bool guarded(Picture& picture) {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    (this->*step)(picture);
    return true;
  }

  void readHeader(Picture& picture) {
    png_set_read_fn(png_, &rest_, take);
    png_set_user_limits(png_, kMaximumSide, kMaximumSide);
    png_set_crc_action(png_, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    // Of profiles, gamma, texts and all that nothing is wanted.
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_read_info(png_, info_);
    picture.width = png_get_image_width(png_, info_);
    picture.height = png_get_image_height(png_, info_);
    picture.hasAlpha = (png_get_color_type(png_, info_) & PNG_COLOR_MASK_ALPHA) != 0 ||
                       png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    // A few bytes must not claim memory for a large picture.
    const std::uint64_t bits = std::uint64_t{png_get_channels(png_, info_)} *
                               png_get_bit_depth(png_, info_) * picture.width * picture.height;
    if (bits / 8 > size_ * kLargestExpansion) png_error(png_, "truncated");
  }

  void readRows(Picture& picture) {
    png_set_expand(png_);
    png_set_scale_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_add_alpha(png_, 0xffff, PNG_FILLER_AFTER);
    const int passes = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    const std::size_t rowBytes = bytesPerRow(picture);
    if (png_get_rowbytes(png_, info_) != rowBytes) png_error(png_, "unexpected rows");
    picture.rgba.resize(rowBytes * picture.height);
    for (int pass = 0; pass < passes; ++pass) {
      for (std::size_t row = 0; row < picture.height; ++row) {
        png_read_row(png_, &picture.rgba[row * rowBytes], nullptr);
      }
    }
    png_read_end(png_, nullptr);
  }

  std::string_view rest_;
  std::size_t size_;
  png_structp png_;
  png_infop info_ = nullptr;
};

}  // namespace

std::optional<Picture> decodePng(std::string_view bytes, std::string& why) {
  why = kDamaged;
  if (bytes.size() < kSizeOffset + 8) return {};
  if (bytes.substr(kSizeOffset - 4, 4) != "IHDR") return {};
  if (std::string problem =
          sizeProblem(bigEndian(bytes, kSizeOffset), bigEndian(bytes, kSizeOffset + 4));
      !problem.empty()) {
    why = problem;
    return {};
  }
  Picture picture;
  if (!PngReader(bytes).read(picture)) return {};
  why.clear();
  return picture;
}

}  // namespace host::imageio
