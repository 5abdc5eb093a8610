// The keyboard.
#pragma once

#include "screens/answers.h"
#include "screens/canvas.h"

namespace host::screens {

inline constexpr double kKeyboardHeight = 216;

/// "keyboard", "keyboard opaque", "keyboard light".
void askKeyboard(Answers& answers);

/// At the bottom of the screen.
void drawKeyboard(const Canvas& canvas, const Answers& answers);

}  // namespace host::screens
