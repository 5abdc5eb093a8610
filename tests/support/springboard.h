// A hosted SpringBoard: its surfaces, the playing track, and what is written to backdrops.
#pragma once

#include "Foundation/darwin_notify.h"
#include "objc/autorelease_pool.h"
#include "objc/hook.h"
#include "platform/MediaPlayerUI.h"
#include "platform/SpringBoard.h"
#include "platform/dlfcn.h"
#include "prefs/KTPrefsManager.h"
#include "process/container.h"
#include "support/base64.h"
#include "support/hosted.h"
#include "support/recorded.h"

namespace test {

/// What the backdrops' settings were told, in order: "setColorTint: #rrggbbaa".
inline std::vector<std::string>& writes() {
  static std::vector<std::string> lines;
  return lines;
}

namespace detail {

inline std::string written(bool value) { return value ? "yes" : "no"; }
inline std::string written(UIColor* color) { return hex(color); }
inline std::string written(CGFloat value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
  return text;
}

/// One setter of the backdrops' settings, whose calls are noted and passed on.
template <objc::FixedString Name, class Value>
class RecordedSetter {
 public:
  static void install() {
    hook_.template install<&noted>(objc_getClass("_UIBackdropViewSettings"),
                                   objc::Selector<Name>::get());
  }

 private:
  static void noted(NSObject* self, SEL command, Value value) {
    writes().push_back(std::string(Name.text) + " " + written(value));
    hook_.original(self, command, value);
  }
  static inline constinit objc::Hook<objc::Message<NSObject, Name, void(Value)>{}> hook_;
};

}  // namespace detail

inline UIColor* fromHex(const std::string& text) {
  const auto value = static_cast<unsigned>(std::stoul(text.substr(1), nullptr, 16));
  auto part = [=](int shift) { return static_cast<CGFloat>((value >> shift & 0xff) / 255.0); };
  return UIColor::colorWithRed(part(24), part(16), part(8), part(0));
}

/// The entry of one integer: <key>cc_color_type</key><integer>2</integer>.
inline std::string integerEntry(const std::string& key, int value) {
  return "<key>" + key + "</key><integer>" + std::to_string(value) + "</integer>";
}
inline std::string stringEntry(const std::string& key, const std::string& value) {
  return "<key>" + key + "</key><string>" + value + "</string>";
}
inline std::string boolEntry(const std::string& key, bool value) {
  return "<key>" + key + "</key>" + (value ? "<true/>" : "<false/>");
}

class SpringBoard : public Hosted {
 protected:
  static constexpr const char* kMediaPlayerUI =
      "/System/Library/PrivateFrameworks/MediaPlayerUI.framework/MediaPlayerUI";

  /// Puts the framework of the playing track where SpringBoard has it; before start().
  void installNowPlaying() {
    const std::filesystem::path build =
        std::filesystem::path(host::defaultLibraryPath()).parent_path();
    const std::filesystem::path file = folder.path() + kMediaPlayerUI;
    std::filesystem::create_directories(file.parent_path());
    std::filesystem::copy_file(build / "Frameworks/MediaPlayerUI.so", file);
  }
  /// As another extension might have, before the library; after start().
  static void loadNowPlaying() {
    ASSERT_NE(dlopen(host::hostPath(kMediaPlayerUI).c_str(), RTLD_NOW), nullptr);
  }
  void startSpringBoard(std::vector<std::string> without = {}) {
    start("com.apple.springboard", host::ProcessKind::springboard, {}, std::move(without));
  }

