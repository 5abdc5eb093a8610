// Questions to a hosted process's objects. Everything is made, changed and read by messages.
#pragma once

#include <string>

#include "gallery/screens/answers.h"
#include "gallery/screens/screen.h"
#include "objc/strong.h"
#include "platform/CoreGraphics.h"
#include "probe/situations.h"
#include "probe/surfaces.h"
#include "runtime/send.h"

namespace varnix::screens {

using probe::staged;

UIColor* makeColor(const Color& color);

/// Nothing for nil and anything other than a colour.
Answer answered(const probe::Answer& answer);
Answer answered(NSObject* color);
Answer answered(CGColorRef color);

/// Calls the object's getter for a colour. A nil receiver answers nothing.
Answer askColor(NSObject* receiver, const char* getter);
Answer askTint(const probe::Situation& situation);

/// The foreground of a status bar when the system asks for that colour.
Answer askStatusBar(const Color& wanted);

/// The tint of the surface's backdrop: its colour, strengths and whether it is used, as "tint",
/// "tint alpha", "tint mask alpha" and "tinted".
void askBackdrop(Answers& answers, NSObject* surface);

}  // namespace varnix::screens
