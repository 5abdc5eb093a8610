#include "pictures/disc.h"

#include "pictures/pen.h"
#include "settings/scope.h"

namespace varnix::pane {

namespace {

constexpr CGFloat kSide = 29;
constexpr CGRect kWhole{{0, 0}, {kSide, kSide}};
constexpr CGRect kInside{{1, 1}, {kSide - 2, kSide - 2}};

void ring(Pen& pen) {
  pen.grey(CGFloat(0.8));
  pen.roundedLine(kInside, kInside.size.width / 2, 1);
}

}  // namespace

UIImage* disc(UIColor* color) {
  Pen pen(kWhole.size);
  if (color != nullptr) {
    pen.color(color);
    pen.oval(kInside);
  }
  ring(pen);
  return pen.image();
}

UIImage* disc(const settings::Preset& preset) {
  const char* colors[settings::kElementCount + 1] = {preset.dye};
  std::size_t count = 1;
  auto isNew = [&](const char* color) {
    for (std::size_t i = 0; i < count; ++i) {
      if (__builtin_strcmp(colors[i], color) == 0) return false;
    }
    return true;
  };
  for (const char* own : preset.own) {
    if (own != nullptr && own != settings::kUndyed && isNew(own)) colors[count++] = own;
  }
  Pen ringed(kWhole.size);
  // Drawn by itself, since a clip stays for the rest of a drawing.
  UIImage* stripes = nullptr;
  {
    Pen pen(kWhole.size);
    pen.clipToOval(kInside);
    const CGFloat width = kSide / static_cast<CGFloat>(count);
    for (std::size_t i = 0; i < count; ++i) {
      pen.color(colorOf(nullptr, colors[i]));
      // To the right edge, so that no seam is left between two.
      pen.rect({{static_cast<CGFloat>(i) * width, 0}, {kSide, kSide}});
    }
    stripes = pen.image();
  }
  send(stripes, UIImage::drawInRect, kWhole);
  ring(ringed);
  return ringed.image();
}

}  // namespace varnix::pane
