#include "pictures/share.h"

#include "pictures/pen.h"

namespace varnix::pane {

UIImage* shareGlyph() {
  Pen pen({20, 20});
  pen.grey(0);
  // The box, open at the top; then the arrow.
  pen.rect({{4, 8}, {1, 11}});
  pen.rect({{15, 8}, {1, 11}});
  pen.rect({{4, 18}, {12, 1}});
  pen.rect({{4, 8}, {3, 1}});
  pen.rect({{13, 8}, {3, 1}});
  pen.rect({{CGFloat(9.5), 3}, {1, 10}});
  pen.triangle({10, 0}, {6, 5}, {14, 5});
  return pen.image();
}

}  // namespace varnix::pane
