// The store's implementation: its instance variables, which those of a subclass follow.
#pragma once

#include "objc/implementation.h"
#include "prefs/KTPrefsManager.h"

namespace varnix {

struct PrefsManager : objc::Implementation<KTPrefsManager> {
  KTPrefsManager* initWithId(NSString* identifier, NSDictionary* defaults, NSString* notification,
                             KTPrefsManager::Callback callback);
  void dealloc();

  NSString* identifier();
  void setPlistPath(NSString* path);
  void updateCurrentImplementation();
  void notificationReceived();

  NSObject* objectForKey(NSString* key);
  bool boolForKey(NSString* key);
  int intForKey(NSString* key);
  float floatForKey(NSString* key);
  void setObjectForKey(NSObject* object, NSString* key);
  void removeObjectForKey(NSString* key);

  void save();
  void notifyEveryone();
  void saveAndNotify();
  NSObject* readPreferenceValue(PSSpecifier* specifier);
  void setPreferenceValue(NSObject* value, PSSpecifier* specifier);

  KTPrefsManager::Callback _notificationCallback;
  Strong<NSString> _notificationName;
  /// Any thread may read it while a reload replaces it.
  Published<NSMutableDictionary> _currentPrefsImplementation;
  Strong<NSDictionary> _defaultValues;
  Strong<NSString> _plistPath;
};

}  // namespace varnix
