// Pages of the settings pane, as the hosted Settings application's cells answer.
#include <chrono>
#include <initializer_list>

#include "ColorPicker/picker.h"
#include "Foundation/run_loop.h"
#include "Preferences/pages.h"
#include "UIKit/UIAlertView.h"
#include "gallery/screens/list_drawing.h"
#include "gallery/screens/list_reader.h"
#include "gallery/screens/screen.h"

namespace varnix::screens {

namespace {

namespace pages = host::settings;
using pages::Row;

/// The invitation comes with the first page, and a question stays until it is answered.
void cancelAlerts() {
  while (auto* top = send<NSObject*>(host::shownAlerts(), "lastObject"_sel))
    host::pressAlertButton(top, 0);
}

/// False if the page on top has no such row.
bool press(const std::string& identifier) {
  for (const auto& section : pages::sections()) {
    for (const Row& row : section.rows) {
      if (row.identifier() != identifier) continue;
      pages::press(row);
      return true;
    }
  }
  return false;
}

/// Opens the page behind these rows, from the list of settings on. False if one is missing.
bool open(std::initializer_list<const char*> identifiers) {
  if (objc_getClass("PSListController") == nullptr) return false;
  pages::open();
  while (pages::depth() > 1) pages::back();
  for (const char* identifier : identifiers) {
    const std::size_t depth = pages::depth();
    if (!press(identifier) || pages::depth() == depth) return false;
  }
  cancelAlerts();
  return true;
}

template <class... Identifiers>
Answers answersBehind(Identifiers... identifiers) {
  return open({identifiers...}) ? answersOf(readListPage()) : Answers();
}

Answers askFront(const Surroundings&) { return answersBehind("Varnix"); }
Answers askKeyboardPage(const Surroundings&) { return answersBehind("Varnix", "keyboard"); }

/// What comes before a preset is used.
Answers askPreset(const Surroundings&) {
  if (!open({"Varnix", "presets"}) || !press("Ocean")) return {};
  Answers answers = answersOf(readListPage());
  cancelAlerts();
  return answers;
}

Answers askPicker(const Surroundings&) {
  if (!open({"Varnix"}) || !press("global_color")) return {};
  Answers answers = answersOf(readListPage());
  host::cancelPicker(host::shownPicker());
  return answers;
}

bool areIconsThere() {
  for (const auto& section : pages::sections()) {
    for (const Row& row : section.rows) {
      if (row.icon() == nullptr) return false;
    }
  }
  return true;
}

/// Icons come one by one. An application may have none.
Answers askApplications(const Surroundings&) {
  if (!open({"Varnix", "applications"})) return {};
  host::MainRunLoop::instance().runUntil(areIconsThere, std::chrono::seconds(1));
  return answersOf(readListPage());
}
Answers askApplicationPage(const Surroundings&) {
  return answersBehind("Varnix", "applications", "com.apple.Music");
}

void draw(const Canvas& canvas, const Answers& answers, const Scene&) {
  drawListPage(canvas, pageOf(answers));
}

constexpr char kSettings[] = "com.apple.Preferences";

}  // namespace

const Screen kSettingsFront{"settings", "Settings", kSettings, host::ProcessKind::application,
                            false,      false,      askFront,  draw};
const Screen kSettingsElement{"settings-element",
                              "An element's settings",
                              kSettings,
                              host::ProcessKind::application,
                              false,
                              false,
                              askKeyboardPage,
                              draw};
const Screen kSettingsApplications{"settings-applications",
                                   "Applications' settings",
                                   kSettings,
                                   host::ProcessKind::application,
                                   false,
                                   false,
                                   askApplications,
                                   draw};
const Screen kSettingsApplication{"settings-application",
                                  "An application's settings",
                                  kSettings,
                                  host::ProcessKind::application,
                                  false,
                                  false,
                                  askApplicationPage,
                                  draw};

const Screen kSettingsPicker{
    "settings-picker", "A colour", kSettings, host::ProcessKind::application, false, false,
    askPicker,         draw};
const Screen kSettingsPreset{
    "settings-preset", "A preset", kSettings, host::ProcessKind::application, false, false,
    askPreset,         draw};

}  // namespace varnix::screens
