#include "gallery/screens/data_address.h"

#include <memory>
#include <stdexcept>

#include <glib.h>

#include "ImageIO/decode.h"

namespace varnix::screens {

namespace {

constexpr double kQuality = 0.8;

std::string jpegOf(const std::string& png) {
  const auto picture = host::imageio::decode(png);
  auto bytes = picture ? host::imageio::encodeJpeg(*picture, kQuality) : std::nullopt;
  if (!bytes) throw std::runtime_error("a picture cannot be written as JPEG");
  return std::move(*bytes);
}

std::string base64(const std::string& bytes) {
  const std::unique_ptr<char, decltype(&g_free)> text(
      g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size()), &g_free);
  return text.get();
}

}  // namespace

std::string dataAddress(const std::string& png, Packing packing) {
  if (packing == Packing::jpeg) return "data:image/jpeg;base64," + base64(jpegOf(png));
  return "data:image/png;base64," + base64(png);
}

}  // namespace varnix::screens
