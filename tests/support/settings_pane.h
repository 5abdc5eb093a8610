// The settings pane on its phone: the Settings application with the pane open, and another
// application that was started before and follows the settings.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <utility>

#include "Foundation/property_list.h"
#include "Preferences/pages.h"
#include "UIKit/UIAlertView.h"
#include "support/pane.h"

namespace test {

namespace pages = host::settings;

/// A process of its own that answers what the library there decides. It must be made before this
/// process hosts anything.
class OtherProcess {
 public:
  OtherProcess(const std::string& root, const std::string& bundle);
  ~OtherProcess();
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  /// What the manager's operation answers there: "#rrggbbaa" or "nil". Waits until that is what is
  /// expected, as long as the build's patience lasts, and answers what it was then.
  std::string ask(const std::string& operation, const std::string& expected);
  /// Hears what was announced so far. Otherwise it hears that when it is asked next.
  void settle();

 private:
  pid_t process_ = -1;
  FILE* questions_ = nullptr;
  FILE* answers_ = nullptr;
};

class SettingsPane : public Pane {
 protected:
  /// The other process starts, then the Settings application with the pane on top.
  void open(const std::string& entries = "", const std::vector<std::string>& without = {});
  void openFrom(const std::string& bundle, const std::string& entries);

  /// The row on the page on top; fails the test and throws if there is none of that title.
  static pages::Row row(const std::string& title);
  static bool has(const std::string& title);
  static void press(const std::string& title) { pages::press(row(title)); }
  static void flip(const std::string& title) { pages::flip(row(title)); }
  /// From a list of choices: opens it, presses the choice, goes back.
  static void choose(const std::string& title, const std::string& choice);
  static std::string title() { return pages::titleOf(pages::topPage()); }

  // The alert on top.
  static std::string alertTitle();
  static void answer(const std::string& button);

  /// The stored value as text; "none" if there is none.
  std::string stored(const std::string& key) const;

  /// As another process does it, which tells everybody.
  void changeElsewhere(const std::string& entries);
  static void announceChange();

  /// Runs until what was announced has been heard.
  static void settle();

  std::unique_ptr<OtherProcess> other;
};

}  // namespace test
