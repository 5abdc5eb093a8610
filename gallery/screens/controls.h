// An application's bars and controls.
#pragma once

#include <string>
#include <vector>

#include "drawing/canvas.h"
#include "drawing/text.h"

namespace varnix::screens {

using namespace drawing;

inline constexpr Color kBar = rgb(0xf8f8f8);
inline constexpr Color kBarEdge = rgb(0xa7a7aa);
inline constexpr Color kGroupedBackground = rgb(0xefeff4);
inline constexpr Color kSeparator = rgb(0xc8c7cc);
inline constexpr Color kHeaderText = rgb(0x6d6d72);
inline constexpr Color kDetailText = rgb(0x8e8e93);
inline constexpr Color kUnselected = rgb(0x929292);
/// Colours of switches and their outlines if nothing else was chosen.
inline constexpr Color kSwitchOn = rgb(0x4cd964);
inline constexpr Color kSwitchOutline = rgb(0xe5e5e5);
inline constexpr Color kTint = rgb(0x007aff);
inline constexpr double kRow = 44;

/// A part with an empty string stays empty. The status bar and navigation bar are one surface,
/// which ends with a hairline at that height.
struct NavigationBar {
  std::string back, title, action;
  Color tint;
  double height = 64;
  Weight actionWeight = Weight::regular;
  Color titleColor = kBlack;
};
void drawNavigationBar(const Canvas& canvas, const NavigationBar& bar);

void drawSegmentedControl(const Canvas& canvas, const Box& box,
                          const std::vector<std::string>& titles, std::size_t selected,
                          const Color& tint, const Color& selectedText);

/// 51 x 31 points; the point is the upper left corner.
struct SwitchColors {
  Color on, outline;
};
void drawSwitch(const Canvas& canvas, Point at, bool isOn, const SwitchColors& colors);

struct SliderColors {
  Color minimumTrack, maximumTrack;
};
/// The box has the track's length and the knob's height.
void drawSlider(const Canvas& canvas, const Box& box, double value, const SliderColors& colors);

/// A white knob with a soft shadow.
void drawKnob(const Canvas& canvas, Point middle, double radius);

/// The arrow at the end of a row.
void drawDisclosure(const Canvas& canvas, Point tip, const Color& color);
void drawCheckmark(const Canvas& canvas, Point middle, const Color& color);

/// A line one pixel high.
void drawHairline(const Canvas& canvas, Point from, double width, const Color& color);

/// An item of a tab bar.
struct Tab {
  std::string title;
  void (*glyph)(const Canvas& canvas, Point middle, const Color& color);
};
void drawTabBar(const Canvas& canvas, const std::vector<Tab>& tabs, std::size_t selected,
                const Color& tint);

/// White rows between hairlines; those between two rows are indented.
void drawRows(const Canvas& canvas, double y, int count);

}  // namespace varnix::screens
