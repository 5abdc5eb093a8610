// The store with the applications' own values.
#pragma once

#include "prefs/KTPrefsManager.h"

struct VXPrefsManager : KTPrefsManager {
  /// The key's value for the main bundle: its own "IDENTIFIER_KEY" where "IDENTIFIER_scope_enabled"
  /// is true, else the plain one; nil for none.
  NSObject* getPref(NSString* key);
  /// The same for an application's identifier. Nil reads as "(null)".
  NSObject* getPrefIdent(NSString* key, NSString* identifier);
};
