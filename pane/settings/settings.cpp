#include "settings/settings.h"

#include "objc/strong.h"
#include "settings/kinds.h"

namespace varnix::pane {

namespace {

constinit VNXManager* sharedManager = nullptr;
constinit KTPrefsManager* sharedMemory = nullptr;

void announce(KTPrefsManager*) {
  send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::postNotificationName,
       kSettingsChanged(), nullptr);
}

// Keys of the pane's own memory.
NSString* undoSettings() { return "undo_settings"_ns; }
NSString* undoTitle() { return "undo_name"_ns; }

/// All at once: what is known goes, what is given comes.
void exchange(NSDictionary* settings) {
  KTPrefsManager* all = store();
  send(all, KTPrefsManager::updateCurrentImplementation);
  eachKey(userSettings(), [&](NSString* key) { send(all, KTPrefsManager::removeObject, key); });
  eachKey(settings, [&](NSString* key) {
    send(all, KTPrefsManager::setObject, send(settings, NSDictionary::objectForKey, key), key);
  });
  send(all, KTPrefsManager::saveAndNotify);
}

}  // namespace

VNXManager* manager() {
  if (sharedManager == nullptr) {
    sharedManager = objc::make<VNXManager>().leak();
    send(store(), KTPrefsManager::setNotificationCallback, objc::globalBlock<&announce>());
  }
  return sharedManager;
}

KTPrefsManager* store() { return send(manager(), VNXManager::prefsMan); }

KTPrefsManager* memory() {
  if (sharedMemory == nullptr) {
    constexpr NSString* kUnnamed = nullptr;
    sharedMemory =
        send(objc::alloc<KTPrefsManager>(), KTPrefsManager::initWithId,
             "com.quillmarsh.varnix2.pane"_ns, nullptr, kUnnamed, KTPrefsManager::Callback{});
  }
  return sharedMemory;
}

void store(NSObject* value, PSSpecifier* row) {
  // The store writes its whole view, and not everybody who writes the file says so before.
  send(store(), KTPrefsManager::updateCurrentImplementation);
  send(store(), KTPrefsManager::setPreferenceValue, value, row);
}

void forget(NSString* key) {
  send(store(), KTPrefsManager::updateCurrentImplementation);
  send(store(), KTPrefsManager::removeObject, key);
  send(store(), KTPrefsManager::saveAndNotify);
}

NSDictionary* userSettings() {
  return knownEntries(send(store(), KTPrefsManager::currentPrefsImplementation));
}

void replaceSettings(NSDictionary* settings, NSString* name) {
  send(store(), KTPrefsManager::updateCurrentImplementation);
  send(memory(), KTPrefsManager::setObject, userSettings(), undoSettings());
  send(memory(), KTPrefsManager::setObject, name, undoTitle());
  send(memory(), KTPrefsManager::save);
  exchange(settings);
}

NSString* undoName() {
  const bool isThere = objc::as<NSDictionary>(
                           send(memory(), KTPrefsManager::objectForKey, undoSettings())) != nullptr;
  return isThere ? objc::as<NSString>(send(memory(), KTPrefsManager::objectForKey, undoTitle()))
                 : nullptr;
}

void undo() {
  auto kept = Strong<NSDictionary>::retain(
      objc::as<NSDictionary>(send(memory(), KTPrefsManager::objectForKey, undoSettings())));
  if (kept == nullptr) return;
  send(memory(), KTPrefsManager::removeObject, undoSettings());
  send(memory(), KTPrefsManager::removeObject, undoTitle());
  send(memory(), KTPrefsManager::save);
  exchange(knownEntries(kept));
}

}  // namespace varnix::pane
