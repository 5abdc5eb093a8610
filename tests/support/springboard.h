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

/// What the backdrops' settings were told, in order: "setColorTint: #rrggbbaa".
std::vector<std::string>& writes();

UIColor* fromHex(const std::string& text);

/// The entry of one integer: <key>cc_color_type</key><integer>2</integer>.
std::string integerEntry(const std::string& key, int value);
std::string stringEntry(const std::string& key, const std::string& value);
std::string boolEntry(const std::string& key, bool value);

class SpringBoard : public Hosted {
 protected:
  static constexpr const char* kMediaPlayerUI =
      "/System/Library/PrivateFrameworks/MediaPlayerUI.framework/MediaPlayerUI";

  /// Puts the framework of the playing track where SpringBoard has it; before start().
  void installNowPlaying();
  /// As another extension might have, before the library; after start().
  static void loadNowPlaying();
  void startSpringBoard(std::vector<std::string> without = {});

  /// Makes the library's own store read the file again. The first time goes through a notification,
  /// which shows the store.
  static void reload();
  void settingsNow(const std::string& entries);
  /// An archived colour, as it is kept for an application; after start().
  static std::string cachedIconColor(const std::string& identifier, const std::string& color);

  static void setTrack(UIImage* artwork, bool playing);
  /// Nil is the home screen.
  static void open(NSString* identifier);

  static Strong<NSObject> makeControlCenter();
  static Strong<NSObject> makeNotificationCenter();
  static Strong<NSObject> framed(const char* className);

  /// One of each, made when it is first asked for.
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

/// What a tinted backdrop was told.
std::vector<std::string> tinted(const std::string& color, const std::string& alpha);
/// What one was told whose element is off.
std::vector<std::string> cleared();

}  // namespace test
