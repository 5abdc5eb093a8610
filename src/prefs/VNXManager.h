// Turns settings into answers: whether an element is dyed, and with which colour.
#pragma once

#include "platform/UIKit.h"
#include "prefs/VXPrefsManager.h"
#include "prefs/elements.h"

/// One per process, made when the library is loaded and never released. It reads the store for
/// every question, so that answers follow the settings at once. Any thread may ask.
struct VNXManager : objc::View<VNXManager, NSObject> {
  static constexpr Message<"prefsMan", VXPrefsManager*()> prefsMan{};
  static constexpr Message<"setPrefsMan:", void(VXPrefsManager*)> setPrefsMan{};
  /// This process's icon colour, once it has been asked for.
  static constexpr Message<"cachedIconColor", UIColor*()> cachedIconColor{};
  static constexpr Message<"setCachedIconColor:", void(UIColor*)> setCachedIconColor{};

  /// The master switch; yes if nothing is stored.
  static constexpr Message<"tweakEnabled", bool()> tweakEnabled{};
  /// Whether the settings exclude that application: only an explicit no does.
  static constexpr Message<"appIsDisabled:", bool(NSString* identifier)> appIsDisabled{};
  /// The main bundle's identifier, or nil.
  static constexpr Message<"bundleId", NSString*()> bundleId{};
  static constexpr Message<"isSpringBoard", bool()> isSpringBoard{};
  /// SpringBoard: the frontmost application's identifier; nil on the home screen.
  static constexpr Message<"getOpenAppId", NSString*()> getOpenAppId{};
  /// Whether the plain global colour type asks for icon colours.
  static constexpr Message<"wantsIconColor", bool()> wantsIconColor{};
  /// Whether SpringBoard's surfaces follow the playing track's artwork.
  static constexpr Message<"useAlbumArt", bool()> useAlbumArt{};

  /// The colour of everything that follows the dye. Not marked as ours: elements do that.
  static constexpr Message<"dye", UIColor*()> dye{};

  /// The colour type of an element in the table: 1 is not dyed, 2 its own colour, anything else
  /// follows the dye.
  template <objc::FixedString Operation>
    requires varnix::settings::kIsElement<Operation>
  static constexpr Message<Operation + "Enabled", NSInteger()> enabled{};
  /// Its colour, marked as ours; nil if it is not dyed.
  template <objc::FixedString Operation>
    requires varnix::settings::kIsElement<Operation>
  static constexpr Message<Operation + "Dye", UIColor*()> dyeOf{};

  /// The type for the key: for this process, or with the flag for the open application.
  static constexpr Message<"_getEnabledForKey:sbContext:", NSInteger(NSString* typeKey, bool)>
      getEnabledForKey{};
  /// The colour that goes with the answer of one of the operations above.
  static constexpr Message<"_getDyeColorWithKey:fallback:enabledSel:",
                           UIColor*(NSString* colorKey, NSString* fallback, SEL enabledOperation)>
      getDyeColorWithKey{};
};
OBJC_OWN_CLASS(VNXManager);
