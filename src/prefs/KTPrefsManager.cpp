#include "prefs/KTPrefsManager.h"

#include "objc/define.h"
#include "platform/CoreFoundation.h"
#include "prefs/value.h"

using objc::Atomicity;
using objc::Method;
using objc::Property;
using objc::Setter;
using objc::Storage;
using varnix::readable;

namespace {

// A table row is also the way to store past an accessor that another extension may have replaced.
using NotificationCallback =
    Property<"notificationCallback", &KTPrefsManager::_notificationCallback, Storage::assign,
             Atomicity::atomic>;
using NotificationName =
    Property<"notificationName", &KTPrefsManager::_notificationName, Storage::copy>;
using CurrentPrefsImplementation =
    Property<"currentPrefsImplementation", &KTPrefsManager::_currentPrefsImplementation>;
using DefaultValues = Property<"defaultValues", &KTPrefsManager::_defaultValues, Storage::copy>;
using PlistPath = Property<"plistPath", &KTPrefsManager::_plistPath, Storage::strong,
                           Atomicity::nonatomic, Setter::custom>;

void notificationArrived(CFNotificationCenterRef, void* observer, CFStringRef, const void*,
                         CFDictionaryRef) {
  send<void>(observer, "notificationReceived"_sel);
}

}  // namespace

KTPrefsManager* KTPrefsManager::initWithId(NSString* identifier, NSDictionary* defaults,
                                           NSString* notification, Callback callback) {
  sendSuper<KTPrefsManager*>(this, "init"_sel);
  PlistPath::store(
      this, NSString::stringWithFormat("/var/mobile/Library/Preferences/%@.plist"_ns, identifier));
  DefaultValues::store(this, defaults);
  if (notification != nullptr) {
    NotificationName::store(this, notification);
    NotificationCallback::store(this, callback);
    CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), this,
                                    &notificationArrived, notification, nullptr,
                                    CFNotificationSuspensionBehavior::coalesce);
  }
  send<void>(this, "updateCurrentImplementation"_sel);
  return this;
}

// The path goes through its setter, which reloads once more: by then there are neither defaults
// nor a path, so that it builds an empty view.
void KTPrefsManager::dealloc() {
  send<void>(this, "setDefaultValues:"_sel, static_cast<NSDictionary*>(nullptr));
  send<void>(this, "setNotificationName:"_sel, static_cast<NSString*>(nullptr));
  send<void>(this, "setPlistPath:"_sel, static_cast<NSString*>(nullptr));
  send<void>(this, "setCurrentPrefsImplementation:"_sel,
             static_cast<NSMutableDictionary*>(nullptr));
  sendSuper<void>(this, "dealloc"_sel);
}

NSString* KTPrefsManager::identifier() {
  auto* name = send<NSString*>(_plistPath, "lastPathComponent"_sel);
  return send<NSString*>(name, "stringByDeletingPathExtension"_sel);
}

void KTPrefsManager::setPlistPath(NSString* path) {
  PlistPath::store(this, path);
  send<void>(this, "updateCurrentImplementation"_sel);
}

void KTPrefsManager::updateCurrentImplementation() {
  NSMutableDictionary* merged = NSMutableDictionary::dictionary();
  merged->addEntriesFromDictionary(_defaultValues);
  merged->addEntriesFromDictionary(NSDictionary::dictionaryWithContentsOfFile(_plistPath));
  send<void>(this, "setCurrentPrefsImplementation:"_sel, merged);
}

void KTPrefsManager::notificationReceived() {
  send<void>(this, "updateCurrentImplementation"_sel);
  if (_notificationCallback != nullptr) (*_notificationCallback)(this);
}

NSObject* KTPrefsManager::objectForKey(NSString* key) {
  return send<NSObject*>(_currentPrefsImplementation, "objectForKey:"_sel, key);
}

bool KTPrefsManager::boolForKey(NSString* key) {
  return send<bool>(readable(objectForKey(key)), "boolValue"_sel);
}

int KTPrefsManager::intForKey(NSString* key) {
  return send<int>(readable(objectForKey(key)), "intValue"_sel);
}

float KTPrefsManager::floatForKey(NSString* key) {
  return send<float>(readable(objectForKey(key)), "floatValue"_sel);
}

void KTPrefsManager::setObjectForKey(NSObject* object, NSString* key) {
  send<void>(_currentPrefsImplementation, "setObject:forKey:"_sel, object, key);
}

void KTPrefsManager::removeObjectForKey(NSString* key) {
  send<void>(_currentPrefsImplementation, "removeObjectForKey:"_sel, key);
}

// In place, not through a temporary file: the file may be a link, and keeps its owner and mode.
void KTPrefsManager::save() {
  send<bool>(_currentPrefsImplementation, "writeToFile:atomically:"_sel, _plistPath.get(), false);
}

void KTPrefsManager::notifyEveryone() {
  if (_notificationName == nullptr) return;
  CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(),
                                       _notificationName, nullptr, nullptr, true);
}

void KTPrefsManager::saveAndNotify() {
  send<void>(this, "save"_sel);
  send<void>(this, "notifyEveryone"_sel);
}

NSObject* KTPrefsManager::readPreferenceValue(PSSpecifier* specifier) {
  auto* properties = send<NSMutableDictionary*>(specifier, "properties"_sel);
  auto* key = send<NSString*>(properties, "objectForKey:"_sel, "key"_ns);
  if (NSObject* stored = objectForKey(key)) return stored;
  return send<NSObject*>(properties, "objectForKey:"_sel, "default"_ns);
}

void KTPrefsManager::setPreferenceValue(NSObject* value, PSSpecifier* specifier) {
  if (specifier == nullptr) return;
  auto* key = send<NSString*>(specifier->properties(), "objectForKey:"_sel, "key"_ns);
  send<void>(this, "setObject:forKey:"_sel, value, key);
  send<void>(this, "saveAndNotify"_sel);
}

OBJC_EXPORTED_CLASS(
    KTPrefsManager, NSObject, NotificationCallback, NotificationName, CurrentPrefsImplementation,
    DefaultValues, PlistPath,
    Method<"initWithId:defaultValues:notification:notificationCallback:",
           &KTPrefsManager::initWithId>,
    Method<"dealloc", &KTPrefsManager::dealloc>, Method<"identifier", &KTPrefsManager::identifier>,
    Method<"setPlistPath:", &KTPrefsManager::setPlistPath>,
    Method<"updateCurrentImplementation", &KTPrefsManager::updateCurrentImplementation>,
    Method<"notificationReceived", &KTPrefsManager::notificationReceived>,
    Method<"objectForKey:", &KTPrefsManager::objectForKey>,
    Method<"boolForKey:", &KTPrefsManager::boolForKey>,
    Method<"intForKey:", &KTPrefsManager::intForKey>,
    Method<"floatForKey:", &KTPrefsManager::floatForKey>,
    Method<"setObject:forKey:", &KTPrefsManager::setObjectForKey>,
    Method<"removeObjectForKey:", &KTPrefsManager::removeObjectForKey>,
    Method<"save", &KTPrefsManager::save>,
    Method<"notifyEveryone", &KTPrefsManager::notifyEveryone>,
    Method<"saveAndNotify", &KTPrefsManager::saveAndNotify>,
    Method<"readPreferenceValue:", &KTPrefsManager::readPreferenceValue>,
    Method<"setPreferenceValue:specifier:", &KTPrefsManager::setPreferenceValue>)
