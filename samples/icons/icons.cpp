// Icons for the sample applications, drawn for this project: flat, 180 pixels a side, with
// transparent corners.
#include "icon_canvas.h"

namespace {

using namespace icons;

void notes(const Canvas& c) {
  c.background({{0, 0xfffdf6}, {1, 0xf4efe2}});
  cairo_rectangle(c.cr, 0, 0, kSide, 50);
  c.gradient(0, 0, 0, 50, {{0, 0xffdf5c}, {1, 0xf9bd16}});
  cairo_fill(c.cr);
  cairo_rectangle(c.cr, 0, 50, kSide, 3);
  c.fill(0xd99a00, 0.55);
  for (double x = 10; x < kSide; x += 10) c.circle(x, 62, 1.8);
  c.fill(0xa89e8a);
  for (double y = 86; y < kSide; y += 26) {
    cairo_rectangle(c.cr, 0, y, kSide, 2);
  }
  c.fill(0xd3cbb9);
}

void mail(const Canvas& c) {
  c.background({{0, 0x2a6df4}, {1, 0x23cffb}});
  c.box(27, 47, 126, 86, 12);
  c.fill(0xffffff);
  c.line({{34, 127}, {69, 94.5}});
  c.line({{146, 127}, {111, 94.5}});
  c.stroke(4, 0x56a8f8);
  // The flap.
  c.line({{33, 54}, {81, 98}});
  cairo_curve_to(c.cr, 86, 102.5, 94, 102.5, 99, 98);
  cairo_line_to(c.cr, 147, 54);
  c.stroke(5, 0x2f8df6);
}

void music(const Canvas& c) {
  c.background({{0, 0xff6a92}, {0.55, 0xfb3b5e}, {1, 0xf0263c}});
  // Beam and stems are a single shape.
  c.line({{68, 52}, {128, 39}, {128, 62}, {68, 75}});
  cairo_close_path(c.cr);
  c.fill(0xffffff);
  c.line({{71.5, 56}, {71.5, 125}});
  c.line({{124.5, 46}, {124.5, 113}});
  c.stroke(7.5, 0xffffff);
  for (auto [x, y] : {std::pair{57.5, 126.0}, std::pair{110.5, 114.0}}) {
    cairo_save(c.cr);
    cairo_translate(c.cr, x, y);
    cairo_rotate(c.cr, -0.32);
    cairo_scale(c.cr, 18.5, 13.5);
    c.circle(0, 0, 1);
    cairo_restore(c.cr);
    c.fill(0xffffff);
  }
}

void maps(const Canvas& c) {
  c.paint(0xf3ecdd);
  c.line({{0, 0}, {84, 0}, {60, 76}, {0, 92}});
  c.fill(0xa9d982);
  c.line({{124, 180}, {134, 118}, {180, 104}, {180, 180}});
  c.fill(0x8fce77);
  cairo_move_to(c.cr, 112, 0);
  cairo_curve_to(c.cr, 118, 34, 156, 28, 180, 52);
  cairo_line_to(c.cr, 180, 0);
  c.fill(0x8fcdf5);
  c.line({{-6, 106}, {66, 86}, {190, 76}});
  c.line({{94, -6}, {62, 92}, {50, 190}});
  c.stroke(9, 0xffffff);
  c.line({{-6, 30}, {190, 150}});
  c.stroke(17, 0xe0a93a);
  c.line({{-6, 30}, {190, 150}});
  c.stroke(14, 0xffd767);
  // The route, from the dot to the pin.
  c.line({{54, 146}, {63.5, 88}, {79, 82}, {132, 114.5}});
  c.stroke(9, 0x1d74e8);
  c.circle(54, 146, 13);
  c.fill(0xffffff);
  c.circle(54, 146, 8.5);
  c.fill(0x1d74e8);
  cairo_move_to(c.cr, 132, 117);
  cairo_curve_to(c.cr, 128, 100, 108, 92, 108, 72);
  cairo_arc(c.cr, 132, 70, 24, kTurn / 2, kTurn);
  cairo_curve_to(c.cr, 156, 92, 136, 100, 132, 117);
  c.fill(0xf0433a);
  c.circle(132, 70, 9.5);
  c.fill(0xffffff);
}

void photos(const Canvas& c) {
  c.paint(0xffffff);
  constexpr unsigned kPetals[] = {0xf79a1e, 0xf5d51f, 0x9ecb3c, 0x3fb68b,
                                  0x4a9de8, 0x7b68d8, 0xc258b4, 0xef4f4f};
  cairo_set_operator(c.cr, CAIRO_OPERATOR_MULTIPLY);
  int turn = 0;
  for (unsigned petal : kPetals) {
    cairo_save(c.cr);
    cairo_translate(c.cr, kSide / 2, kSide / 2);
    cairo_rotate(c.cr, turn++ * kTurn / 8);
    c.box(-18.5, -71, 37, 62, 18.5);
    cairo_restore(c.cr);
    c.fill(petal, 0.86);
  }
  cairo_set_operator(c.cr, CAIRO_OPERATOR_OVER);
}

void weather(const Canvas& c) {
  c.background({{0, 0x1f6fe0}, {1, 0x74c8fa}});
  c.glow(66, 68, 62, {{0, 0xffe27a, 0.55}, {0.55, 0xffe27a, 0.3}, {1, 0xffe27a, 0}});
  cairo_paint(c.cr);
  c.circle(66, 68, 33);
  c.gradient(0, 35, 0, 101, {{0, 0xffe04a}, {1, 0xffbf1f}});
  cairo_fill(c.cr);
  // A single outline, so that the parts of the cloud do not show through each other.
  c.box(51, 96, 104, 44, 22);
  c.circle(90, 96, 26);
  c.circle(121, 100, 20);
  c.gradient(0, 70, 0, 140, {{0, 0xffffff}, {1, 0xe4f1fc}});
  cairo_fill(c.cr);
}

void camera(const Canvas& c) {
  c.background({{0, 0x5a5d63}, {1, 0x26282c}});
  c.box(26, 56, 128, 88, 16);
  c.fill(0xeceef1);
  c.box(64, 42, 52, 28, 9);
  c.fill(0xeceef1);
  c.circle(135, 75, 5.5);
  c.fill(0xffc933);
  c.circle(90, 100, 37);
  c.fill(0x2b2d31);
  c.circle(90, 100, 32);
  c.stroke(2.5, 0x6d7178);
  c.circle(90, 100, 26);
  c.gradient(72, 78, 108, 122, {{0, 0x5a8fd6}, {0.55, 0x2c3f78}, {1, 0x151a33}});
  cairo_fill(c.cr);
  c.circle(90, 100, 13);
  c.fill(0x0d1020, 0.75);
  c.circle(80, 89, 5.5);
  c.fill(0xffffff, 0.85);
}

void calculator(const Canvas& c) {
  c.background({{0, 0x3a3a3e}, {1, 0x1a1a1d}});
  c.box(30, 24, 120, 32, 8);
  c.fill(0xc9d6c8);
  for (double x : {94.0, 111.0, 128.0}) c.box(x, 32, 10, 16, 4.5);
  c.stroke(3, 0x3e4a3f);
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 4; ++column) {
      c.circle(44 + column * 30.7, 81 + row * 30, 12.2);
      if (column == 3) c.fill(0xff9f0a);
      else c.fill(row == 0 ? 0xa9a9ae : 0x606066);
    }
  }
}

constexpr Icon kIcons[] = {
    {"com.example.notes", notes},   {"com.example.mail", mail},
    {"com.example.music", music},   {"com.example.maps", maps},
    {"com.example.photos", photos}, {"com.example.weather", weather},
    {"com.example.camera", camera}, {"com.example.calculator", calculator},
};

}  // namespace

int main(int argc, char** argv) { return drawAll(kIcons, argc, argv); }
