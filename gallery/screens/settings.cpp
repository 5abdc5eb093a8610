// Pages of the settings pane, as the hosted Settings application's cells answer.
#include <chrono>
#include <initializer_list>

#include "Foundation/run_loop.h"
#include "Preferences/pages.h"
#include "UIGraphics/UIGraphics.h"
#include "gallery/screens/controls.h"
#include "gallery/screens/list_drawing.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"
#include "platform/UIKitLists.h"

namespace varnix::screens {

namespace {

namespace pages = host::settings;
using pages::Row;

ListImage imageOf(UIImage* image) {
  NSData* png = image == nullptr ? nullptr : UIImagePNGRepresentation(image);
  if (png == nullptr) return {};
  const auto* bytes = static_cast<const char*>(send(png, NSData::bytes));
  return {{bytes, send(png, NSData::length)},
          static_cast<double>(send<CGFloat>(image, "scale"_sel)),
          {},
          {}};
}

std::optional<Color> colorOf(const Answer& answer) {
  const auto* text = std::get_if<std::string>(&answer);
  return text == nullptr ? std::nullopt : parseColor(*text);
}

/// The platform's own colours are not passed on.
std::optional<Color> colorOf(NSObject* color, const Color& usual) {
  const auto found = colorOf(answered(color));
  return found == usual ? std::nullopt : found;
}

double heightOf(const Row& row) {
  NSObject* page = pages::topPage();
  return static_cast<double>(send<CGFloat>(page, "tableView:heightForRowAtIndexPath:"_sel,
                                           pages::table(), row.place.get()));
}

bool isSubtitled(const Row& row) {
  return Row::isKind(row.cell, "VNXSubtitleCell") || Row::isKind(row.cell, "PFSimpleLiteColorCell");
}

ListRow rowOf(const Row& row, const std::optional<Color>& tint) {
  ListRow shown;
  shown.height = heightOf(row);
  shown.title = row.title();
  (isSubtitled(row) ? shown.subtitle : shown.value) = row.detail();
  shown.isDisabled = !row.isEnabled();
  // A view at the right edge takes the arrow's place.
  shown.opens = row.isLink() && row.control() == nullptr;
  shown.isTicked = row.isTicked();
  if (row.type() == PSButtonCell && row.isEnabled())
    shown.titleColor = tint.value_or(rgb(0x007aff));
  if (row.isTicked()) shown.tickColor = tint;
  if (row.hasSwitch()) {
    send<void>(row.control(), "layoutSubviews"_sel);
    shown.isOn = row.isOn();
    if (row.isOn()) shown.switchOn = colorOf(askColor(row.control(), "onTintColor"));
  } else if (!row.hasField() && row.control() != nullptr) {
    shown.disc = colorOf(askColor(row.control(), "backgroundColor"));
  }
  shown.image = imageOf(row.icon());
  if (shown.image.png.empty()) return shown;
  // A cell puts its picture where it likes.
  send<void>(row.cell, "setFrame:"_sel,
             CGRect{{0, 0}, {static_cast<CGFloat>(kWidth), static_cast<CGFloat>(shown.height)}});
  send<void>(row.cell, "layoutSubviews"_sel);
  const CGRect place = send<CGRect>(send<NSObject*>(row.cell, "imageView"_sel), "frame"_sel);
  shown.image.x = static_cast<double>(place.origin.x);
  shown.image.y = static_cast<double>(place.origin.y);
  return shown;
}

ListPage shownPage() {
  NSObject* stack = pages::navigation();
  NSObject* bar = send<NSObject*>(stack, "navigationBar"_sel);
  ListPage page;
  page.title = pages::titleOf(pages::topPage());
  auto* behind = send<NSArray*>(stack, "viewControllers"_sel);
  if (const NSUInteger count = send(behind, NSArray::count); count > 1)
    page.back = pages::titleOf(
        static_cast<UIViewController*>(send(behind, NSArray::objectAtIndex, count - 2)));
  page.statusBar = colorOf(askStatusBar(kBlack));
  page.bar = colorOf(askColor(bar, "tintColor"));
  auto* attributes = send<NSDictionary*>(bar, "titleTextAttributes"_sel);
  page.titleColor = colorOf(send<NSObject*>(attributes, "objectForKey:"_sel, "NSColor"_ns), kBlack);
  auto* item = send<NSObject*>(pages::topPage(), "navigationItem"_sel);
  page.action =
      imageOf(send<UIImage*>(send<NSObject*>(item, "rightBarButtonItem"_sel), "image"_sel));
  if (NSObject* field = pages::searchField())
    page.search = Row::words(send<NSObject*>(field, "placeholder"_sel));
  for (const auto& section : pages::sections()) {
    ListGroup group{section.header, section.footer, {}};
    for (const Row& row : section.rows) group.rows.push_back(rowOf(row, page.bar));
    page.groups.push_back(std::move(group));
  }
  return page;
}

/// Opens the page behind these rows, from the list of settings on. False if one is missing.
bool open(std::initializer_list<const char*> identifiers) {
  if (objc_getClass("PSListController") == nullptr) return false;
  pages::open();
  while (pages::depth() > 1) pages::back();
  for (const char* identifier : identifiers) {
    const std::size_t depth = pages::depth();
    for (const auto& section : pages::sections()) {
      for (const Row& row : section.rows) {
        if (pages::depth() == depth && row.identifier() == identifier) pages::press(row);
      }
    }
    if (pages::depth() == depth) return false;
  }
  return true;
}

template <class... Identifiers>
Answers answersBehind(Identifiers... identifiers) {
  return open({identifiers...}) ? answersOf(shownPage()) : Answers();
}

Answers askFront(const Surroundings&) { return answersBehind("Varnix"); }
Answers askKeyboardPage(const Surroundings&) { return answersBehind("Varnix", "keyboard"); }
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
  return answersOf(shownPage());
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

}  // namespace varnix::screens
