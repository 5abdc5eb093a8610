// What packages add to the list of settings.
#pragma once

#include <vector>

#include "objc/strong.h"
#include "platform/Preferences.h"

namespace host {

/// A row for each entry in the property lists below /Library/PreferenceLoader/Preferences whose
/// filter lets this system pass, sorted by name. The rows' actions go to the page.
NSArray* settingsEntries(NSObject* page);

/// Of the page behind a row whose bundle could not be loaded.
inline constexpr char kFailedPage[] = "PrefsFailedBundleController";

}  // namespace host
