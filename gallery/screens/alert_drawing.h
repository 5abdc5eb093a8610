// An alert over a page.
#pragma once

#include <string>
#include <vector>

#include "drawing/canvas.h"

namespace varnix::screens {

struct Alert {
  std::string title, message;
  std::vector<std::string> buttons;  ///< the one that cancels first
};

/// Dims what has been drawn, and draws the alert in the middle. Nothing happens without a title and
/// a message.
void drawAlert(const drawing::Canvas& canvas, const Alert& alert);

}  // namespace varnix::screens
