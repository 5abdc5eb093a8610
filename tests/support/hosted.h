// A hosted process for one test case: a container root of its own, settings, the library.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "Foundation/log.h"
#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "objc/strong.h"
#include "platform/UIKit.h"
#include "process/absence.h"
#include "process/process.h"
#include "runtime/runtime.h"
#include "runtime/send.h"

namespace test {

/// A folder that goes with the test.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

std::string contentsOf(const std::string& path);

/// A fixture: write settings, start a process, load the library, ask.
class Hosted : public testing::Test {
 protected:
  std::string settingsPath() const;
  /// The file's bytes as they are given.
  void writeSettings(const std::string& bytes);
  /// A property list around the entries: "<key>enabled</key><false/>".
  void settings(const std::string& entries);
  void start(std::optional<std::string> bundle,
             host::ProcessKind kind = host::ProcessKind::application,
             std::optional<std::string> open = {}, std::vector<std::string> without = {});
  void load();
  /// An application with those settings and the library.
  void application(const std::string& entries);
  void springBoard(const std::string& entries, std::optional<std::string> open = {});

  std::vector<std::string> log() const;

  /// What the library left as it is, "METHOD: REASON", in order.
  static std::vector<std::string> passedOver();

  Folder folder;
  std::map<std::string, std::string> icons;       ///< to be set before start()
  std::vector<std::string> withoutLibraries;      ///< the same
  std::optional<host::runtime::Hooking> hooking;  ///< the same; absent for the environment's
  std::vector<std::string> installed;
};

inline NSString* string(const char* text) { return NSString::stringWithUTF8String(text); }

/// "#rrggbbaa", or "nil".
std::string hex(UIColor* color);

/// Hue, saturation, brightness, alpha; zeros for a colour without.
std::array<CGFloat, 4> hsbOf(UIColor* color);

inline UIColor* rgb(double red, double green, double blue) {
  return UIColor::colorWithRed(red, green, blue, 1);
}

/// A new object, owned by the pool.
template <class T>
T* make(const char* className) {
  return static_cast<T*>(objc_autorelease(
      send<NSObject*>(send<NSObject*>(objc_getClass(className), "alloc"_sel), "init"_sel)));
}

inline NSObject* manager() { return make<NSObject>("VNXManager"); }

/// Turns the main loop until the condition holds, for as long as the build has patience. What other
/// processes do wakes no loop, so it looks by itself too.
bool eventually(const std::function<bool()>& condition);

}  // namespace test
