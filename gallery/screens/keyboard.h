// The keyboard.
#pragma once

#include "drawing/canvas.h"
#include "gallery/screens/answers.h"

namespace varnix::screens {

inline constexpr double kKeyboardHeight = 216;

/// Sets "keyboard", "keyboard opaque" and "keyboard light".
void askKeyboard(Answers& answers);

/// At the bottom of the screen.
void drawKeyboard(const Canvas& canvas, const Answers& answers);

}  // namespace varnix::screens
