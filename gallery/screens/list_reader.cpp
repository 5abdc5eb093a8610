#include "gallery/screens/list_reader.h"

#include "ColorPicker/picker.h"
#include "Preferences/pages.h"
#include "UIGraphics/UIGraphics.h"
#include "UIKit/UIAlertView.h"
#include "gallery/screens/controls.h"
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

/// "#RRGGBB:a.aaaaaa".
std::optional<Color> pickedColor() {
  NSObject* picker = host::shownPicker();
  if (picker == nullptr) return {};
  constexpr std::size_t kDigits = 7;
  return parseColor(host::pickerColor(picker).substr(0, kDigits) + "ff");
}

Alert shownAlert() {
  auto* top = send<NSObject*>(host::shownAlerts(), "lastObject"_sel);
  if (top == nullptr) return {};
  Alert alert{Row::words(send<NSObject*>(top, "title"_sel)),
              Row::words(send<NSObject*>(top, "message"_sel)),
              {}};
  const auto count = send<NSInteger>(top, "numberOfButtons"_sel);
  for (NSInteger i = 0; i < count; ++i)
    alert.buttons.push_back(Row::words(send<NSObject*>(top, "buttonTitleAtIndex:"_sel, i)));
  return alert;
}

}  // namespace

ListPage readListPage() {
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
  page.picked = pickedColor();
  page.alert = shownAlert();
  return page;
}

}  // namespace varnix::screens
