// What happens when a row is pressed.
#include "Foundation/text.h"
#include "Preferences/PSListController.h"

namespace host {
namespace {

/// The class of the page behind a row; nil for none.
Class pageClassOf(PSSpecifier* row) {
  if (Class detail = send(row, PSSpecifier::detailControllerClass)) return detail;
  auto* name = objc::as<NSString>(send(row, PSSpecifier::propertyForKey, "detail"_ns));
  if (name != nullptr) return objc_getClass(std::string(text(name)).c_str());
  const bool isList = send(row, PSSpecifier::cellType) == PSLinkListCell;
  return isList ? objc_getClass("PSListItemsController") : nullptr;
}

template <objc::FixedString Name>
void tellIfAsked(NSObject* page, objc::Selector<Name> selector, NSObject* value) {
  if (send(page, NSObject::respondsToSelector, selector.get())) send<void>(page, selector, value);
}

/// A finger that touches these rows selects them.
bool isSelectable(PSCellType type) {
  return type == PSLinkCell || type == PSLinkListCell || type == PSListItemCell ||
         type == PSButtonCell;
}

}  // namespace

PSSpecifier* ListController::selectable(NSIndexPath* path) {
  auto* row = send<PSSpecifier*>(this, "specifierAtIndexPath:"_sel, path);
  PSTableCell* cell = cachedCell(row);
  const bool isEnabled = cell == nullptr || send(cell, PSTableCell::cellEnabled);
  return isEnabled && isSelectable(send(row, PSSpecifier::cellType)) ? row : nullptr;
}

void ListController::select(UITableView* shown, NSIndexPath* path) {
  PSSpecifier* row = selectable(path);
  if (row == nullptr) {
    send<void>(shown, "deselectRowAtIndexPath:animated:"_sel, path, false);
    return;
  }
  const auto kept = Strong<PSSpecifier>::retain(row);
  send<bool>(this, "performActionForSpecifier:"_sel, row);
  if (send<bool>(this, "performButtonActionForSpecifier:"_sel, row)) {
    send<void>(shown, "deselectRowAtIndexPath:animated:"_sel, path, true);
    return;
  }
  if (auto* page = send<UIViewController*>(this, "controllerForRowAtIndexPath:"_sel, path))
    send<void>(this, "pushController:"_sel, static_cast<NSObject*>(page));
}

UIViewController* ListController::pageBehindRow(NSIndexPath* path) {
  return send<UIViewController*>(this, "controllerForSpecifier:"_sel,
                                 send<PSSpecifier*>(this, "specifierAtIndexPath:"_sel, path));
}

UIViewController* ListController::pageBehind(PSSpecifier* row) {
  Class cls = pageClassOf(row);
  if (cls == nullptr) return nullptr;
  auto* page = send<UIViewController*>(send<NSObject*>(cls, "alloc"_sel), "init"_sel);
  if (page == nullptr) return nullptr;
  tellIfAsked(page, "setSpecifier:"_sel, row);
  tellIfAsked(page, "setParentController:"_sel, this);
  tellIfAsked(page, "setRootController:"_sel, root);
  if (send<NSString*>(page, "title"_sel) == nullptr)
    send<void>(page, "setTitle:"_sel, send(row, PSSpecifier::name));
  return static_cast<UIViewController*>(objc_autorelease(page));
}

bool ListController::performAction(PSSpecifier* row) {
  SEL action = send<SEL>(row, "controllerLoadAction"_sel);
  if (action == nullptr) return false;
  NSObject* target = send(row, PSSpecifier::target);
  objc::sendDynamic<void>(target == nullptr ? this : target, action, row);
  return true;
}

bool ListController::performButton(PSSpecifier* row) {
  if (send(row, PSSpecifier::buttonAction) == nullptr) return false;
  send<void>(row, "performButtonAction"_sel);
  return true;
}

void ListController::loadBundleOf(PSSpecifier* row) {
  auto* path = objc::as<NSString>(send(row, PSSpecifier::propertyForKey, "lazy-bundle"_ns));
  auto* bundle = send<NSBundle*>(objc_getClass("NSBundle"), "bundleWithPath:"_sel, path);
  if (!send<bool>(bundle, "load"_sel)) return;
  auto* name = objc::as<NSString>(send(row, PSSpecifier::propertyForKey, "detail"_ns));
  Class cls = name == nullptr ? send<Class>(bundle, "principalClass"_sel)
                              : objc_getClass(std::string(text(name)).c_str());
  if (cls != nullptr) send<void>(row, "setDetailControllerClass:"_sel, cls);
}

void ListController::pushAnimated(NSObject* controller, bool animated) {
  send<void>(send<NSObject*>(this, "navigationController"_sel), "pushViewController:animated:"_sel,
             controller, animated);
}

void ListController::show(NSObject* controller) {
  send<void>(this, "pushController:"_sel, controller);
}

}  // namespace host
