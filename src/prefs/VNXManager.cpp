#include "prefs/VNXManager.h"

#include "color/marks.h"
#include "objc/answers.h"
#include "objc/implementation.h"
#include "platform/SpringBoard.h"
#include "prefs/IconColor.h"
#include "prefs/color_string.h"
#include "prefs/keys.h"
#include "prefs/main_bundle.h"
#include "prefs/value.h"

namespace varnix {

namespace {

constexpr NSInteger kNotDyed = 1;
constexpr NSInteger kOwnColor = 2;
constexpr NSInteger kIconColor = 1;

NSString* springBoardId() { return "com.apple.springboard"_ns; }
NSString* defaultGlobalColor() { return objc::constantString<settings::kDefaultDye>(); }

// Every question reads the store: there is nothing to do when the settings change.
void settingsChanged(KTPrefsManager*) {}

struct Manager : objc::Implementation<VNXManager> {
  NSObject* init();
  void dealloc();
  bool tweakEnabled();
  bool appIsDisabled(NSString* identifier);
  NSString* bundleId();
  bool isSpringBoard();
  NSString* getOpenAppId();
  bool wantsIconColor();
  bool useAlbumArt();
  UIColor* dye();
  NSInteger getEnabled(NSString* typeKey, bool inSpringBoardContext);
  UIColor* getDyeColor(NSString* colorKey, NSString* fallback, SEL enabledOperation);

  UIColor* plainGlobalColor() {
    return parseColor(send(_prefsMan, KTPrefsManager::objectForKey, "global_color"_ns),
                      defaultGlobalColor());
  }

  Strong<VXPrefsManager> _prefsMan;
  /// Any thread may ask. The first colour that is found stays.
  Published<UIColor> _cachedIconColor;
};

using PrefsMan =
    objc::Accessors<VNXManager::prefsMan, VNXManager::setPrefsMan, &Manager::_prefsMan>;
using CachedIconColor = objc::Accessors<VNXManager::cachedIconColor, VNXManager::setCachedIconColor,
                                        &Manager::_cachedIconColor, objc::Storage::copy>;

/// The manager's two operations for an element.
template <std::size_t Index>
struct ElementOperations {
  static constexpr auto kKey = settings::kElementText<Index, &settings::Element::key>;
  static constexpr auto kOwnColor = settings::kElementText<Index, &settings::Element::ownColor>;
  static constexpr auto kName = settings::kElementText<Index, &settings::Element::operation>;

  static NSInteger enabled(VNXManager* self, SEL) {
    return send(self, VNXManager::getEnabledForKey, objc::constantString<kKey + "_color_type">(),
                settings::kElements[Index].followsOpenApp);
  }
  static UIColor* dye(VNXManager* self, SEL) {
    return send(self, VNXManager::getDyeColorWithKey, objc::constantString<kKey + "_color">(),
                objc::constantString<kOwnColor>(), VNXManager::enabled<kName>);
  }

