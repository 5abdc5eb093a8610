// Both centres of a hosted SpringBoard. Calls of the platform's own methods are recorded.
#pragma once

#include <thread>

#include "runtime/instance_variable.h"
#include "support/springboard.h"

namespace test {

inline constexpr char kControlCenter[] = "SBControlCenterContentContainerView";
inline constexpr char kNotificationCenter[] = "SBNotificationCenterViewController";
inline constexpr char kTrackChanged[] = "com.quillmarsh.varnix2.track.changed";

inline NSObject* const kNothing = nullptr;

class Centers : public SpringBoard {
 protected:
  /// Records the platform's own methods: the library replaces the recording ones.
  void centers(const std::string& entries) {
    settings(entries);
    startSpringBoard();
    Class control = objc_getClass(kControlCenter);
    Recorded<"controlCenterWillPresent", void()>::install(control);
    Recorded<"_updateBackground", void()>::install(control);
    Recorded<"_accessibilityBackgroundContrastDidChange:", void(NSObject*)>::install(control);
    Class notification = objc_getClass(kNotificationCenter);
    Recorded<"hostWillPresent", void()>::install(notification);
    Recorded<"_backgroundContrastDidChange:", void(NSObject*)>::install(notification);
    load();
    RecordedTint<0>::install(control);
    RecordedTint<1>::install(notification);
  }

  static void post() {
    send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::postNotificationName,
         string(kTrackChanged), nullptr);
  }
  static void drain() { host::MainRunLoop::instance().drain(); }
  /// The colour behind Control Centre's content.
  static std::string background(NSObject* center) {
    auto* view = objc::instanceVariable<UIView>(center, "_accessibilityBackgroundView");
    return hex(send<UIColor*>(view, "backgroundColor"_sel));
  }
  void controlContrast() {
    send<void>(controlCenter(), "_accessibilityBackgroundContrastDidChange:"_sel, kNothing);
  }

 private:
  /// Two classes have the same selector, so each has its own slot.
  template <int Slot>
  struct RecordedTint {
    static void install(Class cls) { hook.template install<&noted>(cls, "colorBackdrop"_sel); }
    static void noted(NSObject* self, SEL command) {
      calls().emplace_back("colorBackdrop");
      tintedOn.push_back(std::this_thread::get_id());
      hook.original(self, command);
    }
    static inline constinit objc::Hook<objc::Message<NSObject, "colorBackdrop", void()>{}> hook;
  };

 protected:
  static inline std::vector<std::thread::id> tintedOn;
};

}  // namespace test
