// Reads PNG with libpng, which is handed the bytes: every row comes as soon as its bytes are there,
// whatever follows in the file.
#include <png.h>

#include <vector>

#include "ImageIO/color_conversion.h"
#include "ImageIO/formats.h"
#include "ImageIO/png_errors.h"
#include "ImageIO/png_optimised.h"

namespace host::imageio {

namespace {

/// A deflated byte never stands for more bytes than this.
constexpr std::uint64_t kLargestExpansion = 1032;

/// The gamma that writers of sRGB pictures store.
constexpr double kSrgbGamma = 0.45455;

/// Size of a chunk's length and name.
constexpr std::size_t kLengthAndName = 8;

std::uint64_t bigEndian(std::string_view bytes, std::size_t at) {
  std::uint64_t value = 0;
  for (char byte : bytes.substr(at, 4)) value = value << 8 | static_cast<std::uint8_t>(byte);
  return value;
}

bool isClose(double a, double b, double tolerance) {
  return a - b < tolerance && b - a < tolerance;
}

bool areSrgbs(const Chromaticities& places) {
  // Files have five digits, and writers round to three.
  auto areClose = [](const double(&a)[2], const double(&b)[2]) {
    return isClose(a[0], b[0], 0.002) && isClose(a[1], b[1], 0.002);
  };
  return areClose(places.white, kSrgbPlaces.white) && areClose(places.red, kSrgbPlaces.red) &&
         areClose(places.green, kSrgbPlaces.green) && areClose(places.blue, kSrgbPlaces.blue);
}

class PngReader {
 public:
  PngReader(std::string_view bytes, Rows& rows)
      : bytes_(bytes),
        rows_(rows),
        isOptimised_(isOptimised(bytes)),
        png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, failPng, ignorePngWarning)) {
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
  }
  ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  /// Returns whether at least one row came.
  bool read(std::string& problem) {
    if (info_ == nullptr) return false;
    const bool isSound = guarded<&PngReader::readAll>();
    if (!whole_.empty() && hasRow_) handOutWhole();
    const bool isWhole = isSound && hasEnded_ && hasAllRows_;
    if (!isWhole && !isStopped_) problem = kPartial;
    return hasRow_;
  }

 private:
  /// libpng leaves a step by longjmp, so nothing below it has a local that needs destruction.
  template <void (PngReader::*step)()>
  [[gnu::noinline]] bool guarded() {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    (this->*step)();
    return true;
  }

  static PngReader& of(png_structp png) {
    return *static_cast<PngReader*>(png_get_progressive_ptr(png));
  }

  void readAll() {
    png_set_progressive_read_fn(
        png_, this, [](png_structp png, png_infop) { of(png).begin(); },
        [](png_structp png, png_bytep row, png_uint_32 y, int pass) {
          of(png).takeRow(row, y, pass);
        },
        [](png_structp png, png_infop) { of(png).hasEnded_ = true; });
    png_set_user_limits(png_, kMaximumSide, kMaximumSide);
    png_set_crc_action(png_, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    // Ignore all optional chunks except those that define the colours.
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    static const png_byte kColors[] = "cHRM\0gAMA\0iCCP\0sRGB";
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_AS_DEFAULT, kColors, 4);
    if (!isOptimised_) return process(bytes_);
    handOutAsOrdinary(
        bytes_,
        [](void* reader, std::string_view piece) {
          static_cast<PngReader*>(reader)->processOptimised(piece);
        },
        this);
  }

  /// Hides what follows the data: at the next chunk libpng would report that the data's own
  /// checksum is missing.
  void processOptimised(std::string_view piece) {
    const bool isBehindData =
        hasAllRows_ && piece.size() >= kLengthAndName && piece.substr(4, 4) != "IDAT";
    if (isBehindData) hasEnded_ = true;
    else if (!hasEnded_) process(piece);
  }

  void process(std::string_view piece) {
    // libpng does not change the bytes.
    auto* start = reinterpret_cast<png_bytep>(const_cast<char*>(piece.data()));
    png_process_data(png_, info_, start, piece.size());
  }

