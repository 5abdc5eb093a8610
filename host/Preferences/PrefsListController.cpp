// The application's first page, the list of settings, and the page behind an entry that does not
// load.
#include "Preferences/PSListController.h"
#include "Preferences/entries.h"

namespace host {
namespace {

struct SettingsList : ListController {
  SettingsList* initAsFirst() {
    auto* made = static_cast<SettingsList*>(ListController::init());
    send<void>(made, "setTitle:"_sel, "Settings"_ns);
    return made;
  }

  NSArray* entries() {
    if (rows == nullptr) {
      auto* made = NSMutableArray::array();
      send(made, NSMutableArray::addObject, PSSpecifier::emptyGroupSpecifier());
      NSArray* found = settingsEntries(this);
      for (NSUInteger i = 0; i < send(found, NSArray::count); ++i)
        send(made, NSMutableArray::addObject, send(found, NSArray::objectAtIndex, i));
      rows = Strong<NSArray>::retain(made);
    }
    return rows;
  }

  /// What cannot be shown says so.
  UIViewController* pageOrApology(PSSpecifier* row) {
    if (UIViewController* page = pageBehind(row)) return page;
    send<void>(row, "setDetailControllerClass:"_sel, objc_getClass(kFailedPage));
    UIViewController* page = pageBehind(row);
    send<void>(row, "setDetailControllerClass:"_sel, static_cast<Class>(nullptr));
    return page;
  }
};

struct FailedPage : ListController {
  NSArray* apology() {
    if (rows == nullptr) {
      NSObject* group = PSSpecifier::groupSpecifierWithHeader(
          nullptr,
          NSString::stringWithFormat("There was an error loading the preference bundle for %@."_ns,
                                     send(ledHere, PSSpecifier::name)));
      rows = Strong<NSArray>::retain(NSArray::arrayWithObjects(&group, 1));
    }
    return rows;
  }
};

}  // namespace
}  // namespace host

using host::FailedPage;
using host::SettingsList;

OBJC_CLASS_NAMED(PrefsListController, PSListController, SettingsList, host::ListController,
                 objc::Method<"init", &SettingsList::initAsFirst>,
                 objc::Method<"specifiers", &SettingsList::entries>,
                 objc::Method<"controllerForSpecifier:", &SettingsList::pageOrApology>)

OBJC_CLASS_NAMED(PrefsFailedBundleController, PSListController, FailedPage, host::ListController,
                 objc::Method<"specifiers", &FailedPage::apology>)
