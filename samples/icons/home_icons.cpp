// More icons, to fill the home screen.
#include "icon_canvas.h"

namespace {

using namespace icons;

constexpr double kMiddle = kSide / 2;

void text(const Canvas& c, double x, double baseline, double size, const char* words, unsigned rgb,
          bool isBold = false) {
  cairo_select_font_face(c.cr, "Inter", CAIRO_FONT_SLANT_NORMAL,
                         isBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(c.cr, size);
  cairo_text_extents_t extents;
  cairo_text_extents(c.cr, words, &extents);
  cairo_move_to(c.cr, x - extents.x_advance / 2, baseline);
  c.color(rgb);
  cairo_show_text(c.cr, words);
  cairo_new_path(c.cr);
}

void close(const Canvas& c) { cairo_close_path(c.cr); }

void messages(const Canvas& c) {
  c.background({{0, 0x6bea6b}, {1, 0x12c32e}});
  cairo_save(c.cr);
  cairo_translate(c.cr, kMiddle, 84);
  cairo_scale(c.cr, 62, 50);
  c.circle(0, 0, 1);
  cairo_restore(c.cr);
  c.fill(0xffffff);
  cairo_move_to(c.cr, 52, 112);
  cairo_curve_to(c.cr, 54, 128, 46, 138, 36, 142);
  cairo_curve_to(c.cr, 54, 146, 72, 140, 82, 130);
  c.fill(0xffffff);
}

void calendar(const Canvas& c) {
  c.paint(0xffffff);
  text(c, kMiddle, 47, 22, "Saturday", 0xff3b30);
  text(c, kMiddle, 146, 108, "21", 0x1a1a1a);
}

void clock(const Canvas& c) {
  c.paint(0x17171a);
  c.circle(kMiddle, kMiddle, 70);
  c.fill(0xfafafa);
  for (int i = 0; i < 12; ++i) {
    const double angle = i * kTurn / 12;
    c.line({{kMiddle + 57 * std::cos(angle), kMiddle + 57 * std::sin(angle)},
            {kMiddle + 62 * std::cos(angle), kMiddle + 62 * std::sin(angle)}});
  }
  c.stroke(4, 0x2c2c30);
  c.line({{kMiddle, kMiddle}, {kMiddle - 29, kMiddle - 16}});
  c.stroke(7, 0x17171a);
  c.line({{kMiddle, kMiddle}, {kMiddle + 22, kMiddle + 46}});
  c.stroke(5.5, 0x17171a);
  c.line({{kMiddle - 8, kMiddle + 14}, {kMiddle + 30, kMiddle - 46}});
  c.stroke(2.4, 0xff3b30);
  c.circle(kMiddle, kMiddle, 5);
  c.fill(0xff3b30);
}

void videos(const Canvas& c) {
  c.background({{0, 0x62d6f8}, {1, 0x1d8ff0}});
  cairo_rectangle(c.cr, 0, 0, kSide, 54);
  c.fill(0x20262c);
  for (double x = -40; x < kSide; x += 52) {
    c.line({{x, 54}, {x + 28, 0}, {x + 54, 0}, {x + 26, 54}});
    close(c);
  }
  c.fill(0xf6f7f8);
  c.line({{72, 84}, {122, 114}, {72, 144}});
  close(c);
  c.fill(0xffffff);
}

void reminders(const Canvas& c) {
  c.paint(0xffffff);
  constexpr unsigned kDots[] = {0xff9500, 0x34aadc, 0x8fce3c, 0xd65a9c};
  double y = 36;
  for (unsigned dot : kDots) {
    c.circle(34, y, 9);
    c.fill(dot);
    cairo_rectangle(c.cr, 54, y + 14, kSide, 2);
    c.fill(0xd9d9de);
    c.line({{58, y}, {y < 100 ? 146.0 : 124.0, y}});
    c.stroke(7, 0x6b6b72);
    y += 36;
  }
}

void stocks(const Canvas& c) {
  c.paint(0x16181c);
  for (double x = 45; x < kSide; x += 45) c.line({{x, 0}, {x, kSide}});
  c.stroke(1.5, 0x3b4048);
  c.line({{-4, 128}, {24, 112}, {44, 122}, {70, 82}, {92, 96}, {118, 52}, {138, 68}, {186, 30}});
  c.stroke(6, 0xffffff);
  c.line({{118, 0}, {118, kSide}});
  c.stroke(3, 0x35a7ff);
  c.circle(118, 52, 9);
  c.fill(0x35a7ff);
}

void books(const Canvas& c) {
  c.background({{0, 0xffb152}, {1, 0xf7791d}});
  for (double side : {-1.0, 1.0}) {
    cairo_move_to(c.cr, kMiddle, 58);
    cairo_curve_to(c.cr, kMiddle + side * 14, 42, kMiddle + side * 44, 42, kMiddle + side * 58, 50);
    cairo_line_to(c.cr, kMiddle + side * 58, 128);
    cairo_curve_to(c.cr, kMiddle + side * 44, 120, kMiddle + side * 14, 120, kMiddle, 136);
    close(c);
    c.fill(0xffffff);
  }
  c.line({{kMiddle, 60}, {kMiddle, 132}});
  c.stroke(4, 0xf58a2c);
}

void store(const Canvas& c) {
  c.background({{0, 0x27c7f9}, {1, 0x1c6cf2}});
  c.box(46, 68, 88, 72, 10);
  c.fill(0xffffff);
  cairo_move_to(c.cr, 68, 82);
  cairo_line_to(c.cr, 68, 62);
  cairo_arc(c.cr, kMiddle, 62, 22, kTurn / 2, kTurn);
  cairo_line_to(c.cr, 112, 82);
  c.stroke(8, 0xffffff);
  c.circle(68, 88, 4.5);
  c.circle(112, 88, 4.5);
  c.fill(0x2f8af4);
}

void health(const Canvas& c) {
  c.paint(0xffffff);
  cairo_save(c.cr);
  cairo_translate(c.cr, 112, 70);
  cairo_scale(c.cr, 3.4, 3.4);
  cairo_move_to(c.cr, 0, 9.5);
  cairo_curve_to(c.cr, -16, -1, -10, -10, -5, -9.4);
  cairo_curve_to(c.cr, -2, -9, -0.6, -7, 0, -5.6);
  cairo_curve_to(c.cr, 0.6, -7, 2, -9, 5, -9.4);
  cairo_curve_to(c.cr, 10, -10, 16, -1, 0, 9.5);
  cairo_restore(c.cr);
  c.gradient(0, 36, 0, 104, {{0, 0xff6aa0}, {1, 0xff2d55}});
  cairo_fill(c.cr);
}

void settings(const Canvas& c) {
  c.background({{0, 0xd9dbe0}, {1, 0x8b8e96}});
  constexpr int kTeeth = 24;
  for (int i = 0; i < 2 * kTeeth; ++i) {
    const double radius = i % 2 == 0 ? 72 : 63;
    const double from = (i - 0.38) * kTurn / (2 * kTeeth), to = (i + 0.38) * kTurn / (2 * kTeeth);
    cairo_line_to(c.cr, kMiddle + radius * std::cos(from), kMiddle + radius * std::sin(from));
    cairo_line_to(c.cr, kMiddle + radius * std::cos(to), kMiddle + radius * std::sin(to));
  }
  close(c);
  c.fill(0x3f4147);
  c.circle(kMiddle, kMiddle, 53);
  c.fill(0xc3c6cc);
  for (int i = 0; i < 3; ++i) {
    const double angle = kTurn / 4 + i * kTurn / 3;
    c.line({{kMiddle, kMiddle}, {kMiddle + 55 * std::cos(angle), kMiddle + 55 * std::sin(angle)}});
  }
  c.stroke(11, 0x3f4147);
  c.circle(kMiddle, kMiddle, 54);
  c.stroke(8, 0x3f4147);
  c.circle(kMiddle, kMiddle, 17);
  c.fill(0x3f4147);
  c.circle(kMiddle, kMiddle, 8);
  c.fill(0xc3c6cc);
}

void phone(const Canvas& c) {
  c.background({{0, 0x7be86f}, {1, 0x0fc024}});
  cairo_save(c.cr);
  cairo_translate(c.cr, kMiddle, kMiddle);
  cairo_rotate(c.cr, -kTurn / 8);
  // A handset lying on its back.
  cairo_move_to(c.cr, -58, -22);
  cairo_curve_to(c.cr, -30, 24, 30, 24, 58, -22);
  cairo_restore(c.cr);
  cairo_set_line_cap(c.cr, CAIRO_LINE_CAP_BUTT);
  c.stroke(21, 0xffffff);
  cairo_save(c.cr);
  cairo_translate(c.cr, kMiddle, kMiddle);
  cairo_rotate(c.cr, -kTurn / 8);
  for (double side : {-1.0, 1.0}) {
    cairo_save(c.cr);
    cairo_translate(c.cr, side * 52, -16);
    cairo_rotate(c.cr, -side * kTurn * 0.155);
    c.box(-14, -24, 28, 40, 9);
    cairo_restore(c.cr);
  }
  cairo_restore(c.cr);
  c.fill(0xffffff);
}

void browser(const Canvas& c) {
  c.paint(0xf7f8fa);
  c.circle(kMiddle, kMiddle, 70);
  c.gradient(0, 20, 0, 160, {{0, 0x2ed1fb}, {1, 0x1b6ff0}});
  cairo_fill(c.cr);
  for (int i = 0; i < 60; ++i) {
    const double angle = i * kTurn / 60;
    const double from = i % 5 == 0 ? 57 : 61;
    c.line({{kMiddle + from * std::cos(angle), kMiddle + from * std::sin(angle)},
            {kMiddle + 66 * std::cos(angle), kMiddle + 66 * std::sin(angle)}});
  }
  c.stroke(1.6, 0xffffff, 0.9);
  c.line({{134, 46}, {98, 98}, {82, 82}});
  close(c);
  c.fill(0xff4b40);
  c.line({{46, 134}, {98, 98}, {82, 82}});
  close(c);
  c.fill(0xf4f4f6);
}

void snapshots(const Canvas& c) {
  c.background({{0, 0x37c2b1}, {1, 0x137f8c}});
  c.box(38, 32, 104, 118, 7);
  c.fill(0xffffff);
  cairo_save(c.cr);
  c.box(49, 43, 82, 80, 3);
  cairo_clip(c.cr);
  c.gradient(0, 43, 0, 123, {{0, 0xffd9a0}, {1, 0xff9e7a}});
  cairo_paint(c.cr);
  c.circle(104, 70, 11);
  c.fill(0xfff6d8);
  c.line({{40, 123}, {74, 78}, {97, 108}, {110, 94}, {140, 123}});
  close(c);
  c.fill(0x7a3f63);
  cairo_restore(c.cr);
}

void chirps(const Canvas& c) {
  c.background({{0, 0x6cc6f7}, {1, 0x2f9df0}});
  c.box(34, 44, 112, 74, 26);
  c.fill(0xffffff);
  c.line({{64, 110}, {60, 144}, {96, 112}});
  close(c);
  c.fill(0xffffff);
  c.line({{58, 72}, {122, 72}});
  c.line({{58, 91}, {100, 91}});
  c.stroke(8, 0x4fb2f4);
}

constexpr Icon kIcons[] = {
    {"messages", messages},   {"calendar", calendar}, {"clock", clock}, {"videos", videos},
    {"reminders", reminders}, {"stocks", stocks},     {"books", books}, {"store", store},
    {"health", health},       {"settings", settings}, {"phone", phone}, {"browser", browser},
    {"snapshots", snapshots}, {"chirps", chirps},
};

}  // namespace

int main(int argc, char** argv) { return drawAll(kIcons, argc, argv); }
