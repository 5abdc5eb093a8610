// The choices of a row: one is ticked.
#include "Foundation/text.h"
#include "Preferences/PSListController.h"
#include "UIKit/UITableViewCell.h"

namespace host {
namespace {

inline NSString* valueKey() { return "value"_ns; }

struct ListItemsController : ListController {
  /// A group with the row's explanation, then a row for each choice.
  NSArray* items() {
    if (rows == nullptr)
      rows = Strong<NSArray>::retain(send<NSArray*>(this, "itemsFromParent"_sel));
    return rows;
  }

  NSArray* itemsFromParent() {
    auto* made = NSMutableArray::array();
    PSSpecifier* group = PSSpecifier::emptyGroupSpecifier();
    auto* note =
        objc::as<NSString>(send(ledHere, PSSpecifier::propertyForKey, "staticTextMessage"_ns));
    if (note != nullptr) send(group, PSSpecifier::setProperty, note, PSFooterTextGroupKey);
    send(made, NSMutableArray::addObject, group);
    NSArray* values = send(ledHere, PSSpecifier::values);
    for (NSUInteger i = 0; i < send(values, NSArray::count); ++i) {
      NSObject* value = send(values, NSArray::objectAtIndex, i);
      NSObject* words =
          send(send(ledHere, PSSpecifier::titleDictionary), NSDictionary::objectForKey, value);
      PSSpecifier* item =
          PSSpecifier::preferenceSpecifierNamed(send(words, NSObject::description), this, nullptr,
                                                nullptr, nullptr, PSListItemCell, nullptr);
      send(item, PSSpecifier::setProperty, value, valueKey());
      send(made, NSMutableArray::addObject, item);
    }
    return made;
  }

  UITableViewCell* tickedCell(UITableView* shown, NSIndexPath* path) {
    UITableViewCell* made = cell(shown, path);
    auto* item = send<PSSpecifier*>(this, "specifierAtIndexPath:"_sel, path);
    NSObject* own = send(item, PSSpecifier::propertyForKey, valueKey());
    NSObject* chosen = send(ledHere, PSSpecifier::performGetter);
    const bool isChosen = own != nullptr && send(own, NSObject::isEqual, chosen);
    send<void>(made, "setAccessoryType:"_sel,
               static_cast<NSInteger>(isChosen ? Accessory::checkmark : Accessory::none));
    return made;
  }

  void choose(UITableView* shown, NSIndexPath* path) {
    if (selectable(path) != nullptr) send<void>(this, "listItemSelected:"_sel, path);
    send<void>(shown, "deselectRowAtIndexPath:animated:"_sel, path, true);
  }

  /// The page stays, and the tick moves.
  void selected(NSIndexPath* path) {
    auto* item = send<PSSpecifier*>(this, "specifierAtIndexPath:"_sel, path);
    if (item == nullptr) return;
    send<void>(this, "setValueForSpecifier:defaultValue:"_sel, item,
               send(item, PSSpecifier::propertyForKey, valueKey()));
    send<void>(this, "reload"_sel);
  }

  /// The parent's row hears of the choice, and is shown anew.
  void setValue(PSSpecifier*, NSObject* value) {
    send(ledHere, PSSpecifier::performSetter, value);
    if (parentPage != nullptr &&
        send(parentPage, NSObject::respondsToSelector, "reloadSpecifier:"_sel.get()))
      send<void>(parentPage, "reloadSpecifier:"_sel, ledHere.get());
  }
};

}  // namespace
}  // namespace host

using host::ListItemsController;

OBJC_CLASS_NAMED(PSListItemsController, PSListController, ListItemsController, host::ListController,
                 objc::Method<"specifiers", &ListItemsController::items>,
                 objc::Method<"itemsFromParent", &ListItemsController::itemsFromParent>,
                 objc::Method<"tableView:cellForRowAtIndexPath:", &ListItemsController::tickedCell>,
                 objc::Method<"tableView:didSelectRowAtIndexPath:", &ListItemsController::choose>,
                 objc::Method<"listItemSelected:", &ListItemsController::selected>,
                 objc::Method<"setValueForSpecifier:defaultValue:", &ListItemsController::setValue>)
