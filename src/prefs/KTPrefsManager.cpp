#include "prefs/KTPrefsManager_object.h"

#include "platform/CoreFoundation.h"
#include "prefs/value.h"

namespace varnix {

using objc::Accessors;
using objc::Atomicity;
using objc::Implements;
using objc::Setter;
using objc::Storage;

namespace {

// The table's rows also serve to store values without the accessors, which another extension may
// have replaced.
using NotificationCallback =
    Accessors<KTPrefsManager::notificationCallback, KTPrefsManager::setNotificationCallback,
              &PrefsManager::_notificationCallback, Storage::assign, Atomicity::atomic>;
using NotificationName =
    Accessors<KTPrefsManager::notificationName, KTPrefsManager::setNotificationName,
              &PrefsManager::_notificationName, Storage::copy>;
using CurrentPrefsImplementation = Accessors<KTPrefsManager::currentPrefsImplementation,
                                             KTPrefsManager::setCurrentPrefsImplementation,
                                             &PrefsManager::_currentPrefsImplementation>;
using DefaultValues = Accessors<KTPrefsManager::defaultValues, KTPrefsManager::setDefaultValues,
                                &PrefsManager::_defaultValues, Storage::copy>;
using PlistPath =
    Accessors<KTPrefsManager::plistPath, KTPrefsManager::setPlistPath, &PrefsManager::_plistPath,
              Storage::strong, Atomicity::nonatomic, Setter::custom>;

void notificationArrived(CFNotificationCenterRef, void* observer, CFStringRef, const void*,
                         CFDictionaryRef) {
  send(static_cast<KTPrefsManager*>(observer), KTPrefsManager::notificationReceived);
}

/// Changes a copy of the merged view and replaces the view with it: another thread may be reading
/// the view.
template <class Change>
void changeView(PrefsManager& store, Change change) {
  for (;;) {
    using View = Strong<NSMutableDictionary>;
    // The pool owns both: a nil object or key raises, and nothing would be released here.
    NSMutableDictionary* view = store._currentPrefsImplementation.read().autorelease();
    if (view == nullptr) return;
    NSMutableDictionary* changed = NSMutableDictionary::dictionary();
    send(changed, NSMutableDictionary::addEntriesFromDictionary, view);
    change(changed);
    if (store._currentPrefsImplementation.replaceIf(View::retain(view), View::retain(changed)))
      return;
  }
}

/// In seconds. A file that is written in place is empty for a moment.
constexpr double kWaits[] = {0.001, 0.002, 0.004, 0.008};

/// Nil for a file that is missing, stays empty, or holds no dictionary.
NSDictionary* dictionaryIn(NSString* path) {
  for (const double wait : kWaits) {
    if (NSDictionary* found = NSDictionary::dictionaryWithContentsOfFile(path)) return found;
    NSData* bytes = NSData::dataWithContentsOfFile(path);
    if (bytes == nullptr) return nullptr;
    if (send(bytes, NSData::length) != 0) break;  // written meanwhile, or not a property list
    NSThread::sleepForTimeInterval(wait);
  }
  return NSDictionary::dictionaryWithContentsOfFile(path);
}

}  // namespace

KTPrefsManager* PrefsManager::initWithId(NSString* identifier, NSDictionary* defaults,
                                         NSString* notification,
                                         KTPrefsManager::Callback callback) {
  objc::sendSuper<KTPrefsManager>(self(), NSObject::init);
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
  send(self(), KTPrefsManager::updateCurrentImplementation);
  return self();
}

// The path is cleared through its setter, which reloads once more. By then there are neither
// defaults nor a path, so it builds an empty view.
void PrefsManager::dealloc() {
  send(self(), KTPrefsManager::setDefaultValues, nullptr);
  send(self(), KTPrefsManager::setNotificationName, nullptr);
  send(self(), KTPrefsManager::setPlistPath, nullptr);
  send(self(), KTPrefsManager::setCurrentPrefsImplementation, nullptr);
  objc::sendSuper<KTPrefsManager>(self(), NSObject::dealloc);
}

NSString* PrefsManager::identifier() {
  NSString* name = send(_plistPath, NSString::lastPathComponent);
  return send(name, NSString::stringByDeletingPathExtension);
}

void PrefsManager::setPlistPath(NSString* path) {
  PlistPath::store(this, path);
  send(self(), KTPrefsManager::updateCurrentImplementation);
}

void PrefsManager::updateCurrentImplementation() {
  NSMutableDictionary* merged = NSMutableDictionary::dictionary();
  send(merged, NSMutableDictionary::addEntriesFromDictionary, _defaultValues);
  send(merged, NSMutableDictionary::addEntriesFromDictionary, dictionaryIn(_plistPath));
  send(self(), KTPrefsManager::setCurrentPrefsImplementation, merged);
}

void PrefsManager::notificationReceived() {
  send(self(), KTPrefsManager::updateCurrentImplementation);
  if (_notificationCallback != nullptr) (*_notificationCallback)(self());
}

// The object must outlive the view, for the caller.
NSObject* PrefsManager::objectForKey(NSString* key) {
  const auto view = _currentPrefsImplementation.read();
  return Strong<NSObject>::retain(send(view, NSDictionary::objectForKey, key)).autorelease();
}

bool PrefsManager::boolForKey(NSString* key) {
  return boolOf(send(self(), KTPrefsManager::objectForKey, key));
}

int PrefsManager::intForKey(NSString* key) {
  return intOf(send(self(), KTPrefsManager::objectForKey, key));
}

float PrefsManager::floatForKey(NSString* key) {
  return floatOf(send(self(), KTPrefsManager::objectForKey, key));
}

void PrefsManager::setObjectForKey(NSObject* object, NSString* key) {
  changeView(*this, [&](NSMutableDictionary* view) {
    send(view, NSMutableDictionary::setObjectForKey, object, key);
  });
}

void PrefsManager::removeObjectForKey(NSString* key) {
  changeView(*this, [&](NSMutableDictionary* view) {
    send(view, NSMutableDictionary::removeObjectForKey, key);
  });
}

// In place, not through a temporary file: the file may be a link, and keeps its owner and mode.
void PrefsManager::save() {
  send(_currentPrefsImplementation.read(), NSDictionary::writeToFile, _plistPath, false);
}

void PrefsManager::notifyEveryone() {
  if (_notificationName == nullptr) return;
  CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(),
                                       _notificationName, nullptr, nullptr, true);
}

