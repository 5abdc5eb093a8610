// What a script acts on: one object of each surface, and what is written to them meanwhile.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "common/json_forward.h"
#include "objc/strong.h"
#include "platform/Foundation.h"

namespace varnix::cli {

/// The surfaces of this process. An object is made when it is first acted on.
class Stage {
 public:
  /// To be made before any library is loaded, one for a process.
  Stage();
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  // Each throws Failure where the process has no such class.
  void presentControlCenter();
  void presentNotificationCenter();
  void updateBackground();
  void layOutVolume();
  void setFolderWallpaper();
  void setIconWallpaper();
  void checkOutBadge();
  void makeKeyboard();
  void askBalloon();
  /// Tells both centres.
  void changeContrast(bool enhanced);
  /// Tells the observers. Without the framework the process has none.
  void playTrack(NSObject* artwork, bool plays);

  /// {"surfaces": {...}} of the classes that are there: what was written since the last call, and
  /// what was answered last, null before the first time.
  Json print();

 private:
  NSObject* object(const char* surface);
  std::string surfaceOf(NSObject* receiver);
  int badgeNumber(NSObject* image);

  std::map<std::string, Strong<NSObject>> objects_;
  struct Noted;
  std::unique_ptr<Noted> noted_;
  std::vector<Strong<NSObject>> badges_;  ///< kept, so that no address comes again
};

}  // namespace varnix::cli
