// A page of the Settings application, and the answers that carry it from process to process.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drawing/picture.h"
#include "gallery/screens/alert_drawing.h"
#include "gallery/screens/answers.h"

namespace varnix::screens {

/// A picture in a row, in points.
struct ListImage {
  std::string png;  ///< the file's bytes; empty for none
  double scale = 1;
  /// Where the cell has put it; unset for the platform's place at the left edge.
  std::optional<double> x, y;
};

struct ListRow {
  double height = 44;
  std::string title;
  std::string subtitle;  ///< below the title
  std::string value;     ///< at the right edge
  ListImage image;
  std::optional<Color> titleColor;  ///< unset for the platform's black
  bool isDisabled = false;
  bool opens = false;  ///< whether it leads to another page
  bool isTicked = false;
  std::optional<bool> isOn;        ///< of its switch; unset without one
  std::optional<Color> switchOn;   ///< the colour of a switch that is on; unset for the platform's
  std::optional<Color> disc;       ///< the colour library's disc at the right edge
  std::optional<Color> tickColor;  ///< unset for the platform's blue
};

struct ListGroup {
  std::string header, footer;
  std::vector<ListRow> rows;
};

struct ListPage {
  std::string title, back;
  std::optional<Color> statusBar, bar, titleColor;
  ListImage action;                   ///< of the button at the bar's right
  std::optional<std::string> search;  ///< the field's placeholder; unset without a field
  std::vector<ListGroup> groups;
  Alert alert;                  ///< over the page; empty for none
  std::optional<Color> picked;  ///< in the picker over the page; unset without one
};

/// Only what differs from an empty page is named.
Answers answersOf(const ListPage& page);
ListPage pageOf(const Answers& answers);

}  // namespace varnix::screens
