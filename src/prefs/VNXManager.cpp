#include "prefs/VNXManager.h"

#include "objc/define.h"
#include "platform/SpringBoard.h"
#include "prefs/IconColor.h"
#include "prefs/color_string.h"
#include "prefs/main_bundle.h"
#include "prefs/value.h"

using objc::Method;
using objc::Property;
using objc::Storage;
using varnix::parseColor;
using varnix::readable;

namespace {

using PrefsMan = Property<"prefsMan", &VNXManager::_prefsMan>;
using CachedIconColor = Property<"cachedIconColor", &VNXManager::_cachedIconColor, Storage::copy>;

constexpr NSInteger kNotDyed = 1;
constexpr NSInteger kOwnColor = 2;
constexpr NSInteger kIconColor = 1;

NSString* springBoardId() { return "com.apple.springboard"_ns; }
NSString* defaultGlobalColor() { return "#de3027"_ns; }

// Answers read the store at every question: there is nothing to do when the settings change.
void settingsChanged(KTPrefsManager*) {}

NSInteger integerOf(NSObject* value) {
  return send<NSInteger>(readable(value), "integerValue"_sel);
}

}  // namespace

VNXManager* VNXManager::init() {
  sendSuper<VNXManager*>(this, "init"_sel);
  NSDictionary* defaults =
      NSDictionary::dictionaryWithObjectForKey(NSNumber::numberWithBool(true), "enabled"_ns);
  auto store = Strong<VXPrefsManager>::adopt(send<VXPrefsManager*>(
      objc::alloc<VXPrefsManager>(),
      "initWithId:defaultValues:notification:notificationCallback:"_sel,
      "com.quillmarsh.varnix2"_ns, defaults, "com.quillmarsh.varnix2.changed"_ns,
      objc::globalBlock<&settingsChanged>()));
  send<void>(this, "setPrefsMan:"_sel, store.get());
  return this;
}

void VNXManager::dealloc() {
  send<void>(this, "setPrefsMan:"_sel, static_cast<VXPrefsManager*>(nullptr));
  send<void>(this, "setCachedIconColor:"_sel, static_cast<UIColor*>(nullptr));
  sendSuper<void>(this, "dealloc"_sel);
}

bool VNXManager::tweakEnabled() {
  NSObject* stored = send<NSObject*>(_prefsMan.get(), "objectForKey:"_sel, "enabled"_ns);
  return readable(stored) == nullptr ||
         send<bool>(_prefsMan.get(), "boolForKey:"_sel, "enabled"_ns);
}

bool VNXManager::appIsDisabled(NSString* identifier) {
  NSString* key = NSString::stringWithFormat("%@_enabled"_ns, identifier);
  NSObject* stored = readable(send<NSObject*>(_prefsMan.get(), "objectForKey:"_sel, key));
  return stored != nullptr && !send<bool>(stored, "boolValue"_sel);
}

NSString* VNXManager::bundleId() { return varnix::mainBundleIdentifier(); }

bool VNXManager::isSpringBoard() {
  return send<bool>(bundleId(), "isEqualToString:"_sel, springBoardId());
}

NSString* VNXManager::getOpenAppId() {
  // SpringBoard's alone has it.
  auto* shared = UIApplication::sharedApplication();
  if (shared == nullptr || !shared->respondsToSelector("_accessibilityFrontMostApplication"_sel))
    return nullptr;
  auto* application = send<SBApplication*>(shared, "_accessibilityFrontMostApplication"_sel);
  if (application == nullptr) return nullptr;
  // It says its identifier by one name or the other.
  if (application->respondsToSelector("displayIdentifier"_sel))
    return application->displayIdentifier();
  if (!application->respondsToSelector("bundleIdentifier"_sel)) return nullptr;
  return send<NSString*>(application, "bundleIdentifier"_sel);
}

bool VNXManager::wantsIconColor() {
  return send<int>(_prefsMan.get(), "intForKey:"_sel, "global_color_type"_ns) == kIconColor;
}

bool VNXManager::useAlbumArt() {
  NSObject* value = send<NSObject*>(_prefsMan.get(), "getPref:"_sel, "use_album_art"_ns);
  return send<bool>(readable(value), "boolValue"_sel);
}

