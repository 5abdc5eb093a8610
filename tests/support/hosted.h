// A hosted process for one test case: a container root of its own, settings, the library.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

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
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "varnix-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    path_ = name;
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

inline std::string contentsOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// A fixture: write settings, start a process, load the library, ask.
class Hosted : public testing::Test {
 protected:
  std::string settingsPath() const {
    return folder.path() + "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
  }
  /// The file's bytes as they are given.
  void writeSettings(const std::string& bytes) {
    std::filesystem::create_directories(std::filesystem::path(settingsPath()).parent_path());
    std::ofstream(settingsPath(), std::ios::binary | std::ios::trunc) << bytes;
  }
  /// A property list around the entries: "<key>enabled</key><false/>".
  void settings(const std::string& entries) {
    writeSettings("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" +
                  entries + "</dict></plist>\n");
  }
  void start(std::optional<std::string> bundle,
             host::ProcessKind kind = host::ProcessKind::application,
             std::optional<std::string> open = {}, std::vector<std::string> without = {}) {
    std::filesystem::create_directories(std::filesystem::path(settingsPath()).parent_path());
    host::runtime::observeChanges([this](const host::runtime::Change& change) {
      const bool isHook = change.kind == host::runtime::Change::Kind::hook;
      installed.push_back(std::string(isHook ? "hook " : "add ") +
                          (change.classMethod ? "+" : "-") + "[" + change.className + " " +
                          change.selector + "]" + (isHook ? "" : " " + change.types));
    });
    host::startProcess({.bundle = std::move(bundle),
                        .kind = kind,
                        .open = std::move(open),
                        .without = std::move(without),
                        .withoutLibraries = withoutLibraries,
                        .icons = icons,
                        .root = folder.path(),
                        .hooking = hooking});
  }
  void load() { host::loadLibrary(VARNIX_LIBRARY); }
  /// An application with those settings and the library.
  void application(const std::string& entries) {
    settings(entries);
    start("com.example.app");
    load();
  }
  void springBoard(const std::string& entries, std::optional<std::string> open = {}) {
    settings(entries);
    start("com.apple.springboard", host::ProcessKind::springboard, std::move(open));
    load();
  }

  std::vector<std::string> log() const {
    std::vector<std::string> lines;
    for (const auto& line : host::logLines())
      lines.push_back(std::to_string(line.level) + " " + line.line);
    return lines;
  }

  /// What the library left as it is, "METHOD: REASON", in order.
  static std::vector<std::string> passedOver() {
    auto* pairs = send<NSArray*>(objc_getClass("VarnixInstallation"), "skipped"_sel);
    auto text = [pairs](NSUInteger index) {
      auto* string = static_cast<NSString*>(send(pairs, NSArray::objectAtIndex, index));
      return std::string(send(string, NSString::UTF8String));
    };
    std::vector<std::string> lines;
    for (NSUInteger i = 0; i < send(pairs, NSArray::count); i += 2)
      lines.push_back(text(i) + ": " + text(i + 1));
    return lines;
  }

  Folder folder;
  std::map<std::string, std::string> icons;       ///< to be set before start()
  std::vector<std::string> withoutLibraries;      ///< the same
  std::optional<host::runtime::Hooking> hooking;  ///< the same; absent for the environment's
  std::vector<std::string> installed;
};

inline NSString* string(const char* text) { return NSString::stringWithUTF8String(text); }

/// "#rrggbbaa", or "nil".
inline std::string hex(UIColor* color) {
  if (color == nullptr) return "nil";
  CGFloat c[4] = {};
  send<bool>(color, "getRed:green:blue:alpha:"_sel, &c[0], &c[1], &c[2], &c[3]);
  char text[10];
  auto byte = [&](int i) { return static_cast<unsigned>(c[i] * 255 + CGFloat{0.5}); };
  std::snprintf(text, sizeof text, "#%02x%02x%02x%02x", byte(0), byte(1), byte(2), byte(3));
  return text;
}

/// Hue, saturation, brightness, alpha; zeros for a colour without.
inline std::array<CGFloat, 4> hsbOf(UIColor* color) {
  std::array<CGFloat, 4> parts{};
  send(color, UIColor::getHue, &parts[0], &parts[1], &parts[2], &parts[3]);
  return parts;
}

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
inline bool eventually(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(VARNIX_PATIENCE);
  while (std::chrono::steady_clock::now() < end) {
    if (host::MainRunLoop::instance().runUntil(condition, std::chrono::milliseconds(50)))
      return true;
  }
  return condition();
}

}  // namespace test
