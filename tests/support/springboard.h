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
#include "support/hosted.h"
#include "support/recorded.h"

namespace test {

/// The calls of the backdrops' setters, in order: "setColorTint: #rrggbbaa".
std::vector<std::string>& writes();

UIColor* fromHex(const std::string& text);

/// An entry with one integer: <key>cc_color_type</key><integer>2</integer>.
std::string integerEntry(const std::string& key, int value);
std::string stringEntry(const std::string& key, const std::string& value);
std::string boolEntry(const std::string& key, bool value);

class SpringBoard : public Hosted {
 protected:
  static constexpr const char* kMediaPlayerUI =
      "/System/Library/PrivateFrameworks/MediaPlayerUI.framework/MediaPlayerUI";

  /// Puts the framework of the playing track where SpringBoard looks for it; call before start().
  void installNowPlaying();
  /// Loads it before the library, as another extension might; call after start().
  static void loadNowPlaying();
  void startSpringBoard(std::vector<std::string> without = {});

  /// Makes the library's own store read the file again. The first call uses a notification, which
  /// reveals the store.
  static void reload();
  void settingsNow(const std::string& entries);
  /// An archived colour, as it is stored for an application; call after start().
  static std::string cachedIconColor(const std::string& identifier, const std::string& color);

  static void setTrack(UIImage* artwork, bool playing);
  /// Nil means the home screen.
  static void open(NSString* identifier);

  static Strong<NSObject> makeControlCenter();
  static Strong<NSObject> makeNotificationCenter();
  static Strong<NSObject> framed(const char* className);

  /// One of each; made at the first call.
  NSObject* controlCenter();
  NSObject* notificationCenter();
  NSObject* hud();
  static NSObject* inputSettings(NSObject* surface);

  static void recordSettings();

 private:
  Strong<NSObject> controlCenter_;
  Strong<NSObject> notificationCenter_;
  Strong<NSObject> hud_;
};

/// The writes to a tinted backdrop.
std::vector<std::string> tinted(const std::string& color, const std::string& alpha);
/// The writes to a backdrop whose element is off.
std::vector<std::string> cleared();

}  // namespace test
