// The Preferences framework: a settings pane's rows.
#pragma once

#include "platform/Foundation.h"

using PSCellType = NSInteger;
inline constexpr PSCellType PSGroupCell = 0;

struct PSSpecifier : objc::View<PSSpecifier, NSObject> {
  static constexpr ClassMessage<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:",
                                PSSpecifier*(NSString*, NSObject*, SEL, SEL, Class, PSCellType,
                                             Class)>
      preferenceSpecifierNamed{};

  static constexpr Message<"properties", NSMutableDictionary*()> properties{};
  /// Raises for nil.
  static constexpr Message<"setProperty:forKey:", void(NSObject*, NSString*)> setProperty{};
};
