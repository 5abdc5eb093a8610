// The situations in which surfaces are asked. Every object is made and changed by messages alone.
#pragma once

#include "probe/objects.h"

namespace varnix::probe {

Strong<NSObject> redView(Class cls);
/// A segmented control, or a segment inside one where that class is there.
Strong<NSObject> segmented(Class cls);
Strong<NSObject> blueSegmented(Class cls);
/// A switch that was set to red and then laid out.
Strong<NSObject> redSwitchAfterLayout(Class cls);
/// Attributes for which the system asks for a white background and a black foreground.
Strong<NSObject> statusBarAttributes(Class cls);
/// A style of text whose links were set to red.
Strong<NSObject> redLink(Class cls);
/// Colours of a balloon's gradient; nil where there are none.
Strong<NSObject> firstShade(Class cls);
Strong<NSObject> lastShade(Class cls);

}  // namespace varnix::probe
