// The settings store of one preferences domain.
#pragma once

#include "objc/block.h"
#include "objc/own_class.h"
#include "platform/Foundation.h"
#include "platform/Preferences.h"

/// Defaults overlaid by a property-list file, reloaded whenever a Darwin notification says that the
/// file has changed. Only the main thread changes it. Other threads may read at the same time, and
/// no lock is taken.
struct KTPrefsManager : objc::View<KTPrefsManager, NSObject> {
  using Callback = objc::Block<void(KTPrefsManager*)>;

  /// A store for /var/mobile/Library/Preferences/IDENTIFIER.plist. Defaults may be nil. Without a
  /// notification name the store neither observes nor posts and the callback is ignored. The
  /// callback is not kept alive: its owner keeps it as long as the store lives.
  static constexpr Message<"initWithId:defaultValues:notification:notificationCallback:",
                           KTPrefsManager*(NSString* identifier, NSDictionary* defaults,
                                           NSString* notification, Callback)>
      initWithId{};

  static constexpr Message<"notificationCallback", Callback()> notificationCallback{};
  static constexpr Message<"setNotificationCallback:", void(Callback)> setNotificationCallback{};
  static constexpr Message<"notificationName", NSString*()> notificationName{};
  static constexpr Message<"setNotificationName:", void(NSString*)> setNotificationName{};
  /// The merged view. It is replaced as a whole, never changed.
  static constexpr Message<"currentPrefsImplementation", NSMutableDictionary*()>
      currentPrefsImplementation{};
  static constexpr Message<"setCurrentPrefsImplementation:", void(NSMutableDictionary*)>
      setCurrentPrefsImplementation{};
  static constexpr Message<"defaultValues", NSDictionary*()> defaultValues{};
  static constexpr Message<"setDefaultValues:", void(NSDictionary*)> setDefaultValues{};
  static constexpr Message<"plistPath", NSString*()> plistPath{};
  /// Stores the path and reloads from it at once.
  static constexpr Message<"setPlistPath:", void(NSString*)> setPlistPath{};
  /// The file's name without folder and extension.
  static constexpr Message<"identifier", NSString*()> identifier{};

  /// Rebuilds the merged view; unsaved changes are lost. A file that is missing or holds no
  /// dictionary contributes nothing. An empty file may be in the middle of being written: the
  /// calling thread waits up to 15 ms for its contents.
  static constexpr Message<"updateCurrentImplementation", void()> updateCurrentImplementation{};
  /// What the notification does: reload, then the callback.
  static constexpr Message<"notificationReceived", void()> notificationReceived{};

  /// The stored value, of any kind; nil if there is none.
  static constexpr Message<"objectForKey:", NSObject*(NSString*)> objectForKey{};
  // The value read as that type; zero if there is none, or if it is neither number nor string.
  static constexpr Message<"boolForKey:", bool(NSString*)> boolForKey{};
  static constexpr Message<"intForKey:", int(NSString*)> intForKey{};
  static constexpr Message<"floatForKey:", float(NSString*)> floatForKey{};

  // Only in memory, until save.
  static constexpr Message<"setObject:forKey:", void(NSObject*, NSString*)> setObject{};
  static constexpr Message<"removeObjectForKey:", void(NSString*)> removeObject{};

  /// Writes the whole merged view, defaults included, in place. A failure is ignored.
  static constexpr Message<"save", void()> save{};
  static constexpr Message<"notifyEveryone", void()> notifyEveryone{};
  static constexpr Message<"saveAndNotify", void()> saveAndNotify{};

  /// The value of a pane's row: that for its "key", or else its "default".
  static constexpr Message<"readPreferenceValue:", NSObject*(PSSpecifier*)> readPreferenceValue{};
  /// Stores, saves and announces at once. Nothing happens for a nil specifier.
  static constexpr Message<"setPreferenceValue:specifier:", void(NSObject*, PSSpecifier*)>
      setPreferenceValue{};
};
OBJC_OWN_EXPORTED_CLASS(KTPrefsManager);
