// Where the parts of a page of settings are, from the top of the screen.
#pragma once

#include <vector>

#include "drawing/text.h"
#include "gallery/screens/list_page.h"

namespace varnix::screens {

struct PlacedRow {
  const ListRow* row;
  Box box;
  bool isFirst, isLast;  ///< of its group
};

struct PlacedText {
  const std::string* text;
  Point at;  ///< a header's baseline; a footer's upper left corner
};

/// Points into the page.
struct ListLayout {
  std::vector<PlacedRow> rows;
  std::vector<PlacedText> headers, footers;
  double bottom = 0;
};

inline constexpr double kListMargin = 15;
inline constexpr double kListIndent = 59;  ///< of texts beside an icon
inline constexpr TextStyle kListTitle{17}, kListSubtitle{12};
inline constexpr double kFooterSize = 13, kFooterLine = 16;

ListLayout layOut(const Canvas& canvas, const ListPage& page);

/// How wide a row's title may be.
double titleRoom(const Canvas& canvas, const ListRow& row);

/// Each text that would be cut off or lie on another one.
std::vector<std::string> textsTooLong(const Canvas& canvas, const ListPage& page);

}  // namespace varnix::screens
