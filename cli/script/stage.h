// What a script acts on: one object for each surface, and what is written to it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "common/json_forward.h"
#include "objc/strong.h"
#include "platform/Foundation.h"

namespace varnix::cli {

/// The surfaces of this process. Each object is made when it is first used.
class Stage {
 public:
  /// Must be made before any library is loaded; one in each process.
  Stage();
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  // Each throws Failure if the process does not have the class.
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

  /// {"surfaces": {...}} for the classes that exist: what was written since the last call, and the
  /// last answers, null before the first.
  Json print();

 private:
  NSObject* object(const char* surface);
  void happen(const char* surface);
  std::string surfaceOf(NSObject* receiver);
  int badgeNumber(NSObject* image);

  std::map<std::string, Strong<NSObject>> objects_;
  struct Noted;
  std::unique_ptr<Noted> noted_;
  std::vector<Strong<NSObject>> badges_;  ///< kept, so that no address is used twice
};

}  // namespace varnix::cli
