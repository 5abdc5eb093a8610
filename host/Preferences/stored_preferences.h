// The system's own preferences of a row: those that its properties name.
#pragma once

#include "platform/Preferences.h"

namespace host {

/// The value of the row's "key" in the domain that its "defaults" names; else its "default".
NSObject* storedPreference(PSSpecifier* row);
/// Keeps the value, posts the notification that the row's "PostNotification" names, and writes the
/// domain's file when the main loop next turns, as the system's daemon does: whoever reads the file
/// at once finds the old value. Nil removes it.
void storePreference(NSObject* value, PSSpecifier* row);

}  // namespace host
