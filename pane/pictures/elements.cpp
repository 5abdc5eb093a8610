#include "pictures/elements.h"

#include "pictures/pen.h"

namespace varnix::pane {

namespace {

constexpr CGFloat kWidth = kPictureSize.width;
constexpr CGFloat kHeight = kPictureSize.height;
constexpr CGRect kCanvas{{0, 0}, kPictureSize};

constexpr CGRect box(double x, double y, double width, double height) {
  return {{static_cast<CGFloat>(x), static_cast<CGFloat>(y)},
          {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}};
}

UIColor* faded(UIColor* color, double alpha) {
  return send(color, UIColor::colorWithAlphaComponent, static_cast<CGFloat>(alpha));
}

/// What lies behind a translucent surface.
void wallpaper(Pen& pen) {
  constexpr int kBands = 24;
  for (int i = 0; i < kBands; ++i) {
    const CGFloat at = static_cast<CGFloat>(i) / kBands;
    pen.color(Pen::rgb(CGFloat(0.16) + at * CGFloat(0.25), CGFloat(0.30) + at * CGFloat(0.12),
                       CGFloat(0.46)));
    pen.rect({{at * kWidth, 0}, {kWidth / kBands + 1, kHeight}});
  }
}

void statusBar(Pen& pen, UIColor* color) {
  pen.grey(1);
  pen.rect(kCanvas);
  pen.color(color != nullptr ? color : Pen::rgb(0, 0, 0));
  for (int i = 0; i < 5; ++i) pen.oval(box(12 + i * 8, 9, 6.5, 6.5));
  pen.rounded(box(58, 9.5, 30, 5.5), 2);
  pen.rounded(box(106, 8, 28, 8.5), 2);
  pen.roundedLine(box(203.5, 7.5, 22, 9), 2, 1);
  pen.rounded(box(205, 9, 15, 6), 1);
  pen.rect(box(227, 10, 1.5, 4));
  pen.grey(CGFloat(0.90));
  pen.rect(box(0, 24, 240, 1));
  for (int i = 0; i < 3; ++i) pen.rounded(box(16, 38 + i * 18, i == 2 ? 130 : 208, 8), 4);
}

void folder(Pen& pen, UIColor* color) {
  wallpaper(pen);
  const CGRect ground = box(84, 12, 72, 72);
  pen.color(color != nullptr ? faded(color, 0.75) : Pen::rgb(1, 1, 1, CGFloat(0.35)));
  pen.rounded(ground, 16);
  pen.grey(1, CGFloat(0.9));
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column)
      pen.rounded(box(93 + column * 19, 21 + row * 19, 16, 16), 4);
  }
}

void controlCentre(Pen& pen, UIColor* color) {
  wallpaper(pen);
  pen.color(color != nullptr ? faded(color, 0.7) : Pen::rgb(1, 1, 1, CGFloat(0.7)));
  pen.rect(box(0, 14, 240, 82));
  pen.grey(1, CGFloat(0.85));
  pen.rounded(box(106, 19, 28, 4), 2);
  for (int i = 0; i < 5; ++i) pen.oval(box(22 + i * 43, 30, 26, 26));
  pen.rect(box(40, 71, 160, 2));
  pen.oval(box(130, 64, 16, 16));
}

void notificationCentre(Pen& pen, UIColor* color) {
  wallpaper(pen);
  pen.color(color != nullptr ? faded(color, 0.7) : Pen::rgb(0, 0, 0, CGFloat(0.6)));
  pen.rect(kCanvas);
  pen.grey(1, CGFloat(0.85));
  pen.roundedLine(box(60.5, 8.5, 119, 15), 4, 1);
  pen.rounded(box(60, 8, 60, 16), 4);
  for (int i = 0; i < 3; ++i) {
    pen.grey(1, CGFloat(0.85));
    pen.rounded(box(16, 35 + i * 20, 70, 6), 3);
    pen.grey(1, CGFloat(0.45));
    pen.rounded(box(16, 44 + i * 20, i == 1 ? 160 : 200, 5), 2.5);
  }
}

void balloons(Pen& pen, UIColor* color) {
  pen.grey(1);
  pen.rect(kCanvas);
  auto balloon = [&](CGRect place, bool isSent) {
    if (!isSent) pen.color(Pen::rgb(CGFloat(0.90), CGFloat(0.90), CGFloat(0.92)));
    else pen.color(color != nullptr ? color : Pen::rgb(0, CGFloat(0.48), 1));
    pen.rounded(place, 13);
    const CGFloat bottom = place.origin.y + place.size.height;
    const CGFloat edge = isSent ? place.origin.x + place.size.width : place.origin.x;
    const CGFloat inward = isSent ? CGFloat(-14) : CGFloat(14);
    pen.triangle({edge + inward, bottom - 12}, {edge, bottom - 12}, {edge - inward / 3, bottom});
    if (isSent) pen.grey(1, CGFloat(0.9));
    else pen.grey(CGFloat(0.55));
    pen.rounded({{place.origin.x + 12, place.origin.y + 10}, {place.size.width - 24, 6}}, 3);
  };
  balloon(box(14, 6, 110, 26), false);
  balloon(box(106, 36, 120, 26), true);
  balloon(box(146, 66, 80, 26), true);
}

void keyboard(Pen& pen, UIColor* color) {
  pen.color(color != nullptr ? color : Pen::rgb(CGFloat(0.82), CGFloat(0.84), CGFloat(0.86)));
  pen.rect(kCanvas);
  pen.grey(1, color != nullptr ? CGFloat(0.3) : CGFloat(1));
  for (int row = 0; row < 3; ++row) {
    const int keys = row == 0 ? 10 : row == 1 ? 9 : 7;
    const double left = (240 - keys * 23.5 + 3.5) / 2;
    for (int i = 0; i < keys; ++i) pen.rounded(box(left + i * 23.5, 8 + row * 29, 20, 24), 3);
  }
}

void volume(Pen& pen, UIColor* color) {
  wallpaper(pen);
  pen.color(color != nullptr ? faded(color, 0.75) : Pen::rgb(1, 1, 1, CGFloat(0.75)));
  pen.rounded(box(78, 6, 84, 84), 8);
  pen.grey(color != nullptr ? CGFloat(1) : CGFloat(0.2));
  pen.rect(box(104, 36, 9, 14));
  pen.triangle({107, 43}, {123, 27}, {123, 59});
  pen.rounded(box(127, 36, 3, 14), 1.5);
  pen.rounded(box(133, 32, 3, 22), 1.5);
  for (int i = 0; i < 16; ++i) {
    pen.grey(i < 9 ? CGFloat(1) : CGFloat(0.3), i < 9 ? CGFloat(0.95) : CGFloat(0.35));
    pen.rect(box(85 + i * 4.4, 74, 3.4, 6));
  }
}

constexpr struct {
  const char* key;
  void (*draw)(Pen& pen, UIColor* color);
} kPictures[] = {
    {"statusbar", &statusBar},   {"folder", &folder}, {"cc", &controlCentre},
    {"nc", &notificationCentre}, {"sms", &balloons},  {"keyboard", &keyboard},
    {"volume", &volume},
};
static_assert(sizeof kPictures / sizeof *kPictures == settings::kElementCount);

}  // namespace

UIImage* pictureOf(const settings::Element& element, UIColor* color) {
  for (const auto& picture : kPictures) {
    if (__builtin_strcmp(picture.key, element.key) != 0) continue;
    Pen pen(kPictureSize);
    pen.clipToRounded(kCanvas, 8);
    picture.draw(pen, color);
    return pen.image();
  }
  return nullptr;
}

}  // namespace varnix::pane
