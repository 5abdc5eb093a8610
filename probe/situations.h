// The situations in which surfaces are asked. All objects are made and changed by messages alone.
#pragma once

#include "probe/objects.h"

namespace varnix::probe {

Strong<NSObject> redView(Class cls);
/// A segmented control, or a segment in one if the process has that class.
Strong<NSObject> segmented(Class cls);
Strong<NSObject> blueSegmented(Class cls);
/// A switch that was set to red and then had its layout done.
Strong<NSObject> redSwitchAfterLayout(Class cls);
/// Attributes that the system asks for with a white background and a black foreground.
Strong<NSObject> statusBarAttributes(Class cls);
/// A text style whose links were set to red.
Strong<NSObject> redLink(Class cls);
/// The colours of a balloon's gradient; nil if there are none.
Strong<NSObject> firstShade(Class cls);
Strong<NSObject> lastShade(Class cls);

}  // namespace varnix::probe
