// The keyboard.
#pragma once

#include "gallery/screens/answers.h"
#include "gallery/screens/canvas.h"

namespace varnix::screens {

inline constexpr double kKeyboardHeight = 216;

/// "keyboard", "keyboard opaque", "keyboard light".
void askKeyboard(Answers& answers);

/// At the bottom of the screen.
void drawKeyboard(const Canvas& canvas, const Answers& answers);

}  // namespace varnix::screens