  void begin() {
    const int type = png_get_color_type(png_, info_);
    header_.width = png_get_image_width(png_, info_);
    header_.height = png_get_image_height(png_, info_);
    const bool hasTransparent = png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    header_.hasAlpha = (type & PNG_COLOR_MASK_ALPHA) != 0 || hasTransparent;
    header_.isGrey = type == PNG_COLOR_TYPE_GRAY && !header_.hasAlpha;
    isPremultiplied_ = isOptimised_ && type == PNG_COLOR_TYPE_RGB_ALPHA;
    isInterlaced_ = png_get_interlace_type(png_, info_) != PNG_INTERLACE_NONE;
    // A few bytes must not make the memory of a large picture be allocated.
    const std::uint64_t bits = std::uint64_t{png_get_channels(png_, info_)} *
                               png_get_bit_depth(png_, info_) * header_.pixels();
    if (isInterlaced_ && bits / 8 > bytes_.size() * kLargestExpansion) png_error(png_, "truncated");
    findColors((type & PNG_COLOR_MASK_COLOR) != 0 ? Samples::rgb : Samples::grey);
    wantsRows_ = rows_.begin(header_);

    png_set_expand(png_);
    png_set_scale_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_add_alpha(png_, 0xffff, PNG_FILLER_AFTER);
    if (isOptimised_ && type != PNG_COLOR_TYPE_PALETTE) png_set_bgr(png_);
    png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    if (png_get_rowbytes(png_, info_) != header_.bytesPerRow()) png_error(png_, "unexpected rows");
    if (isInterlaced_ && wantsRows_) {
      whole_.resize(header_.bytesPerRow() * header_.height);
      if (!header_.hasAlpha) makeOpaque(whole_);
    }
    // Errors in the chunks before the data are tolerated; pixels are never guessed.
    png_set_benign_errors(png_, 0);
  }

  void findColors(Samples samples) {
    // libpng also reports sRGB for the profiles of sRGB that it knows.
    if (png_get_valid(png_, info_, PNG_INFO_sRGB) != 0) return;
    png_charp name = nullptr;
    png_bytep profile = nullptr;
    png_uint_32 length = 0;
    int method = 0;
    if (png_get_iCCP(png_, info_, &name, &method, &profile, &length) != 0)
      return colors_.useProfile({reinterpret_cast<const char*>(profile), length}, samples);
    double gamma = 0;
    if (png_get_gAMA(png_, info_, &gamma) == 0 || isClose(gamma, kSrgbGamma, 0.005)) gamma = 0;
    Chromaticities places = kSrgbPlaces;
    if (png_get_cHRM(png_, info_, &places.white[0], &places.white[1], &places.red[0],
                     &places.red[1], &places.green[0], &places.green[1], &places.blue[0],
                     &places.blue[1]) == 0 ||
        areSrgbs(places))
      places = kSrgbPlaces;
    if (gamma > 0 || !areSrgbs(places)) colors_.useGamma(gamma, places, samples);
  }

  void takeRow(png_bytep row, png_uint_32 y, int pass) {
    constexpr int kLastPass = 6;
    hasAllRows_ = y + 1 == header_.height && (!isInterlaced_ || pass == kLastPass);
    if (row == nullptr) return;
    hasRow_ = true;
    if (!wantsRows_) stop();
    if (!whole_.empty())
      return png_progressive_combine_row(png_, &whole_[y * header_.bytesPerRow()], row);
    if (!handOut(row)) stop();
  }

  [[noreturn]] void stop() {
    isStopped_ = true;
    png_error(png_, "enough");
  }

  void handOutWhole() {
    while (taken_ < header_.height && !isStopped_)
      isStopped_ = !handOut(&whole_[taken_ * header_.bytesPerRow()]);
  }

  bool handOut(std::uint8_t* row) {
    if (isPremultiplied_) divideByAlpha(row, header_.width);
    colors_.apply(row, header_.width);
    ++taken_;
    return rows_.take(row);
  }

  std::string_view bytes_;
  Rows& rows_;
  bool isOptimised_;
  bool isInterlaced_ = false;
  bool isPremultiplied_ = false;
  bool hasRow_ = false;
  bool hasEnded_ = false;
  bool isStopped_ = false;
  bool wantsRows_ = true;
  bool hasAllRows_ = false;
  Header header_;
  ColorConversion colors_;
  std::size_t taken_ = 0;            ///< rows already handed out
  std::vector<std::uint8_t> whole_;  ///< an interlaced picture, whose rows come in passes
  png_structp png_;
  png_infop info_ = nullptr;
};

}  // namespace

bool readPng(std::string_view bytes, Rows& rows, std::string& problem) {
  problem = kDamaged;
  // Length and name of the first chunk, which is the header, then the size.
  const std::size_t header = headerAt(bytes);
  if (bytes.size() < header + 16 || bytes.substr(header + 4, 4) != "IHDR") return false;
  problem = sizeProblem(bigEndian(bytes, header + 8), bigEndian(bytes, header + 12), kMaximumSide);
  if (!problem.empty()) return false;
  std::string damage;
  if (PngReader(bytes, rows).read(damage)) {
    problem = damage;
    return true;
  }
  problem = kDamaged;
  return false;
}

}  // namespace host::imageio
