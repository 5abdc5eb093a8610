#include "gallery/screens/list_drawing.h"

#include <memory>
#include <stdexcept>

#include <glib.h>

#include "drawing/ink.h"
#include "gallery/screens/controls.h"
#include "gallery/screens/list_layout.h"
#include "gallery/screens/picker_drawing.h"
#include "gallery/screens/status_bar.h"

namespace varnix::screens {

namespace {

constexpr Color kDisclosureColor = rgb(0xc7c7cc);
constexpr Color kSearchGround = rgb(0xc9c9ce);
constexpr double kDisabledAlpha = 0.44;

/// Nothing for what is no PNG file.
Surface decoded(const std::string& png) {
  try {
    return drawing::readPng(png);
  } catch (const std::runtime_error&) {
    return {};
  }
}

Box boxOf(const ListImage& image, const Surface& surface, const Box& usual) {
  const double scale = image.scale > 0 ? image.scale : 1;
  const double width = widthOf(surface) / scale, height = heightOf(surface) / scale;
  return {usual.x + image.x.value_or(0),
          image.y ? usual.y + *image.y : usual.middleY() - height / 2, width, height};
}

void drawImage(const Canvas& canvas, const ListRow& row, const Box& box) {
  const Surface surface = decoded(row.image.png);
  if (surface == nullptr) return;
  const double left = row.image.x ? 0 : kListMargin;
  const Box place = boxOf(row.image, surface, {box.x + left, box.y, box.width, box.height});
  canvas.save();
  if (row.isDisabled) cairo_push_group(canvas.context());
  canvas.picture(surface, place);
  if (row.isDisabled) {
    cairo_pop_group_to_source(canvas.context());
    cairo_paint_with_alpha(canvas.context(), kDisabledAlpha);
  }
  canvas.restore();
}

/// The shape of an image, in the colour.
void drawTemplate(const Canvas& canvas, const ListImage& image, Point middle, const Color& color) {
  const Surface surface = decoded(image.png);
  if (surface == nullptr) return;
  const double scale = image.scale > 0 ? image.scale : 1;
  const Ink ink(canvas, around(middle, widthOf(surface) / scale, heightOf(surface) / scale), color,
                InkKind::symbol);
  canvas.save();
  cairo_t* cr = canvas.context();
  cairo_translate(cr, middle.x - widthOf(surface) / scale / 2,
                  middle.y - heightOf(surface) / scale / 2);
  cairo_scale(cr, 1 / scale, 1 / scale);
  canvas.use(color);
  cairo_mask_surface(cr, surface.get(), 0, 0);
  canvas.restore();
}

Color faded(const Color& color, const ListRow& row) {
  return row.isDisabled ? color.withAlpha(color.alpha * kDisabledAlpha) : color;
}

void drawRight(const Canvas& canvas, const ListRow& row, const Box& box) {
  const double edge = box.right() - kListMargin;
  double textEdge = edge;
  if (row.isOn) {
    drawSwitch(canvas, {edge - 51, box.middleY() - 15.5}, *row.isOn,
               {faded(row.switchOn.value_or(kSwitchOn), row), kSwitchOutline});
    textEdge = edge - 51 - 8;
  } else if (row.disc) {
    constexpr double kRadius = 14.5, kRing = 2;
    const Point middle{edge - kRadius, box.middleY()};
    canvas.disc(middle, kRadius, rgb(0xd1d1d6));
    canvas.disc(middle, kRadius - kRing, kWhite);
    canvas.disc(middle, kRadius - kRing, faded(*row.disc, row));
    textEdge = edge - 2 * kRadius - 8;
  } else if (row.isTicked) {
    drawCheckmark(canvas, {edge - 7, box.middleY()}, row.tickColor.value_or(kTint));
    textEdge = edge - 14 - 8;
  } else if (row.opens) {
    drawDisclosure(canvas, {edge, box.middleY()}, kDisclosureColor);
    textEdge = edge - 19;
  }
  if (!row.value.empty())
    drawCentered(canvas, {textEdge, box.middleY()}, row.value,
                 kListTitle.with(faded(kDetailText, row)).with(Align::right));
}

void drawRow(const Canvas& canvas, const PlacedRow& placed) {
  const auto& [row, box, isFirst, isLast] = placed;
  canvas.fill(box, kWhite);
  drawImage(canvas, *row, box);
  const double left = row->image.png.empty() ? kListMargin : kListIndent;
  const Color ink =
      row->isDisabled ? kDetailText.withAlpha(kDisabledAlpha) : row->titleColor.value_or(kBlack);
  const double room = titleRoom(canvas, *row);
  if (row->subtitle.empty()) {
    drawCentered(canvas, {left, box.middleY()}, row->title, kListTitle.with(ink), room);
  } else {
    drawCentered(canvas, {left, box.middleY() - 8}, row->title, kListTitle.with(ink), room);
    drawCentered(canvas, {left, box.middleY() + 10.5}, row->subtitle,
                 kListSubtitle.with(faded(kDetailText, *row)), room);
  }
  drawRight(canvas, *row, box);
}

/// After all rows, which would cover them.
void drawRowLines(const Canvas& canvas, const PlacedRow& placed) {
  const auto& [row, box, isFirst, isLast] = placed;
  const double left = row->image.png.empty() || row->title.empty() ? kListMargin : kListIndent;
  if (isFirst) drawHairline(canvas, {0, box.y}, box.width, kSeparator);
  const double bottom = box.bottom() - canvas.hairline();
  if (isLast) drawHairline(canvas, {0, bottom}, box.width, kSeparator);
  else drawHairline(canvas, {left, bottom}, box.width - left, kSeparator);
}

void drawSearch(const Canvas& canvas, const std::string& placeholder) {
  constexpr double kTop = 64, kHeight = 44, kField = 28, kGlass = 13;
  canvas.fill({0, kTop, canvas.width(), kHeight}, kSearchGround);
  canvas.fill({8, kTop + (kHeight - kField) / 2, canvas.width() - 16, kField}, kWhite, 5);
  const TextStyle style{14, kDetailText};
  const double width = kGlass + 6 + textWidth(canvas, placeholder, style);
  const double left = (canvas.width() - width) / 2, middle = kTop + kHeight / 2;
  canvas.circle({left + 5.2, middle - 0.8}, 4.6);
  canvas.stroke(kDetailText, 1.1);
  canvas.line({{left + 8.6, middle + 2.6}, {left + 12.4, middle + 6.4}});
  canvas.stroke(kDetailText, 1.5);
  drawCentered(canvas, {left + kGlass + 6, middle}, placeholder, style);
}

std::string capitals(const std::string& text) {
  const std::unique_ptr<char, decltype(&g_free)> upper(
      g_utf8_strup(text.data(), static_cast<gssize>(text.size())), &g_free);
  return upper.get();
}

}  // namespace

void drawListPage(const Canvas& canvas, const ListPage& page) {
  canvas.fill({0, 0, canvas.width(), canvas.height()}, kGroupedBackground);
  const ListLayout placed = layOut(canvas, page);
  for (const PlacedRow& row : placed.rows) {
    if (row.box.y < canvas.height()) drawRow(canvas, row);
  }
  for (const PlacedRow& row : placed.rows) {
    if (row.box.y < canvas.height()) drawRowLines(canvas, row);
  }
  const double width = canvas.width() - 2 * kListMargin;
  for (const auto& [text, at] : placed.headers)
    drawText(canvas, at, capitals(*text), {13, kHeaderText}, width);
  for (const auto& [text, at] : placed.footers)
    drawParagraph(canvas, at, {{{*text, kHeaderText}}, kFooterSize, kFooterLine, width});
  if (page.search) drawSearch(canvas, *page.search);
  const Color tint = page.bar.value_or(kTint);
  NavigationBar bar{page.back, page.title, "", tint};
  bar.titleColor = page.titleColor.value_or(kBlack);
  drawNavigationBar(canvas, bar);
  drawTemplate(canvas, page.action, {canvas.width() - 23, 41}, tint);
  drawStatusBar(canvas, page.statusBar.value_or(kBlack));
  if (page.picked) drawPicker(canvas, *page.picked);
  drawAlert(canvas, page.alert);
}

}  // namespace varnix::screens