  using InstanceMethods = objc::List<objc::Implements<VNXManager::enabled<kName>, &enabled>,
                                     objc::Implements<VNXManager::dyeOf<kName>, &dye>>;
};

template <class Indices>
struct Elements;
template <std::size_t... Index>
struct Elements<std::index_sequence<Index...>> {
  using InstanceMethods =
      typename objc::detail::Concat<typename ElementOperations<Index>::InstanceMethods...>::Type;
  using ClassMethods = objc::List<>;
  using Ivars = objc::List<>;
  using Properties = objc::List<>;
};
using AllElements = Elements<std::make_index_sequence<settings::kElementCount>>;

NSObject* Manager::init() {
  objc::sendSuper<VNXManager>(self(), NSObject::init);
  NSDictionary* defaults =
      NSDictionary::dictionaryWithObjectForKey(NSNumber::numberWithBool(true), "enabled"_ns);
  auto store = Strong<KTPrefsManager>::adopt(
      send(objc::alloc<VXPrefsManager>(), KTPrefsManager::initWithId, "com.quillmarsh.varnix2"_ns,
           defaults, "com.quillmarsh.varnix2.changed"_ns, objc::globalBlock<&settingsChanged>()));
  send(self(), VNXManager::setPrefsMan, static_cast<VXPrefsManager*>(store.get()));
  return this;
}

void Manager::dealloc() {
  send(self(), VNXManager::setPrefsMan, nullptr);
  send(self(), VNXManager::setCachedIconColor, nullptr);
  objc::sendSuper<VNXManager>(self(), NSObject::dealloc);
}

bool Manager::tweakEnabled() {
  return !isReadable(send(_prefsMan, KTPrefsManager::objectForKey, "enabled"_ns)) ||
         send(_prefsMan, KTPrefsManager::boolForKey, "enabled"_ns);
}

bool Manager::appIsDisabled(NSString* identifier) {
  NSString* key = NSString::stringWithFormat("%@_enabled"_ns, identifier);
  NSObject* stored = send(_prefsMan, KTPrefsManager::objectForKey, key);
  return isReadable(stored) && !boolOf(stored);
}

NSString* Manager::bundleId() { return mainBundleIdentifier(); }

bool Manager::isSpringBoard() {
  return send(send(self(), VNXManager::bundleId), NSString::isEqualToString, springBoardId());
}

// The application in front has its identifier under one of two names, or has none.
NSString* Manager::getOpenAppId() {
  auto* application = static_cast<SpringBoard*>(UIApplication::sharedApplication());
  if (!objc::answers(application, SpringBoard::frontMostApplication)) return nullptr;
  SBApplication* open = send(application, SpringBoard::frontMostApplication);
  if (objc::answers(open, SBApplication::displayIdentifier))
    return send(open, SBApplication::displayIdentifier);
  if (objc::answers(open, SBApplication::bundleIdentifier))
    return send(open, SBApplication::bundleIdentifier);
  return nullptr;
}

bool Manager::wantsIconColor() {
  return send(_prefsMan, KTPrefsManager::intForKey, "global_color_type"_ns) == kIconColor;
}

bool Manager::useAlbumArt() {
  return boolOf(send(_prefsMan, VXPrefsManager::getPref, "use_album_art"_ns));
}

UIColor* Manager::dye() {
  if (send(self(), VNXManager::isSpringBoard) ||
      integerOf(send(_prefsMan, VXPrefsManager::getPref, "global_color_type"_ns)) != kIconColor) {
    return parseColor(send(_prefsMan, VXPrefsManager::getPref, "global_color"_ns),
                      defaultGlobalColor());
  }
  auto remember = [this](UIColor* color) {
    _cachedIconColor.replaceIf(
        nullptr, Strong<UIColor>::adopt(static_cast<UIColor*>(send(color, NSObject::copy))));
    return _cachedIconColor.read();
  };
  auto cached = _cachedIconColor.read();
  // Never true: SpringBoard was handled above.
  if (cached == nullptr && send(self(), VNXManager::isSpringBoard))
    cached = remember(plainGlobalColor());
  if (cached == nullptr) {
    cached =
        remember(Color::IconColor(send(self(), VNXManager::bundleId), plainGlobalColor(), self()));
  }
  return cached.autorelease();
}

NSInteger Manager::getEnabled(NSString* typeKey, bool inSpringBoardContext) {
  NSString* identifier = send(self(), VNXManager::bundleId);
  if (inSpringBoardContext) {
    if (NSString* open = send(self(), VNXManager::getOpenAppId)) identifier = open;
  }
  return integerOf(send(_prefsMan, VXPrefsManager::getPrefIdent, typeKey, identifier));
}

// An own colour is read for this process even if the type was the open application's.
UIColor* Manager::getDyeColor(NSString* colorKey, NSString* fallback, SEL enabledOperation) {
  const auto type = objc::perform<NSInteger>(this, enabledOperation);
  if (type == kNotDyed) return nullptr;
  UIColor* color = type == kOwnColor
                       ? parseColor(send(_prefsMan, VXPrefsManager::getPref, colorKey), fallback)
                       : send(self(), VNXManager::dye);
  auto* ours = objc::as<UIColor>(color);
  if (objc::answers(ours, Color::setIsVarnixColor)) send(ours, Color::setIsVarnixColor, true);
  return color;
}

}  // namespace
}  // namespace varnix

using objc::Implements;
using varnix::Manager;

OBJC_PRIVATE_CLASS_NAMED(VNXManager, NSObject, Manager, NSObject, varnix::PrefsMan,
                         varnix::CachedIconColor, Implements<NSObject::init, &Manager::init>,
                         Implements<NSObject::dealloc, &Manager::dealloc>,
                         Implements<VNXManager::tweakEnabled, &Manager::tweakEnabled>,
                         Implements<VNXManager::appIsDisabled, &Manager::appIsDisabled>,
                         Implements<VNXManager::bundleId, &Manager::bundleId>,
                         Implements<VNXManager::isSpringBoard, &Manager::isSpringBoard>,
                         Implements<VNXManager::getOpenAppId, &Manager::getOpenAppId>,
                         Implements<VNXManager::wantsIconColor, &Manager::wantsIconColor>,
                         Implements<VNXManager::useAlbumArt, &Manager::useAlbumArt>,
                         Implements<VNXManager::dye, &Manager::dye>,
                         Implements<VNXManager::getEnabledForKey, &Manager::getEnabled>,
                         Implements<VNXManager::getDyeColorWithKey, &Manager::getDyeColor>,
                         varnix::AllElements)
