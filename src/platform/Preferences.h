// The Preferences framework: a settings pane's rows.
#pragma once

#include "platform/Foundation.h"

using PSCellType = NSInteger;
inline constexpr PSCellType PSGroupCell = 0;

struct PSSpecifier : NSObject {
  static PSSpecifier* preferenceSpecifierNamed(NSString* name, NSObject* target, SEL set, SEL get,
                                               Class detail, PSCellType cell, Class edit) {
    return send<PSSpecifier*>(objc::classOf<PSSpecifier>(),
                              "preferenceSpecifierNamed:target:set:get:detail:cell:edit:"_sel, name,
                              target, set, get, detail, cell, edit);
  }

  NSMutableDictionary* properties() { return send<NSMutableDictionary*>(this, "properties"_sel); }
  /// Raises for nil.
  void setProperty(NSObject* value, NSString* key) {
    send<void>(this, "setProperty:forKey:"_sel, value, key);
  }
};
