// The store with the applications' own values.
#pragma once

#include "prefs/KTPrefsManager.h"

struct VXPrefsManager : objc::View<VXPrefsManager, KTPrefsManager> {
  /// The key's value for the main bundle: its own "IDENTIFIER_KEY" if "IDENTIFIER_scope_enabled" is
  /// true, else the plain one; nil if there is none.
  static constexpr Message<"getPref:", NSObject*(NSString*)> getPref{};
  /// The same for an application's identifier. Nil counts as "(null)".
  static constexpr Message<"getPref:ident:", NSObject*(NSString* key, NSString* identifier)>
      getPrefIdent{};
};
OBJC_OWN_CLASS(VXPrefsManager);
