#include "CoreGraphics/file_image.h"

#include "CoreGraphics/objects.h"
#include "objc/owned.h"

namespace host {

namespace {

std::string_view bytesOf(NSData* file) {
  return {static_cast<const char*>(send(file, NSData::bytes)), send(file, NSData::length)};
}

/// A process asks for the same icon again and again, reading the file each time.
std::shared_ptr<SmallCopies> copiesFor(std::string_view bytes) {
  static std::mutex guard;
  static std::size_t length, hash;
  static std::shared_ptr<SmallCopies> last;
  const std::size_t newHash = std::hash<std::string_view>{}(bytes);
  const std::lock_guard lock(guard);
  if (last == nullptr || length != bytes.size() || hash != newHash)
    last = std::make_shared<SmallCopies>();
  length = bytes.size();
  hash = newHash;
  return last;
}

constexpr PixelFormat rgba(bool hasAlpha) {
  return {8, 32, 3, hasAlpha ? kCGImageAlphaLast : kCGImageAlphaNoneSkipLast};
}

}  // namespace

/// Keeps the rows of a picture.
class FileImage::Loading final : public imageio::Rows {
 public:
  Loading(FileImage& image, std::size_t mostPixels) : image_(image), mostPixels_(mostPixels) {}

  bool begin(const imageio::Header& header) override {
    image_.header_ = header;
    return header.pixels() <= mostPixels_;
  }
  bool take(const std::uint8_t* row) override {
    auto& pixels = image_.pixels_;
    if (pixels.empty()) pixels.reserve(image_.size());
    if (!image_.header_.isGrey) pixels.insert(pixels.end(), row, row + image_.header_.width * 4UL);
    else
      for (std::size_t x = 0; x < image_.header_.width; ++x) pixels.push_back(row[x * 4]);
    return true;
  }

 private:
  FileImage& image_;
  std::size_t mostPixels_;
};

/// Collects rows, converted to cairo's pixels.
class FileImage::Strips final : public imageio::Rows {
 public:
  Strips(const imageio::Header& header, const std::function<void(const PixelRows&)>& take)
      : width_(header.width),
        missing_(header.height),
        format_(rgba(header.hasAlpha)),
        take_(take),
        strip_(width_ * kRows) {}

  bool begin(const imageio::Header& /*header*/) override { return true; }
  bool take(const std::uint8_t* row) override {
    unpackRow(format_, row, width_, nullptr, &strip_[rows_ * width_]);
    --missing_;
    if (++rows_ == kRows) handOut();
    return true;
  }
  void finish() {
    const std::vector<std::uint8_t> nothing(width_ * 4);
    while (missing_ > 0) take(nothing.data());
    if (rows_ > 0) handOut();
  }

 private:
  static constexpr std::size_t kRows = 16;

  void handOut() {
    take_({strip_.data(), width_, width_, rows_});
    rows_ = 0;
  }

  std::size_t width_;
  std::size_t missing_;
  PixelFormat format_;
  const std::function<void(const PixelRows&)>& take_;
  std::vector<std::uint32_t> strip_;
  std::size_t rows_ = 0;
};

FileImage::FileImage(NSData* file) : file_(Strong<NSData>::retain(file)) {
  Loading loading(*this, kMostKeptPixels);
  std::string problem;
  isImage_ = imageio::readRows(bytesOf(file), loading, problem);
  copies_ = pixels_.empty() ? copiesFor(bytesOf(file)) : std::make_shared<SmallCopies>();
  if (!isImage_ || pixels_.empty()) return;
  copies_->noteProblem(problem);
  std::call_once(decoded_, [this] {
    pixels_.resize(size());
    isDecoded_ = true;
  });
  file_ = {};
}

PixelFormat FileImage::format() const {
  return header_.isGrey ? PixelFormat{8, 8, 1, kCGImageAlphaNone} : rgba(header_.hasAlpha);
}

void FileImage::decodeAll() {
  Loading loading(*this, imageio::kMaximumPixels);
  std::string problem;
  imageio::readRows(bytesOf(file_), loading, problem);
  copies_->noteProblem(problem);
  pixels_.resize(size());
  isDecoded_ = true;
}

const std::uint8_t* FileImage::pixels() {
  std::call_once(decoded_, [this] { decodeAll(); });
  return pixels_.data();
}

void FileImage::readStrips(const std::function<void(const PixelRows&)>& take) {
  Strips strips(header_, take);
  std::string problem;
  imageio::readRows(bytesOf(file_), strips, problem);
  copies_->noteProblem(problem);
  strips.finish();
}

CGImageRef imageFromFile(NSData* file, NSInteger& orientation) {
  if (file == nullptr) return nullptr;
  const auto image = std::make_shared<FileImage>(file);
  if (!image->isImage()) return nullptr;
  const imageio::Header& header = image->header();
  orientation = header.orientation;
  const auto provider = Strong<CGDataProvider>::adopt(
      CGDataProviderCreateWithData(nullptr, nullptr, image->size(), nullptr));
  provider->file = image;
  const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(
      header.isGrey ? CGColorSpaceCreateDeviceGray() : CGColorSpaceCreateDeviceRGB());
  const PixelFormat format = image->format();
  const CGImageRef made =
      CGImageCreate(header.width, header.height, format.bitsPerComponent, format.bitsPerPixel,
                    header.width * format.bytesPerPixel(), space, format.info, provider, nullptr,
                    true, CGColorRenderingIntent::standard);
  if (made == nullptr) return nullptr;
  made->file = image;
  made->copies = image->copies();
  return made;
}

std::string problemOf(CGImageRef image) {
  if (image == nullptr || image->file == nullptr) return {};
  // The mean is kept, and is usually requested later.
  if (!image->file->isDecoded()) image->shrunk(1, 1);
  return image->copies->problem();
}

}  // namespace host
