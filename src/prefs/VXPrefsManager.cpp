#include "prefs/VXPrefsManager.h"

#include "prefs/KTPrefsManager_object.h"
#include "prefs/main_bundle.h"
#include "prefs/scope_keys.h"
#include "prefs/value.h"

namespace varnix {

namespace {

struct ScopedPrefsManager : objc::Implementation<VXPrefsManager, PrefsManager> {
  NSObject* getPref(NSString* key) {
    return send(self(), VXPrefsManager::getPrefIdent, key, mainBundleIdentifier());
  }

  NSObject* getPrefIdent(NSString* key, NSString* identifier) {
    const ScopeKeys keys = scopeKeys(identifier, key);
    // Direct look-ups save six messages for each tint.
    NSObject* scope = objectForKey(keys.switchKey);
    NSObject* own = objectForKey(keys.overrideKey);
    if (isReadable(own) && boolOf(scope)) return own;
    return objectForKey(key);
  }
};

}  // namespace
}  // namespace varnix

OBJC_PRIVATE_CLASS_NAMED(
    VXPrefsManager, KTPrefsManager, varnix::ScopedPrefsManager, varnix::PrefsManager,
    objc::Implements<VXPrefsManager::getPref, &varnix::ScopedPrefsManager::getPref>,
    objc::Implements<VXPrefsManager::getPrefIdent, &varnix::ScopedPrefsManager::getPrefIdent>)
