#include "prefs/VXPrefsManager.h"

#include "objc/define.h"
#include "prefs/main_bundle.h"
#include "prefs/scope_keys.h"
#include "prefs/value.h"

using objc::Method;

NSObject* VXPrefsManager::getPref(NSString* key) {
  return getPrefIdent(key, varnix::mainBundleIdentifier());
}

NSObject* VXPrefsManager::getPrefIdent(NSString* key, NSString* identifier) {
  const varnix::ScopeKeys keys = varnix::scopeKeys(identifier, key);
  NSObject* scope = varnix::readable(objectForKey(keys.switchKey));
  NSObject* own = varnix::readable(objectForKey(keys.overrideKey));
  if (scope != nullptr && own != nullptr && send<bool>(scope, "boolValue"_sel)) return own;
  return objectForKey(key);
}

OBJC_CLASS(VXPrefsManager, KTPrefsManager, Method<"getPref:", &VXPrefsManager::getPref>,
           Method<"getPref:ident:", &VXPrefsManager::getPrefIdent>)
