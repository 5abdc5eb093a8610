// The settings store of one preferences domain.
#pragma once

#include "objc/block.h"
#include "objc/strong.h"
#include "platform/Foundation.h"
#include "platform/Preferences.h"

/// Defaults overlaid by a property-list file, reloaded whenever a Darwin notification says that
/// the file has changed. Used on the main thread; takes no lock.
struct KTPrefsManager : NSObject {
  using Callback = objc::Block<void(KTPrefsManager*)>;

  /// A store for /var/mobile/Library/Preferences/IDENTIFIER.plist. Defaults may be nil. Without a
  /// notification name the store neither observes nor posts and the callback is ignored. The
  /// callback is not kept alive: its owner keeps it as long as the store lives.
  KTPrefsManager* initWithId(NSString* identifier, NSDictionary* defaults, NSString* notification,
                             Callback callback);
  void dealloc();

  /// The file's name without folder and extension.
  NSString* identifier();
  /// Keeps the path and reloads from it at once.
  void setPlistPath(NSString* path);

  /// Rebuilds the merged view; changes that were not saved are lost. A file that is missing or
  /// holds no dictionary contributes nothing.
  void updateCurrentImplementation();
  /// What the notification does: reload, then the callback.
  void notificationReceived();

  /// What is stored, of whatever kind; nil for none.
  NSObject* objectForKey(NSString* key);
  /// A value's reading; zero for none and for a value that is neither number nor string.
  bool boolForKey(NSString* key);
  int intForKey(NSString* key);
  float floatForKey(NSString* key);

  /// In memory only, until save.
  void setObjectForKey(NSObject* object, NSString* key);
  void removeObjectForKey(NSString* key);

  /// Writes the whole merged view, defaults included, in place. A failure is ignored.
  void save();
  void notifyEveryone();
  void saveAndNotify();

  /// A pane's row: the value under its "key", else its "default".
  NSObject* readPreferenceValue(PSSpecifier* specifier);
  /// Stores, saves and announces at once. Nothing happens for a nil specifier.
  void setPreferenceValue(NSObject* value, PSSpecifier* specifier);

  Callback _notificationCallback;
  Strong<NSString> _notificationName;
  Strong<NSMutableDictionary> _currentPrefsImplementation;
  Strong<NSDictionary> _defaultValues;
  Strong<NSString> _plistPath;
};