void PrefsManager::saveAndNotify() {
  send(self(), KTPrefsManager::save);
  send(self(), KTPrefsManager::notifyEveryone);
}

NSObject* PrefsManager::readPreferenceValue(PSSpecifier* specifier) {
  NSMutableDictionary* properties = send(specifier, PSSpecifier::properties);
  auto* key = static_cast<NSString*>(send(properties, NSDictionary::objectForKey, "key"_ns));
  if (NSObject* stored = send(self(), KTPrefsManager::objectForKey, key)) return stored;
  return send(properties, NSDictionary::objectForKey, "default"_ns);
}

void PrefsManager::setPreferenceValue(NSObject* value, PSSpecifier* specifier) {
  if (specifier == nullptr) return;
  NSMutableDictionary* properties = send(specifier, PSSpecifier::properties);
  auto* key = static_cast<NSString*>(send(properties, NSDictionary::objectForKey, "key"_ns));
  send(self(), KTPrefsManager::setObject, value, key);
  send(self(), KTPrefsManager::saveAndNotify);
}

}  // namespace varnix

OBJC_CLASS_NAMED(
    KTPrefsManager, NSObject, varnix::PrefsManager, NSObject, varnix::NotificationCallback,
    varnix::NotificationName, varnix::CurrentPrefsImplementation, varnix::DefaultValues,
    varnix::PlistPath,
    objc::Implements<KTPrefsManager::initWithId, &varnix::PrefsManager::initWithId>,
    objc::Implements<NSObject::dealloc, &varnix::PrefsManager::dealloc>,
    objc::Implements<KTPrefsManager::identifier, &varnix::PrefsManager::identifier>,
    objc::Implements<KTPrefsManager::setPlistPath, &varnix::PrefsManager::setPlistPath>,
    objc::Implements<KTPrefsManager::updateCurrentImplementation,
                     &varnix::PrefsManager::updateCurrentImplementation>,
    objc::Implements<KTPrefsManager::notificationReceived,
                     &varnix::PrefsManager::notificationReceived>,
    objc::Implements<KTPrefsManager::objectForKey, &varnix::PrefsManager::objectForKey>,
    objc::Implements<KTPrefsManager::boolForKey, &varnix::PrefsManager::boolForKey>,
    objc::Implements<KTPrefsManager::intForKey, &varnix::PrefsManager::intForKey>,
    objc::Implements<KTPrefsManager::floatForKey, &varnix::PrefsManager::floatForKey>,
    objc::Implements<KTPrefsManager::setObject, &varnix::PrefsManager::setObjectForKey>,
    objc::Implements<KTPrefsManager::removeObject, &varnix::PrefsManager::removeObjectForKey>,
    objc::Implements<KTPrefsManager::save, &varnix::PrefsManager::save>,
    objc::Implements<KTPrefsManager::notifyEveryone, &varnix::PrefsManager::notifyEveryone>,
    objc::Implements<KTPrefsManager::saveAndNotify, &varnix::PrefsManager::saveAndNotify>,
    objc::Implements<KTPrefsManager::readPreferenceValue,
                     &varnix::PrefsManager::readPreferenceValue>,
    objc::Implements<KTPrefsManager::setPreferenceValue, &varnix::PrefsManager::setPreferenceValue>)
