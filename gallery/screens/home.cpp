// The home screen: icons, a folder, an application waiting for its download, badges, the dock.
#include "drawing/text.h"
#include "gallery/screens/backdrop.h"
#include "gallery/screens/home_items.h"
#include "gallery/screens/legibility.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"
#include "gallery/screens/status_bar.h"

namespace varnix::screens {

namespace {

constexpr double kSide = 60;
constexpr double kLeft = 27, kColumn = 87, kTop = 28, kRow = 88;
constexpr double kDock = 96;
constexpr int kColumns = 4;

Answers ask(const Surroundings& surroundings) {
  Answers answers;
  auto& values = answers.values;
  values["status bar"] = askStatusBar(legibleOn(surroundings.wallpaper));
  const probe::Given behind{.color = makeColor(surroundings.wallpaper), .hasPicture = true};
  values["folder"] =
      answered(send<CGColorRef>(staged(probe::kFolder, behind), "wallpaperColor"_sel));
  const auto icon = staged(probe::kIcon, behind);
  values["icon shows wallpaper"] = send<NSObject*>(icon, "wallpaperContents"_sel) != nullptr;
  values["icon"] = answered(send<CGColorRef>(icon, "fallbackColor"_sel));
  values["badge"] = askColor(staged(probe::kBadge), "_coveredColor");
  return answers;
}

void drawLabel(const Canvas& canvas, Point middle, const char* text, const Color& color) {
  const TextStyle style{12, color, Weight::regular, Align::center};
  if (color == kWhite) {
    for (double down : {0.5, 1.0}) {
      drawText(canvas, {middle.x, middle.y + down}, text, style.with(kBlack.withAlpha(0.18)), 80);
    }
  }
  drawText(canvas, middle, text, style, 80);
}

void drawIcon(const Canvas& canvas, const Box& box, const char* identifier, const Scene& scene) {
  const auto found = scene.icons.find(identifier);
  if (found != scene.icons.end()) return canvas.icon(found->second, box);
  canvas.squircle(box);
  canvas.fill(kWhite.withAlpha(0.5));
}

/// The square behind a folder, or behind an icon without a picture.
void drawBackground(const Canvas& canvas, const Box& box, const Surface& behind,
                    const Color& color) {
  canvas.save();
  canvas.squircle(box);
  canvas.clip();
  canvas.picture(behind, {0, 0, canvas.width(), canvas.height()});
  canvas.fill(box, color);
  canvas.restore();
}

void drawFolder(const Canvas& canvas, const Box& box, const Answers& answers, const Scene& scene,
                const Surface& behind) {
  constexpr double kSmall = 13, kPitch = 16.5;
  drawBackground(canvas, box, behind, answers.colorOr("folder", scene.wallpaperColor));
  canvas.squircle(box);
  canvas.fill(kWhite.withAlpha(0.22));
  int i = 0;
  for (const char* identifier : kInFolder) {
    const int column = i % 3, row = i / 3;
    const Box small{box.x + 7 + kPitch * column, box.y + 7 + kPitch * row, kSmall, kSmall};
    drawIcon(canvas, small, identifier, scene);
    ++i;
  }
}

/// The lines in place of an icon that is not there yet.
void drawWaiting(const Canvas& canvas, const Box& box, const Answers& answers, const Scene& scene,
                 const Surface& behind) {
  // With contents it shows its piece of the blurred wallpaper, else a flat colour.
  const Color flat = answers.colorOr("icon", scene.wallpaperColor);
  const bool showsWallpaper = answers.flag("icon shows wallpaper");
  drawBackground(canvas, box, behind, showsWallpaper ? kWhite.withAlpha(0.25) : flat);
  canvas.save();
  canvas.squircle(box);
  canvas.clip();
  const Color lines = kWhite.withAlpha(0.55);
  for (double radius : {8.0, 14.0, 22.0}) canvas.circle({box.middleX(), box.middleY()}, radius);
  for (double at : {-8.0, 0.0, 8.0}) {
    canvas.line({{box.x, box.middleY() + at}, {box.right(), box.middleY() + at}});
    canvas.line({{box.middleX() + at, box.y}, {box.middleX() + at, box.bottom()}});
  }
  canvas.line({{box.x, box.y}, {box.right(), box.bottom()}});
  canvas.line({{box.right(), box.y}, {box.x, box.bottom()}});
  canvas.stroke(lines, 0.5);
  canvas.restore();
}

void drawBadge(const Canvas& canvas, const Box& icon, int number, const Color& color) {
  constexpr double kHeight = 24;
  const TextStyle style{16, kWhite, Weight::regular, Align::center};
  const std::string text = std::to_string(number);
  const double width = std::max(kHeight, textWidth(canvas, text, style) + 14);
  const Box box{icon.right() + 11 - width, icon.y - 10.5, width, kHeight};
  canvas.fill(box, color, kHeight / 2);
  drawCentered(canvas, {box.middleX(), box.middleY()}, text, style);
}

void drawItem(const Canvas& canvas, const HomeItem& item, Point at, const Answers& answers,
              const Scene& scene, const Surface& behind) {
  const Box box{at.x, at.y, kSide, kSide};
  switch (item.kind) {
    case ItemKind::application:
      drawIcon(canvas, box, item.identifier, scene);
      break;
    case ItemKind::folder:
      drawFolder(canvas, box, answers, scene, behind);
      break;
    case ItemKind::waiting:
      drawWaiting(canvas, box, answers, scene, behind);
      break;
  }
  drawLabel(canvas, {box.middleX(), box.bottom() + 17}, item.label,
            legibleOn(scene.wallpaperColor));
}

void drawPages(const Canvas& canvas, const Color& color) {
  constexpr int kPages = 3;
  const double y = canvas.height() - kDock - 12;
  const double left = canvas.width() / 2 - 1.5 * 16;
  canvas.circle({left - 0.7, y - 0.7}, 2.9);
  canvas.line({{left + 1.6, y + 1.6}, {left + 3.6, y + 3.6}});
  canvas.stroke(color.withAlpha(0.5), 1.4);
  for (int i = 1; i <= kPages; ++i)
    canvas.disc({left + 16 * i, y}, 3.5, color.withAlpha(i == 1 ? 1 : 0.4));
}

void draw(const Canvas& canvas, const Answers& answers, const Scene& scene) {
  const Color text = legibleOn(scene.wallpaperColor);
  canvas.cover(scene.wallpaper, {0, 0, canvas.width(), canvas.height()});
  const Surface behind = blurredBehind(canvas);
  drawBackdrop(canvas, {0, canvas.height() - kDock, canvas.width(), kDock}, 0,
               {kWhite.withAlpha(text == kWhite ? 0.22 : 0.42), {}}, behind);
  drawStatusBar(canvas, answers.colorOr("status bar", text));
  drawPages(canvas, text);

  const Color badge = answers.colorOr("badge", rgb(0xff3b30));
  auto drawAll = [&](auto& items, double top) {
    int index = 0;
    for (const HomeItem& item : items) {
      const int column = index % kColumns, row = index / kColumns;
      const Point at{kLeft + kColumn * column, top + kRow * row};
      drawItem(canvas, item, at, answers, scene, behind);
      if (item.badge > 0) drawBadge(canvas, {at.x, at.y, kSide, kSide}, item.badge, badge);
      ++index;
    }
  };
  drawAll(kItems, kTop);
  drawAll(kDockItems, canvas.height() - kDock + 10.5);
}

}  // namespace

const Screen kHome{
    "home", "Home screen", "com.apple.springboard", host::ProcessKind::springboard, true, false,
    ask,    draw};

}  // namespace varnix::screens
