// A hosted process for one test case, with its own container root, settings and the library.
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

/// A temporary folder, removed with the test.
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
  /// Writes the bytes unchanged.
  void writeSettings(const std::string& bytes);
  /// Writes a property list with these entries: "<key>enabled</key><false/>".
  void settings(const std::string& entries);
  void start(std::optional<std::string> bundle,
             host::ProcessKind kind = host::ProcessKind::application,
             std::optional<std::string> open = {}, std::vector<std::string> without = {});
  void load();
  /// Starts an application with those settings and the library.
  void application(const std::string& entries);
  void springBoard(const std::string& entries, std::optional<std::string> open = {});

  std::vector<std::string> log() const;

  /// The methods that the library did not replace, "METHOD: REASON", in order.
  static std::vector<std::string> passedOver();

  Folder folder;
  std::map<std::string, std::string> icons;   ///< to be set before start()
  std::vector<std::string> withoutLibraries;  ///< to be set before start()
  std::string language = "en";                ///< to be set before start()
  std::optional<host::runtime::Hooking>
      hooking;  ///< to be set before start(); without a value, as in the environment
  std::vector<std::string> installed;
};

inline NSString* string(const char* text) { return NSString::stringWithUTF8String(text); }

/// "#rrggbbaa", or "nil".
std::string hex(UIColor* color);

/// Hue, saturation, brightness, alpha; zeros if the colour has none.
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

/// Runs the main loop until the condition holds, up to the build's patience. Other processes do not
/// wake the loop, so it also checks regularly.
bool eventually(const std::function<bool()>& condition);

}  // namespace test