  /// Makes the library's own store read the file again. The first time goes through a notification,
  /// which shows the store.
  static void reload() {
    if (libraryStore == nullptr) {
      notificationReceived.install<&noteStore>(objc_getClass("KTPrefsManager"),
                                               KTPrefsManager::notificationReceived);
      host::postDarwinNotification("com.quillmarsh.varnix2.changed");
      ASSERT_TRUE(eventually([] { return libraryStore != nullptr; }));
    } else {
      send(libraryStore, KTPrefsManager::notificationReceived);
    }
  }
  void settingsNow(const std::string& entries) {
    settings(entries);
    reload();
  }
  /// An archived colour, as it is kept for an application; after start().
  static std::string cachedIconColor(const std::string& identifier, const std::string& color) {
    NSData* archive = NSKeyedArchiver::archivedDataWithRootObject(fromHex(color));
    return "<key>cached_icon_color_" + identifier + "</key><data>" + base64(archive) + "</data>";
  }

  static void setTrack(UIImage* artwork, bool playing) {
    send<void>(objc_getClass("MPUNowPlayingController"), "_setArtwork:playing:"_sel, artwork,
               playing);
  }
  /// Nil is the home screen.
  static void open(NSString* identifier) {
    send<void>(UIApplication::sharedApplication(), "_setFrontMostApplicationIdentifier:"_sel,
               identifier);
  }

  static Strong<NSObject> makeControlCenter() {
    return framed("SBControlCenterContentContainerView");
  }
  static Strong<NSObject> makeNotificationCenter() {
    auto* raw = send<NSObject*>(objc_getClass("SBNotificationCenterViewController"), "alloc"_sel);
    return Strong<NSObject>::adopt(send<NSObject*>(raw, "initWithNibName:bundle:"_sel,
                                                   static_cast<NSString*>(nullptr),
                                                   static_cast<NSBundle*>(nullptr)));
  }
  static Strong<NSObject> framed(const char* className) {
    auto* raw = send<NSObject*>(objc_getClass(className), "alloc"_sel);
    return Strong<NSObject>::adopt(
        send<NSObject*>(raw, "initWithFrame:"_sel, CGRect{{0, 0}, {320, 200}}));
  }

  /// One of each, made when it is first asked for.
  NSObject* controlCenter() {
    if (controlCenter_ == nullptr) controlCenter_ = makeControlCenter();
    return controlCenter_;
  }
  NSObject* notificationCenter() {
    if (notificationCenter_ == nullptr) notificationCenter_ = makeNotificationCenter();
    return notificationCenter_;
  }
  NSObject* hud() {
    if (hud_ == nullptr) hud_ = framed("SBHUDView");
    return hud_;
  }
  static NSObject* inputSettings(NSObject* surface) {
    auto* backdrop = send<NSObject*>(surface, "backdropView"_sel);
    return send<NSObject*>(backdrop, "inputSettings"_sel);
  }

  static void recordSettings() {
    detail::RecordedSetter<"setRequiresColorStatistics:", bool>::install();
    detail::RecordedSetter<"setUsesColorTintView:", bool>::install();
    detail::RecordedSetter<"setColorTint:", UIColor*>::install();
    detail::RecordedSetter<"setColorTintAlpha:", CGFloat>::install();
    detail::RecordedSetter<"setColorTintMaskAlpha:", CGFloat>::install();
  }

 private:
  static void noteStore(KTPrefsManager* self, SEL command) {
    if (libraryStore == nullptr) libraryStore = self;
    notificationReceived.original(self, command);
  }
  static inline KTPrefsManager* libraryStore = nullptr;
  static inline constinit objc::Hook<KTPrefsManager::notificationReceived> notificationReceived;

  Strong<NSObject> controlCenter_;
  Strong<NSObject> notificationCenter_;
  Strong<NSObject> hud_;
};

/// What a tinted backdrop was told.
inline std::vector<std::string> tinted(const std::string& color, const std::string& alpha) {
  return {"setRequiresColorStatistics: yes", "setUsesColorTintView: yes", "setColorTint: " + color,
          "setColorTintAlpha: " + alpha, "setColorTintMaskAlpha: 0.7"};
}
/// What one was told whose element is off.
inline std::vector<std::string> cleared() {
  return {"setRequiresColorStatistics: no", "setUsesColorTintView: no", "setColorTint: nil"};
}

}  // namespace test
