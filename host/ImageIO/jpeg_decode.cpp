// Reading JPEG through libjpeg-turbo.
#include <csetjmp>
#include <cstdio>

#include <jpeglib.h>

#include <jerror.h>

#include "ImageIO/exif.h"
#include "ImageIO/formats.h"

namespace host::imageio {

namespace {

// Every scan of a progressive picture goes over all of it, and may take a few bytes only.
constexpr int kMaximumScans = 64;

/// Why reading ended, and the way out.
struct ReadingErrors : jpeg_error_mgr {
  std::jmp_buf way;
  const char* reason;
};

[[noreturn]] void leave(j_common_ptr info, const char* reason) {
  auto* errors = static_cast<ReadingErrors*>(info->err);
  errors->reason = reason;
  std::longjmp(errors->way, 1);
}

[[noreturn]] void fail(j_common_ptr info) {
  switch (info->err->msg_code) {
    case JERR_EMPTY_IMAGE:
      leave(info, "the image has no pixels");
    case JERR_IMAGE_TOO_BIG:
      leave(info, "the image is too large");
    case JERR_BAD_PRECISION:
    case JERR_SOF_UNSUPPORTED:
    case JERR_CONVERSION_NOTIMPL:
    case JERR_COMPONENT_COUNT:
      leave(info, kUnsupported);
    default:
      leave(info, kDamaged);
  }
}

/// The library would go on after a warning with a picture of its own making.
void weigh(j_common_ptr info, int level) {
  if (level >= 0) return;
  switch (info->err->msg_code) {
    case JWRN_ADOBE_XFORM:
    case JWRN_EXTRANEOUS_DATA:
    case JWRN_JFIF_MAJOR:
      return;
    default:
      leave(info, kDamaged);
  }
}

void countScans(j_common_ptr info) {
  if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > kMaximumScans) {
    leave(info, "the image has too many scans");
  }
}

/// Four inks for four bytes. Where Adobe's programs wrote the file 255 is no ink, else 0.
void convertInks(std::vector<std::uint8_t>& pixels, bool isInverted) {
  for (std::size_t i = 0; i < pixels.size(); i += kBytesPerPixel) {
    const unsigned flip = isInverted ? 0 : 255;
    const unsigned light = pixels[i + 3] ^ flip;
    for (std::size_t c = i; c < i + 3; ++c) {
      pixels[c] = static_cast<std::uint8_t>(((pixels[c] ^ flip) * light + 127) / 255);
    }
    pixels[i + 3] = 255;
  }
}

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {
    jpeg_std_error(&errors_);
    errors_.error_exit = fail;
    errors_.emit_message = weigh;
    progress_.progress_monitor = countScans;
    info_.err = &errors_;
  }
  ~Reader() { jpeg_destroy_decompress(&info_); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  bool read(Picture& picture, std::string& why) {
    const bool hasHeader = guarded<&Reader::readHeader>(picture);
    // The size is there even where the library refuses it.
    if (hasHeader || errors_.msg_code == JERR_IMAGE_TOO_BIG) {
      why = sizeProblem(info_.image_width, info_.image_height);
      if (!why.empty()) return false;
    }
    if (!hasHeader || !guarded<&Reader::readRows>(picture)) {
      why = errors_.reason;
      return false;
    }
    if (info_.out_color_space == JCS_CMYK) {
      convertInks(picture.rgba, info_.saw_Adobe_marker == TRUE);
    }
    return true;
  }

 private:
  /// The library leaves a step by a jump: a step has no local that would have to be destroyed.
  template <void (Reader::*step)(Picture&)>
  [[gnu::noinline]] bool guarded(Picture& picture) {
    if (setjmp(errors_.way) != 0) return false;
    (this->*step)(picture);
    return true;
  }

  void readHeader(Picture& picture) {
    jpeg_create_decompress(&info_);
    jpeg_mem_src(&info_, reinterpret_cast<const unsigned char*>(bytes_.data()), bytes_.size());
    jpeg_save_markers(&info_, JPEG_APP0 + 1, 0xffff);
    jpeg_read_header(&info_, TRUE);
    picture.width = info_.image_width;
    picture.height = info_.image_height;
    picture.hasAlpha = false;
    picture.orientation = orientation();
  }

  int orientation() const {
    for (auto* marker = info_.marker_list; marker != nullptr; marker = marker->next) {
      const std::string_view data(reinterpret_cast<const char*>(marker->data), marker->data_length);
      if (data.starts_with("Exif")) return orientationFromExif(marker->data, marker->data_length);
    }
    return 0;
  }

  void readRows(Picture& picture) {
    const bool hasInks = info_.jpeg_color_space == JCS_CMYK || info_.jpeg_color_space == JCS_YCCK;
    info_.out_color_space = hasInks ? JCS_CMYK : JCS_EXT_RGBA;
    info_.progress = &progress_;
    jpeg_start_decompress(&info_);
    const std::size_t rowBytes = bytesPerRow(picture);
    // Row by row, so that a few bytes do not fill the memory for a large picture.
    picture.rgba.reserve(rowBytes * picture.height);
    while (info_.output_scanline < info_.output_height) {
      const std::size_t filled = picture.rgba.size();
      picture.rgba.resize(filled + rowBytes);
      JSAMPROW row = &picture.rgba[filled];
      jpeg_read_scanlines(&info_, &row, 1);
    }
    jpeg_finish_decompress(&info_);
  }

  std::string_view bytes_;
  ReadingErrors errors_{};
  jpeg_progress_mgr progress_{};
  jpeg_decompress_struct info_{};
};

}  // namespace

std::optional<Picture> decodeJpeg(std::string_view bytes, std::string& why) {
  Picture picture;
  if (!Reader(bytes).read(picture, why)) return {};
  return picture;
}

}  // namespace host::imageio
