// Appearance proxies: the appearance of new controls of a class inside containers of some classes.
#pragma once

#include "UIKit/UIView.h"

namespace host {

/// The proxy of a class of views, anywhere.
NSObject* appearance(Class control, SEL);

/// The proxy of a class of views inside an object of the first class, which is inside one of the
/// second, and so on; nil ends the list. The same list gives the same proxy.
NSObject* appearanceWhenContainedIn(Class control, SEL, Class first, ...);

/// When a view is added to another, gives it and all its subviews what their proxies were told, the
/// most specific proxy first. Values that were set on a view itself stay.
void applyAppearance(View* added);

}  // namespace host
