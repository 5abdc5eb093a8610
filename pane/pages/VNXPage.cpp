#include "pages/VNXPage.h"

#include "objc/implementation.h"
#include "prefs/value.h"
#include "rows/rows.h"
#include "settings/settings.h"
#include "varnix/pane.h"

namespace varnix::pane {

namespace {

/// A stored value as the row shows it; nil for one that the row cannot show.
NSObject* shownValue(NSObject* value, PSSpecifier* row) {
  if (!isReadable(value)) return nullptr;
  if (send(row, PSSpecifier::cellType) == PSSwitchCell)
    return NSNumber::numberWithBool(boolOf(value));
  NSNumber* number = NSNumber::numberWithLongLong(integerOf(value));
  NSArray* choices = send(row, PSSpecifier::values);
  return send(choices, NSArray::containsObject, number) ? number : nullptr;
}

struct Page : objc::Implementation<VNXPage, PSListController> {
  NSArray* specifiers() {
    if (objc::read(self(), PSListController::_specifiers) == nullptr) {
      NSArray* made = send(self(), VNXPage::rows);
      noteStates(made);
      objc::store(self(), PSListController::_specifiers, made);
    }
    return objc::read(self(), PSListController::_specifiers);
  }

  NSArray* rows() { return NSMutableArray::array(); }

  NSObject* readPreferenceValue(PSSpecifier* row) {
    auto* key = objc::as<NSString>(send(row, PSSpecifier::propertyForKey, PSKeyNameKey));
    if (key == nullptr) return nullptr;
    NSObject* shown = shownValue(send(store(), KTPrefsManager::objectForKey, key), row);
    return shown != nullptr ? shown : send(row, PSSpecifier::propertyForKey, PSDefaultValueKey);
  }

  void setPreferenceValue(NSObject* value, PSSpecifier* row) {
    if (value == nullptr || row == nullptr) return;
    store(value, row);
    // A switch shows its own change already.
    if (send(row, PSSpecifier::cellType) == PSSwitchCell) noteState(row);
  }

  void viewDidLoad() {
    objc::sendSuper<VNXPage>(self(), PSListController::viewDidLoad);
    manager();
    send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::addObserver, self(),
         VNXPage::settingsChanged, kSettingsChanged(), nullptr);
  }

  void viewWillAppear(bool animated) {
    objc::sendSuper<VNXPage>(self(), PSListController::viewWillAppear, animated);
    refresh();
  }

  void viewWillDisappear(bool animated) {
    QKResetPrefsTint(self());
    objc::sendSuper<VNXPage>(self(), PSListController::viewWillDisappear, animated);
  }

  void settingsChanged(NSNotification*) {
    UINavigationController* stack = send(self(), UIViewController::navigationController);
    if (send(stack, UINavigationController::topViewController) == self()) refresh();
  }

  void refresh() {
    QKSetPrefsTint(self(), Scope{}.dye());
    NSArray* shown = objc::read(self(), PSListController::_specifiers);
    if (shown == nullptr) return;
    NSArray* fresh = send(self(), VNXPage::rows);
    noteStates(fresh);
    const bool areSame = takeOver(shown, fresh, [&](PSSpecifier* row) {
      send(self(), PSListController::reloadSpecifier, row);
    });
    if (!areSame) send(self(), PSListController::reloadSpecifiers);
  }

  void undo(PSSpecifier*) { pane::undo(); }

  void dealloc() {
    send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::removeObserver, self());
    objc::sendSuper<VNXPage>(self(), NSObject::dealloc);
  }
};

}  // namespace

Scope scopeOf(PSListController* page) {
  PSSpecifier* row = send(page, PSListController::specifier);
  return {objc::as<NSString>(send(row, PSSpecifier::propertyForKey, kApplication()))};
}

NSInteger indexOf(PSListController* page) {
  return indexOf(send(page, PSListController::specifier));
}

}  // namespace varnix::pane

OBJC_PRIVATE_CLASS_NAMED(
    VNXPage, PSListController, varnix::pane::Page, PSListController,
    objc::Implements<VNXPage::rows, &varnix::pane::Page::rows>,
    objc::Implements<VNXPage::settingsChanged, &varnix::pane::Page::settingsChanged>,
    objc::Implements<VNXPage::undo, &varnix::pane::Page::undo>,
    objc::Implements<PSListController::specifiers, &varnix::pane::Page::specifiers>,
    objc::Implements<PSViewController::readPreferenceValue,
                     &varnix::pane::Page::readPreferenceValue>,
    objc::Implements<PSViewController::setPreferenceValue, &varnix::pane::Page::setPreferenceValue>,
    objc::Implements<PSListController::viewDidLoad, &varnix::pane::Page::viewDidLoad>,
    objc::Implements<PSListController::viewWillAppear, &varnix::pane::Page::viewWillAppear>,
    objc::Implements<PSListController::viewWillDisappear, &varnix::pane::Page::viewWillDisappear>,
    objc::Implements<NSObject::dealloc, &varnix::pane::Page::dealloc>)
