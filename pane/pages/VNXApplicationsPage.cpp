#include "pages/VNXApplicationsPage.h"

#include "objc/association.h"
#include "objc/implementation.h"
#include "pages/VNXApplicationPage.h"
#include "rows/rows.h"
#include "settings/applications.h"
#include "text.h"

namespace varnix::pane {

namespace {

constexpr auto kQuery = "varnixQuery"_sel;

struct ApplicationsPage : objc::Implementation<VNXApplicationsPage, PSListController> {
  NSArray* rows() {
    Rows rows(self());
    const Applications installed = installedApplications();
    if (installed.identifiers == nullptr) {
      rows.group();
      rows.note("missing"_ns, text("missing.applications"_ns));
      return rows.all();
    }
    addGroup(rows, installed, true, "applications.own"_ns);
    addGroup(rows, installed, false, "applications.others"_ns);
    if (send(rows.all(), NSArray::count) == 0) {
      rows.group();
      rows.note("none"_ns, text("applications.none"_ns));
    }
    return rows.all();
  }

  void viewDidLoad() {
    objc::sendSuper<VNXApplicationsPage>(self(), PSListController::viewDidLoad);
    auto field = objc::make<UISearchBar>();
    send(field, UISearchBar::setPlaceholder, text("applications.search"_ns));
    send(field, UISearchBar::setDelegate, self());
    send(field, UISearchBar::sizeToFit);
    send(send(self(), PSListController::table), UITableView::setTableHeaderView, field);
    fetchIcons(missingIcons(), self(), VNXApplicationsPage::iconLoaded);
  }

  void textDidChange(UISearchBar*, NSString* query) {
    objc::associate(self(), kQuery, query, AssociationPolicy::copyNonatomic);
    send(self(), PSListController::reloadSpecifiers);
  }

  /// The keyboard goes; what was typed holds already.
  void searchPressed(UISearchBar* field) { send(field, UIView::resignFirstResponder); }

  void iconLoaded(NSString* application) {
    PSSpecifier* row = send(self(), PSListController::specifierForID, application);
    UIImage* icon = iconAtHand(application);
    if (row == nullptr || icon == nullptr) return;
    setIcon(row, icon);
    send(self(), PSListController::reloadSpecifier, row);
  }

 private:
  static NSString* at(NSArray* identifiers, NSUInteger index) {
    return objc::as<NSString>(send(identifiers, NSArray::objectAtIndex, index));
  }

  bool isWanted(NSString* name) {
    auto* query = objc::associated<NSString>(self(), kQuery);
    return query == nullptr || send(query, NSString::length) == 0 ||
           send(name, NSString::containsIgnoringCase, query);
  }

  /// Nothing if no application belongs into it.
  void addGroup(Rows& rows, const Applications& installed, bool withOwnSettings, NSString* title) {
    bool isBegun = false;
    for (NSUInteger i = 0; i < send(installed.identifiers, NSArray::count); ++i) {
      NSString* application = at(installed.identifiers, i);
      auto* name =
          objc::as<NSString>(send(installed.names, NSDictionary::objectForKey, application));
      if (name == nullptr) name = application;
      if (application == nullptr || !isWanted(name) ||
          hasOwnSettings(application) != withOwnSettings) {
        continue;
      }
      if (!isBegun) rows.group(text(title));
      isBegun = true;
      PSSpecifier* row = rows.link(application, name, objc::classOf<VNXApplicationPage>());
      send(row, PSSpecifier::setProperty, application, kApplication());
      setIcon(row, iconAtHand(application));
    }
  }

  static NSArray* missingIcons() {
    auto* missing = NSMutableArray::array();
    NSArray* all = installedApplications().identifiers;
    for (NSUInteger i = 0; i < send(all, NSArray::count); ++i) {
      if (NSString* application = at(all, i); application != nullptr && !iconAtHand(application))
        send(missing, NSMutableArray::addObject, application);
    }
    return missing;
  }
};

}  // namespace
}  // namespace varnix::pane

OBJC_CLASS_NAMED(
    VNXApplicationsPage, VNXPage, varnix::pane::ApplicationsPage, PSListController,
    objc::Implements<VNXPage::rows, &varnix::pane::ApplicationsPage::rows>,
    objc::Implements<PSListController::viewDidLoad, &varnix::pane::ApplicationsPage::viewDidLoad>,
    objc::Implements<VNXApplicationsPage::textDidChange,
                     &varnix::pane::ApplicationsPage::textDidChange>,
    objc::Implements<VNXApplicationsPage::searchPressed,
                     &varnix::pane::ApplicationsPage::searchPressed>,
    objc::Implements<VNXApplicationsPage::iconLoaded, &varnix::pane::ApplicationsPage::iconLoaded>)
