// Settings as text, for the clipboard.
#pragma once

#include "platform/Foundation.h"
#include "prefs/presets.h"

namespace varnix::pane {

/// What the user has set, as an XML property list.
NSString* exportedSettings();

/// The settings in such a text; nil if it holds none. Anything else in it is left out.
NSDictionary* importedSettings(NSString* text);

/// The present settings with the preset's colours. What applications have of their own stays, and
/// so do the switches.
NSDictionary* settingsWith(const settings::Preset& preset);

}  // namespace varnix::pane