UIColor* VNXManager::dye() {
  if (!isSpringBoard() && integerOf(send<NSObject*>(_prefsMan.get(), "getPref:"_sel,
                                                    "global_color_type"_ns)) == kIconColor) {
    auto plainGlobalColor = [this] {
      return parseColor(send<NSObject*>(_prefsMan.get(), "objectForKey:"_sel, "global_color"_ns),
                        defaultGlobalColor());
    };
    // Never so here, where the process is not SpringBoard: the test stays as a guard.
    if (_cachedIconColor == nullptr && isSpringBoard())
      CachedIconColor::store(this, plainGlobalColor());
    if (_cachedIconColor == nullptr) {
      CachedIconColor::store(this, varnix::Color::IconColor(bundleId(), plainGlobalColor(), this));
    }
    return _cachedIconColor;
  }
  return parseColor(send<NSObject*>(_prefsMan.get(), "getPref:"_sel, "global_color"_ns),
                    defaultGlobalColor());
}

NSInteger VNXManager::getEnabled(NSString* typeKey, bool inSpringBoardContext) {
  NSString* identifier = bundleId();
  if (inSpringBoardContext) {
    if (NSString* open = getOpenAppId()) identifier = open;
  }
  return integerOf(send<NSObject*>(_prefsMan.get(), "getPref:ident:"_sel, typeKey, identifier));
}

// An own colour is read for this process even where the type was the open application's.
UIColor* VNXManager::getDyeColor(NSString* colorKey, NSString* fallback, SEL enabledOperation) {
  const auto type = objc::sendDynamic<NSInteger>(this, enabledOperation);
  if (type == kNotDyed) return nullptr;
  UIColor* color =
      type == kOwnColor
          ? parseColor(send<NSObject*>(_prefsMan.get(), "getPref:"_sel, colorKey), fallback)
          : send<UIColor*>(this, "dye"_sel);
  if (auto* ours = objc::as<UIColor>(color)) ours->setIsVarnixColor(true);
  return color;
}

// The elements: what is dyed, its two settings, and whether its type is asked for the application
// in front. Each becomes a pair of operations.
#define VARNIX_ELEMENTS(ELEMENT)         \
  ELEMENT(statusBar, "statusbar", false) \
  ELEMENT(folder, "folder", false)       \
  ELEMENT(cc, "cc", true)                \
  ELEMENT(nc, "nc", true)                \
  ELEMENT(sms, "sms", false)             \
  ELEMENT(keyboard, "keyboard", false)   \
  ELEMENT(vol, "volume", true)

#define VARNIX_ELEMENT_OPERATIONS(name, key, followsOpenApp)                           \
  NSInteger VNXManager::name##Enabled() {                                              \
    return send<NSInteger>(this, "_getEnabledForKey:sbContext:"_sel,                   \
                           objc::constantString<key "_color_type">(), followsOpenApp); \
  }                                                                                    \
  UIColor* VNXManager::name##Dye() {                                                   \
    return send<UIColor*>(this, "_getDyeColorWithKey:fallback:enabledSel:"_sel,        \
                          objc::constantString<key "_color">(), "#FFFFFF"_ns,          \
                          objc::Selector<#name "Enabled">::get());                     \
  }
VARNIX_ELEMENTS(VARNIX_ELEMENT_OPERATIONS)

#define VARNIX_ELEMENT_METHODS(name, key, followsOpenApp) \
  , Method<#name "Enabled", &VNXManager::name##Enabled>, Method<#name "Dye", &VNXManager::name##Dye>

OBJC_CLASS(VNXManager, NSObject, PrefsMan, CachedIconColor, Method<"init", &VNXManager::init>,
           Method<"dealloc", &VNXManager::dealloc>,
           Method<"tweakEnabled", &VNXManager::tweakEnabled>,
           Method<"appIsDisabled:", &VNXManager::appIsDisabled>,
           Method<"bundleId", &VNXManager::bundleId>,
           Method<"isSpringBoard", &VNXManager::isSpringBoard>,
           Method<"getOpenAppId", &VNXManager::getOpenAppId>,
           Method<"wantsIconColor", &VNXManager::wantsIconColor>,
           Method<"useAlbumArt", &VNXManager::useAlbumArt>, Method<"dye", &VNXManager::dye>,
           Method<"_getEnabledForKey:sbContext:", &VNXManager::getEnabled>,
           Method<"_getDyeColorWithKey:fallback:enabledSel:", &VNXManager::getDyeColor>
               VARNIX_ELEMENTS(VARNIX_ELEMENT_METHODS))
