#include "drawing/difference.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <stdexcept>

#include "ImageIO/decode.h"

namespace varnix::drawing {

namespace {

namespace imageio = host::imageio;

std::string sizeOf(const imageio::Picture& picture) {
  return std::to_string(picture.width) + " x " + std::to_string(picture.height);
}

/// The colour of what is transparent makes no difference.
bool isSamePixel(const std::uint8_t* one, const std::uint8_t* other) {
  return std::memcmp(one, other, 4) == 0 || (one[3] == 0 && other[3] == 0);
}

void makePale(std::uint8_t* pixel) {
  constexpr int kPale = 4;  // a quarter of what it was
  for (int c = 0; c < 3; ++c) pixel[c] = static_cast<std::uint8_t>(255 - (255 - pixel[c]) / kPale);
}

void makeMagenta(std::uint8_t* pixel) {
  pixel[0] = pixel[2] = 255;
  pixel[1] = 0;
}

/// The first picture with marks. Counts the pixels that differ.
imageio::Picture marked(const imageio::Picture& drawn, const imageio::Picture& kept,
                        std::size_t& count) {
  imageio::Picture result = drawn;
  result.hasAlpha = false;
  for (std::size_t i = 0; i < result.rgba.size(); i += 4) {
    std::uint8_t* pixel = &result.rgba[i];
    if (isSamePixel(pixel, &kept.rgba[i])) {
      makePale(pixel);
    } else {
      makeMagenta(pixel);
      ++count;
    }
    pixel[3] = 255;
  }
  return result;
}

}  // namespace

Difference differenceOf(std::string_view drawn, std::string_view kept) {
  std::string problem;
  const auto now = imageio::decode(drawn, &problem);
  if (!now || !problem.empty()) throw std::runtime_error(problem);
  const auto before = imageio::decode(kept, &problem);
  if (!before || !problem.empty()) return {"the kept one cannot be compared: " + problem, ""};
  if (now->width != before->width || now->height != before->height)
    return {sizeOf(*now) + " pixels, the kept one " + sizeOf(*before), ""};
  std::size_t count = 0;
  const imageio::Picture marks = marked(*now, *before, count);
  if (count == 0) return {};
  const std::size_t all = marks.rgba.size() / 4;
  return {std::to_string(count) + " of " + std::to_string(all) + " pixels differ",
          imageio::encodePng(marks).value_or("")};
}

}  // namespace varnix::drawing
