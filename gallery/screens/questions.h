// Questions to a hosted process's objects. Everything is made, changed and read by messages.
#pragma once

#include <string>

#include "gallery/screens/answers.h"
#include "gallery/screens/screen.h"
#include "objc/strong.h"
#include "platform/CoreGraphics.h"
#include "probe/objects.h"
#include "runtime/send.h"

namespace varnix::screens {

using probe::make;

NSObject* makeColor(const Color& color);

/// Nothing for nil and for what is no colour.
Answer answered(NSObject* color);
Answer answered(CGColorRef color);

/// The getter of the object, a colour. A nil receiver answers nothing.
Answer askColor(NSObject* receiver, const char* getter);
/// The tint of a plain object of that class.
Answer askTint(const char* className);

/// The foreground of a status bar for which the system asks for that one.
Answer askStatusBar(const Color& wanted);

/// The colour, strengths and use of the tint of the surface's backdrop: "tint", "tint alpha",
/// "tint mask alpha", "tinted".
void askBackdrop(Answers& answers, NSObject* surface);

}  // namespace varnix::screens
