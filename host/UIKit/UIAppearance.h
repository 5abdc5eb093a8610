// Appearance proxies: what new controls of a class look like inside containers of some classes.
#pragma once

#include "UIKit/UIView.h"

namespace host {

/// The proxy of a class of views, anywhere.
NSObject* appearance(Class control, SEL);

/// The proxy of a class of views inside an object of the first class, which is inside one of the
/// second and so on; the list ends with nil. The same for the same list.
NSObject* appearanceWhenContainedIn(Class control, SEL, Class first, ...);

/// Gives a view that came into another, and all below it, what their proxies were told: the most
/// closely described one first. What a view was told itself stays.
void applyAppearance(View* added);

}  // namespace host
