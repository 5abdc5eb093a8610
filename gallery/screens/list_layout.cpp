#include "gallery/screens/list_layout.h"

#include <algorithm>

namespace varnix::screens {

namespace {

constexpr double kBars = 64, kSearchBar = 44;
constexpr double kFirstGap = 35, kGap = 17.5, kHeaderHeight = 38;
constexpr double kFooterAbove = 8, kFooterBelow = 7.5;
constexpr double kHeaderAbove = 8;  ///< from its baseline to the rows

Paragraph footerOf(const std::string& text, double width) {
  return {{{text, kBlack}}, kFooterSize, kFooterLine, width};
}

/// Where the last thing at the right edge begins.
double rightEdge(const Canvas& canvas, const ListRow& row) {
  const double edge = canvas.width() - kListMargin;
  if (row.isOn) return edge - 51;
  if (row.disc) return edge - 31;
  if (row.isTicked) return edge - 14;
  return row.opens ? edge - 19 : edge;
}

/// Chinese and Japanese letters, which are as wide as they are high. This machine may have no face
/// for them.
std::size_t squareLetters(const std::string& text) {
  // In UTF-8 they begin with these bytes.
  return static_cast<std::size_t>(std::ranges::count_if(text, [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0xe3 && byte <= 0xed;
  }));
}

}  // namespace

ListLayout layOut(const Canvas& canvas, const ListPage& page) {
  ListLayout placed;
  double y = kBars + (page.search ? kSearchBar : 0);
  for (std::size_t i = 0; i < page.groups.size(); ++i) {
    const ListGroup& group = page.groups[i];
    const double gap = i == 0 ? kFirstGap - kGap : 0;
    y += gap + (group.header.empty() ? kGap : kHeaderHeight);
    if (!group.header.empty())
      placed.headers.push_back({&group.header, {kListMargin, y - kHeaderAbove}});
    for (std::size_t r = 0; r < group.rows.size(); ++r) {
      const ListRow& row = group.rows[r];
      placed.rows.push_back(
          {&row, {0, y, canvas.width(), row.height}, r == 0, r + 1 == group.rows.size()});
      y += row.height;
    }
    if (group.footer.empty()) {
      y += kGap;
      continue;
    }
    placed.footers.push_back({&group.footer, {kListMargin, y + kFooterAbove}});
    const double width = canvas.width() - 2 * kListMargin;
    y += kFooterAbove + measure(canvas, footerOf(group.footer, width)).height + kFooterBelow;
  }
  placed.bottom = y;
  return placed;
}

double titleRoom(const Canvas& canvas, const ListRow& row) {
  const double left = row.image.png.empty() ? kListMargin : kListIndent;
  const double right = rightEdge(canvas, row);
  constexpr double kBetween = 8;
  const double value = row.value.empty() ? 0 : textWidth(canvas, row.value, kListTitle) + kBetween;
  return std::max(right - left - kBetween - value, 0.0);
}

std::vector<std::string> textsTooLong(const Canvas& canvas, const ListPage& page) {
  std::vector<std::string> found;
  auto check = [&](const std::string& text, const TextStyle& style, double room) {
    const double square = static_cast<double>(squareLetters(text)) * style.size;
    if (std::max(textWidth(canvas, text, style), square) > room) found.push_back(text);
  };
  // Between the back button and as much at the right.
  constexpr double kBack = 90;
  check(page.title, kListTitle.with(Weight::semibold), canvas.width() - 2 * kBack);
  for (const ListGroup& group : page.groups) {
    check(group.header, {13}, canvas.width() - 2 * kListMargin);
    for (const ListRow& row : group.rows) {
      check(row.title, kListTitle, titleRoom(canvas, row));
      ListRow alone = row;
      alone.value.clear();
      check(row.subtitle, kListSubtitle, titleRoom(canvas, alone));
    }
  }
  return found;
}

}  // namespace varnix::screens
