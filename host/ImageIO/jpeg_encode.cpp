// Writing JPEG through libjpeg-turbo.
#include <csetjmp>
#include <cstdio>

#include <jpeglib.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "ImageIO/exif.h"
#include "ImageIO/formats.h"

namespace host::imageio {

namespace {

// From this quality on, colours are stored as finely as brightness.
constexpr double kFullColorQuality = 0.9;

struct WritingErrors : jpeg_error_mgr {
  std::jmp_buf way;
};

[[noreturn]] void leave(j_common_ptr info) {
  std::longjmp(static_cast<WritingErrors*>(info->err)->way, 1);
}

/// Appends what the library writes to a string.
struct Sink : jpeg_destination_mgr {
  std::string bytes;
  std::array<JOCTET, 16'384> block;

  static Sink& of(j_compress_ptr info) { return *static_cast<Sink*>(info->dest); }
  void append(std::size_t length) {
    bytes.append(reinterpret_cast<const char*>(block.data()), length);
  }
  void restart() {
    next_output_byte = block.data();
    free_in_buffer = block.size();
  }
};

void begin(j_compress_ptr info) { Sink::of(info).restart(); }

boolean flush(j_compress_ptr info) {
  Sink& sink = Sink::of(info);
  sink.append(sink.block.size());
  sink.restart();
  return TRUE;
}

void end(j_compress_ptr info) {
  Sink& sink = Sink::of(info);
  sink.append(sink.block.size() - sink.free_in_buffer);
}

void layOnWhite(const std::uint8_t* rgba, bool hasAlpha, std::vector<JSAMPLE>& row) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    const std::uint8_t* pixel = rgba + i / 3 * kBytesPerPixel;
    const unsigned alpha = hasAlpha ? pixel[3] : 255;
    row[i] = static_cast<JSAMPLE>((pixel[i % 3] * alpha + 255 * (255 - alpha) + 127) / 255);
  }
}

class Writer {
 public:
  Writer(const Picture& picture, double quality) : picture_(picture), row_(picture.width * 3UL) {
    quality_ = quality > 0 ? std::min(quality, 1.0) : 0;  // NaN counts as 0 too
    if (picture.orientation != 0) exif_ = exifWithOrientation(picture.orientation);
    jpeg_std_error(&errors_);
    errors_.error_exit = leave;
    errors_.output_message = [](j_common_ptr) {};
    sink_.init_destination = begin;
    sink_.empty_output_buffer = flush;
    sink_.term_destination = end;
    info_.err = &errors_;
  }
  ~Writer() { jpeg_destroy_compress(&info_); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  /// The library leaves by longjmp, so no local here needs destruction.
  bool write() {
    if (setjmp(errors_.way) != 0) return false;
    writeAll();
    return true;
  }
  std::string& bytes() { return sink_.bytes; }

 private:
  void writeAll() {
    jpeg_create_compress(&info_);
    info_.dest = &sink_;
    info_.image_width = picture_.width;
    info_.image_height = picture_.height;
    info_.input_components = 3;
    info_.in_color_space = JCS_RGB;
    jpeg_set_defaults(&info_);
    jpeg_set_quality(&info_, static_cast<int>(std::lround(quality_ * 100)), TRUE);
    if (quality_ >= kFullColorQuality) {
      info_.comp_info[0].h_samp_factor = info_.comp_info[0].v_samp_factor = 1;
    }
    jpeg_start_compress(&info_, TRUE);
    if (!exif_.empty()) {
      jpeg_write_marker(&info_, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(exif_.data()),
                        static_cast<unsigned>(exif_.size()));
    }
    while (info_.next_scanline < info_.image_height) {
      layOnWhite(&picture_.rgba[info_.next_scanline * bytesPerRow(picture_)], picture_.hasAlpha,
                 row_);
      JSAMPROW row = row_.data();
      jpeg_write_scanlines(&info_, &row, 1);
    }
    jpeg_finish_compress(&info_);
  }

  const Picture& picture_;
  double quality_;
  std::string exif_;
  std::vector<JSAMPLE> row_;
  WritingErrors errors_{};
  Sink sink_{};
  jpeg_compress_struct info_{};
};

}  // namespace

std::optional<std::string> encodeJpeg(const Picture& picture, double quality) {
  if (!isConsistent(picture)) return {};
  Writer writer(picture, quality);
  if (!writer.write()) return {};
  return std::move(writer.bytes());
}

}  // namespace host::imageio
