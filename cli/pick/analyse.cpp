#include "pick/analyse.h"

#include <algorithm>

#include "Foundation/text.h"
#include "color/AverageColor.h"
#include "color/ImportantColor.h"
#include "common/errors.h"
#include "objc/autorelease_pool.h"
#include "pick/card.h"
#include "pick/image_file.h"
#include "pick/pixels.h"
#include "picker/frame_size.h"

namespace varnix::cli::pick {

namespace {

const char* nameOf(varnix::Color::ImportantRule rule) {
  switch (rule) {
    case varnix::Color::ImportantRule::background:
      return "background";
    case varnix::Color::ImportantRule::primary:
      return "primary";
    case varnix::Color::ImportantRule::secondary:
      return "secondary";
    case varnix::Color::ImportantRule::average:
      return "average";
  }
  return "";
}

/// The quarter of the frame that is used. A pass always leaves the last pixel opaque; if it is not,
/// no pass was drawn.
std::vector<CountedColor> frameOf(CQColorPicker* picker) {
  // After a pass the thread has its former context again, but the frame is in the picker's.
  send(picker, CQColorPicker::setupContext);
  auto* dumped = send(picker, CQColorPicker::dumpImage, kTotalWidth, kTotalWidth, nullptr);
  const std::string bytes = takeRawBytes(dumped);
  auto byteAt = [&](std::size_t x, std::size_t y, std::size_t channel) {
    return static_cast<std::uint8_t>(bytes[(y * kTotalWidth + x) * 4 + channel]);
  };
  if (bytes.size() != std::size_t{kTotalWidth} * kTotalWidth * 4 ||
      byteAt(kTotalWidth - 1, kTotalWidth - 1, 3) != 255) {
    throw Failure("cannot pick colours", "no OpenGL ES");
  }
  std::vector<CountedColor> frame;
  for (std::size_t y = 0; y < kProccesedWidth; ++y) {
    for (std::size_t x = 0; x < kProccesedWidth; ++x) {
      frame.push_back({{byteAt(x, y, 0), byteAt(x, y, 1), byteAt(x, y, 2)}, byteAt(x, y, 3)});
    }
  }
  return frame;
}

/// In descending order of count; equal counts stay in the frame's order.
std::vector<CountedColor> runnersUp(const std::vector<CountedColor>& frame, const Color& background,
                                    std::size_t limit) {
  std::vector<CountedColor> others;
  for (const CountedColor& pixel : frame) {
    auto isSame = [&](const CountedColor& other) { return other.color == pixel.color; };
    if (pixel.color == background || std::ranges::any_of(others, isSame)) continue;
    others.insert(
        std::ranges::upper_bound(others, pixel.count, std::ranges::greater{}, &CountedColor::count),
        pixel);
  }
  others.resize(std::min(others.size(), limit));
  return others;
}

void takePictures(CQColorPicker* picker, UIImage* image, Analysis& result) {
  const auto size = send(image, UIImage::size);
  result.width = static_cast<unsigned>(size.width);
  result.height = static_cast<unsigned>(size.height);
  const auto [width, height] = previewSize(result.width, result.height);
  result.preview = pixelsOf(image, width, height);
  auto* squeezed = send(picker, CQColorPicker::scaleImage, image, kTotalWidth, kTotalWidth);
  result.squeezed = pixelsOf(squeezed, kTotalWidth, kTotalWidth);
}

void pickColors(CQColorPicker* picker, UIImage* image, const Request& request, Analysis& result) {
  auto* scheme = send(picker, CQColorPicker::colorSchemeFromImage, image);
  result.frame = frameOf(picker);
  result.background = colorOf(send(scheme, CQColorScheme::backgroundColor));
  result.primary = colorOf(send(scheme, CQColorScheme::primaryTextColor));
  result.secondary = colorOf(send(scheme, CQColorScheme::secondaryTextColor));
  result.average = colorOf(varnix::Color::AverageColor(image));
  result.runnersUp = runnersUp(result.frame, result.background, request.runnersUp);
  if (request.wantsPicture) takePictures(picker, image, result);
  // Last, because it draws a pass in a context of its own.
  const auto choice = varnix::Color::chooseImportantColor(image);
  result.important = colorOf(choice.color);
  result.rule = nameOf(choice.rule);
  result.isSaturated = choice.isSaturated;
}

}  // namespace

Analysis analyse(CQColorPicker* picker, const std::string& file, const Request& request) {
  const objc::AutoreleasePool pool;
  Analysis result;
  result.file = file;
  try {
    const Strong<UIImage> image = imageFromFile(file);
    pickColors(picker, image, request, result);
    result.warning = host::text(send<NSString*>(image.get(), "standIn_problem"_sel));
  } catch (const Unreadable& error) {
    result.error = error.what();
  }
  return result;
}

}  // namespace varnix::cli::pick
