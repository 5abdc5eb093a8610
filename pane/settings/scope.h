// Whose settings a page shows: those of everybody, or an application's own.
#pragma once

#include "platform/UIKit.h"
#include "prefs/elements.h"

namespace varnix::pane {

/// What an element carries: the library's colour types.
enum ColorType : int { kFollows = 0, kUndyedType = 1, kOwnColor = 2 };

struct Scope {
  NSString* application = nullptr;  ///< its identifier; nil for everybody

  /// The key in the file: KEY, or IDENTIFIER_KEY.
  NSString* key(NSString* name) const;
  NSString* key(const char* name, const char* suffix = "") const;

  /// What is stored there and readable; else what holds for everybody; else nil.
  NSObject* value(const char* name, const char* suffix = "") const;

  /// What a colour row shows where nothing is stored, as "#rrggbb": for an application what holds
  /// for everybody.
  NSString* fallbackColor(const char* name, const char* suffix, const char* fallback) const;

  /// Whether an application's own values count. Always for everybody's.
  bool counts() const;

  ColorType typeOf(const settings::Element& element) const;
  /// The colour that everything follows. Where that is the icon's: for an application its own, nil
  /// if nobody has computed it; for everybody that of the Settings application.
  UIColor* dye() const;
  /// The element's; nil for one that is not dyed, or whose colour is not known.
  UIColor* colorOf(const settings::Element& element) const;
};

/// The colour of a stored value, or of the fallback if it has no accepted form.
UIColor* colorOf(NSObject* value, const char* fallback);

/// As "#rrggbb"; nil for nil.
NSString* digitsOf(UIColor* color);

}  // namespace varnix::pane
