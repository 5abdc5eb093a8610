// The settings as the pane reads and writes them: one store, which hears of every change.
#pragma once

#include "prefs/KTPrefsManager.h"
#include "prefs/VNXManager.h"

namespace varnix::pane {

/// The present dye and what else the library decides. Made at the first call.
VNXManager* manager();

/// The manager's own store. Whenever it reloads, kSettingsChanged is posted.
KTPrefsManager* store();

/// Posted in this process, without an object, after each reload.
inline NSString* kSettingsChanged() { return "VNXSettingsChanged"_ns; }

/// What the pane itself remembers; nobody hears of it.
KTPrefsManager* memory();

/// Stores the value under the row's key, for every process at once. What others wrote is read
/// first.
void store(NSObject* value, PSSpecifier* row);

/// Removes a value for every process at once.
void forget(NSString* key);

/// Everything stored that a user may have set.
NSDictionary* userSettings();

/// Puts these in place of userSettings(), and remembers what they replaced under that name.
void replaceSettings(NSDictionary* settings, NSString* name);

/// The name of what can be undone; nil if there is nothing.
NSString* undoName();
/// Puts back what replaceSettings replaced, once.
void undo();

}  // namespace varnix::pane
