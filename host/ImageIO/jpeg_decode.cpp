// Reading JPEG through libjpeg-turbo.
#include <csetjmp>
#include <cstdio>

#include <jpeglib.h>

#include <jerror.h>

#include <cstdlib>
#include <vector>

#include "ImageIO/color_conversion.h"
#include "ImageIO/exif.h"
#include "ImageIO/formats.h"

namespace host::imageio {

namespace {

// Each scan of a progressive picture covers all of it, but may take only a few bytes.
constexpr int kMaximumScans = 64;

/// Why reading ended, and where to jump then.
struct ReadingErrors : jpeg_error_mgr {
  std::jmp_buf way;
  const char* reason;
  bool isBehindHeader;
  bool isDamaged;
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

/// After a warning the library continues with what it has.
void weigh(j_common_ptr info, int level) {
  if (level >= 0) return;
  switch (info->err->msg_code) {
    case JWRN_ADOBE_XFORM:
    case JWRN_EXTRANEOUS_DATA:
    case JWRN_JFIF_MAJOR:
      return;
    default:
      break;
  }
  auto* errors = static_cast<ReadingErrors*>(info->err);
  auto* reading = reinterpret_cast<j_decompress_ptr>(info);
  errors->isDamaged = true;
  // Rows come in groups as high as a block: before the first group there are none.
  const bool hasRow =
      errors->isBehindHeader && (reading->input_iMCU_row > 0 || reading->input_scan_number > 1);
  if (!hasRow) leave(info, kDamaged);
}

void countScans(j_common_ptr info) {
  if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > kMaximumScans) {
    leave(info, "the image has too many scans");
  }
}

/// Converts four inks to four bytes. In files of Adobe's programs 255 means no ink, in others 0.
void convertInks(std::vector<std::uint8_t>& row, bool isInverted) {
  const unsigned flip = isInverted ? 0 : 255;
  for (std::size_t i = 0; i < row.size(); i += kBytesPerPixel) {
    const unsigned light = row[i + 3] ^ flip;
    for (std::size_t c = i; c < i + 3; ++c) {
      row[c] = static_cast<std::uint8_t>(((row[c] ^ flip) * light + 127) / 255);
    }
    row[i + 3] = 255;
  }
}

class Reader {
 public:
  Reader(std::string_view bytes, Rows& rows) : bytes_(bytes), rows_(rows) {
    jpeg_std_error(&errors_);
    errors_.error_exit = fail;
    errors_.emit_message = weigh;
    progress_.progress_monitor = countScans;
    info_.err = &errors_;
  }
  ~Reader() { jpeg_destroy_decompress(&info_); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  bool read(std::string& problem) {
    const bool hasHeader = guarded<&Reader::readHeader>();
    // The size is known even if the library refuses it.
    if (hasHeader || errors_.msg_code == JERR_IMAGE_TOO_BIG) {
      problem = sizeProblem(info_.image_width, info_.image_height, kMaximumJpegSide);
      if (!problem.empty()) return false;
    }
    if (hasHeader) begin();
    const bool isWhole = hasHeader && guarded<&Reader::readRows>();
    if (!isWhole && !hasRow_) {
      problem = errors_.reason;
      return false;
    }
    problem = isWhole && !errors_.isDamaged ? "" : kPartial;
    return true;
  }

 private:
  /// The library leaves a step by longjmp, so a step has no local that needs destruction.
  template <void (Reader::*step)()>
  [[gnu::noinline]] bool guarded() {
    if (setjmp(errors_.way) != 0) return false;
    (this->*step)();
    return true;
  }

  void readHeader() {
    jpeg_create_decompress(&info_);
    jpeg_mem_src(&info_, reinterpret_cast<const unsigned char*>(bytes_.data()), bytes_.size());
    jpeg_save_markers(&info_, JPEG_APP0 + 1, 0xffff);
    jpeg_save_markers(&info_, JPEG_APP0 + 2, 0xffff);
    jpeg_read_header(&info_, TRUE);
  }

  void begin() {
    const bool hasInks = info_.jpeg_color_space == JCS_CMYK || info_.jpeg_color_space == JCS_YCCK;
    const bool isGrey = info_.jpeg_color_space == JCS_GRAYSCALE;
    info_.out_color_space = hasInks ? JCS_CMYK : JCS_EXT_RGBA;
    areInverted_ = info_.saw_Adobe_marker == TRUE;
    Header header;
    header.width = info_.image_width;
    header.height = info_.image_height;
    header.isGrey = isGrey;
    header.orientation = orientation();
    row_.resize(header.bytesPerRow());
    const Samples inks = areInverted_ ? Samples::invertedInks : Samples::inks;
    useProfile(hasInks ? inks : isGrey ? Samples::grey : Samples::rgb);
    wantsRows_ = rows_.begin(header);
  }

  int orientation() const {
    for (auto* marker = info_.marker_list; marker != nullptr; marker = marker->next) {
      const std::string_view data(reinterpret_cast<const char*>(marker->data), marker->data_length);
      if (marker->marker == JPEG_APP0 + 1 && data.starts_with("Exif"))
        return orientationFromExif(marker->data, marker->data_length);
    }
    return 0;
  }

  void useProfile(Samples samples) {
    if (!guarded<&Reader::readProfile>() || profile_ == nullptr) return;
    colors_.useProfile({reinterpret_cast<const char*>(profile_), profileLength_}, samples);
    std::free(profile_);
  }
  /// The profile comes in pieces.
  void readProfile() {
    if (jpeg_read_icc_profile(&info_, &profile_, &profileLength_) == FALSE) profile_ = nullptr;
  }

  void readRows() {
    info_.progress = &progress_;
    errors_.isBehindHeader = true;
    if (!wantsRows_ && jpeg_has_multiple_scans(&info_) == TRUE) return findRow();
    jpeg_start_decompress(&info_);
    while (info_.output_scanline < info_.output_height) {
      JSAMPROW row = row_.data();
      jpeg_read_scanlines(&info_, &row, 1);
      if (colors_.isNeeded()) colors_.apply(row_.data(), info_.output_width);
      else if (info_.out_color_space == JCS_CMYK) convertInks(row_, areInverted_);
      hasRow_ = true;
      if (!wantsRows_ || !rows_.take(row_.data())) return;
    }
    jpeg_finish_decompress(&info_);
  }

  /// If there are several scans, the later ones are not waited for.
  void findRow() {
    info_.buffered_image = TRUE;
    jpeg_start_decompress(&info_);
    for (int status = JPEG_SUSPENDED; status != JPEG_ROW_COMPLETED &&
                                      status != JPEG_SCAN_COMPLETED && status != JPEG_REACHED_EOI;)
      status = jpeg_consume_input(&info_);
    hasRow_ = true;
  }

  std::string_view bytes_;
  Rows& rows_;
  bool hasRow_ = false;
  bool wantsRows_ = true;
  bool areInverted_ = false;
  JOCTET* profile_ = nullptr;
  unsigned profileLength_ = 0;
  std::vector<std::uint8_t> row_;
  ColorConversion colors_;
  ReadingErrors errors_{};
  jpeg_progress_mgr progress_{};
  jpeg_decompress_struct info_{};
};

}  // namespace

bool readJpeg(std::string_view bytes, Rows& rows, std::string& problem) {
  return Reader(bytes, rows).read(problem);
}

}  // namespace host::imageio
