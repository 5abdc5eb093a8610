// Pages of rows: where the rows come from, and how they are shown.
#include "Preferences/PSListController.h"

#include <algorithm>

#include "Foundation/text.h"
#include "Preferences/cell_types.h"
#include "Preferences/sections.h"
#include "Preferences/stored_preferences.h"

namespace host {
namespace {

constexpr NSInteger kGroupedStyle = 1;

/// The page through its view, for messages to itself.
PSListController* asView(ListController* page) {
  return static_cast<PSListController*>(static_cast<NSObject*>(page));
}

/// The class that a row's property holds or names; nil for none.
Class classIn(PSSpecifier* row, NSString* key) {
  NSObject* named = send(row, PSSpecifier::propertyForKey, key);
  if (auto* name = objc::as<NSString>(named)) return objc_getClass(std::string(text(name)).c_str());
  return reinterpret_cast<Class>(named);
}

}  // namespace

NSObject* SettingsController::readPreference(PSSpecifier* row) { return storedPreference(row); }
void SettingsController::setPreference(NSObject* value, PSSpecifier* row) {
  storePreference(value, row);
}
void SettingsController::pushPage(NSObject* controller) {
  send<void>(send<NSObject*>(this, "navigationController"_sel), "pushViewController:animated:"_sel,
             controller, true);
}

ListController* ListController::init() {
  return static_cast<ListController*>(ViewController::init());
}

ListController* ListController::initForSize(CGSize) {
  return send<ListController*>(this, "init"_sel);
}

void ListController::dealloc() {
  // Others may hold the table.
  send<void>(table, "setDataSource:"_sel, static_cast<NSObject*>(nullptr));
  send<void>(table, "setDelegate:"_sel, static_cast<NSObject*>(nullptr));
  ViewController::dealloc();
}

void ListController::loadTable() {
  loadView();
  auto* made = send<UITableView*>(objc_getClass("UITableView"), "alloc"_sel);
  table = Strong<UITableView>::adopt(
      send<UITableView*>(made, "initWithFrame:style:"_sel, CGRect{}, kGroupedStyle));
  send<void>(table, "setDataSource:"_sel, static_cast<NSObject*>(this));
  send<void>(table, "setDelegate:"_sel, static_cast<NSObject*>(this));
  send<void>(pageView, "addSubview:"_sel, table.get());
}

void ListController::cameBack(bool) {
  send<void>(table, "deselectRowAtIndexPath:animated:"_sel,
             send<NSIndexPath*>(table, "indexPathForSelectedRow"_sel), false);
}

NSArray* ListController::rowsOf() {
  if (rows == nullptr) rows = Strong<NSArray>::retain(NSMutableArray::array());
  return rows;
}

void ListController::setRows(NSArray* list) {
  rows = Strong<NSArray>::retain(list);
  cells.clear();
}

void ListController::setLedHere(PSSpecifier* row) { ledHere = Strong<PSSpecifier>::retain(row); }

NSBundle* ListController::bundleOf() { return NSBundle::bundleForClass(isa); }

PSSpecifier* ListController::rowWithId(NSString* identifier) {
  NSArray* all = send(asView(this), PSListController::specifiers);
  const NSUInteger count = send(all, NSArray::count);
  for (NSUInteger i = 0; i < count; ++i) {
    auto* row = static_cast<PSSpecifier*>(send(all, NSArray::objectAtIndex, i));
    NSString* own = send(row, PSSpecifier::identifier);
    if (own != nullptr && send(own, NSString::isEqualToString, identifier)) return row;
  }
  return nullptr;
}

bool ListController::contains(PSSpecifier* row) {
  return send(send(asView(this), PSListController::specifiers), NSArray::containsObject, row);
}

NSIndexPath* ListController::pathOf(PSSpecifier* row) {
  const auto sections = sectionsOf(send(asView(this), PSListController::specifiers));
  for (std::size_t section = 0; section < sections.size(); ++section) {
    const auto& list = sections[section].rows;
    const auto found = std::ranges::find(list, row);
    if (found != list.end()) {
      return NSIndexPath::indexPathForRow(static_cast<NSInteger>(found - list.begin()),
                                          static_cast<NSInteger>(section));
    }
  }
  return nullptr;
}

PSSpecifier* ListController::rowAt(NSIndexPath* path) {
  const auto sections = sectionsOf(send(asView(this), PSListController::specifiers));
  const auto section = static_cast<std::size_t>(send(path, NSIndexPath::section));
  const auto row = static_cast<std::size_t>(send(path, NSIndexPath::row));
  if (path == nullptr || section >= sections.size() || row >= sections[section].rows.size())
    return nullptr;
  return sections[section].rows[row];
}

PSTableCell* ListController::cachedCell(PSSpecifier* row) {
  const auto found = cells.find(row);
  return found == cells.end() ? nullptr : found->second.get();
}

NSInteger ListController::sectionCount(UITableView*) {
  return static_cast<NSInteger>(
      sectionsOf(send(asView(this), PSListController::specifiers)).size());
}

namespace {

Section sectionAt(ListController* page, NSInteger index) {
  const auto sections = sectionsOf(send(asView(page), PSListController::specifiers));
  const auto at = static_cast<std::size_t>(index);
  return at < sections.size() ? sections[at] : Section{};
}

}  // namespace

NSInteger ListController::rowCount(UITableView*, NSInteger section) {
  return static_cast<NSInteger>(sectionAt(this, section).rows.size());
}

NSString* ListController::header(UITableView*, NSInteger section) {
  return send(sectionAt(this, section).group, PSSpecifier::name);
}

NSString* ListController::footer(UITableView*, NSInteger section) {
  return objc::as<NSString>(
      send(sectionAt(this, section).group, PSSpecifier::propertyForKey, PSFooterTextGroupKey));
}

CGFloat ListController::height(UITableView*, NSIndexPath* path) {
  constexpr CGFloat kUsual = 44;
  auto* own = objc::as<NSNumber>(send(rowAt(path), PSSpecifier::propertyForKey, "height"_ns));
  return own == nullptr ? kUsual : static_cast<CGFloat>(send(own, NSNumber::doubleValue));
}

UITableViewCell* ListController::cell(UITableView*, NSIndexPath* path) {
  PSSpecifier* row = send<PSSpecifier*>(this, "specifierAtIndexPath:"_sel, path);
  if (row == nullptr) return nullptr;
  // Cells may change the page's rows while they are made and refreshed.
  auto shown = Strong<PSTableCell>::retain(cachedCell(row));
  if (shown == nullptr) {
    const CellType* type = cellType(send(row, PSSpecifier::cellType));
    Class cls = classIn(row, PSTableCellClassKey);
    if (cls == nullptr) cls = objc_getClass(type == nullptr ? "PSTableCell" : type->cellClass);
    const bool showsValue = type != nullptr && type->showsValue;
    shown = Strong<PSTableCell>::adopt(
        send(send<PSTableCell*>(cls, "alloc"_sel), PSTableCell::initWithSpecifier,
             showsValue ? UITableViewCellStyleValue1 : UITableViewCellStyleDefault,
             makeString(class_getName(cls)), row));
    send<void>(shown, "setCellTarget:"_sel, static_cast<NSObject*>(this));
    cells[row] = shown;
  }
  send(shown, PSTableCell::refreshCellContents, row);
  return shown.autorelease();
}

}  // namespace host

using host::ListController;
using host::SettingsController;

OBJC_CLASS_NAMED(PSViewController, UIViewController, SettingsController, host::ViewController,
                 objc::Readable<"parentController", &SettingsController::parentPage>,
                 objc::Readable<"rootController", &SettingsController::root>,
                 objc::Method<"setParentController:", &SettingsController::setParentPage>,
                 objc::Method<"setRootController:", &SettingsController::setRoot>,
                 objc::Method<"readPreferenceValue:", &SettingsController::readPreference>,
                 objc::Method<"setPreferenceValue:specifier:", &SettingsController::setPreference>,
                 objc::Method<"pushController:", &SettingsController::pushPage>,
                 objc::Method<"suspend", &SettingsController::suspend>,
                 objc::Method<"willBecomeActive", &SettingsController::becomeActive>)

OBJC_CLASS_NAMED(
    PSListController, PSViewController, ListController, SettingsController,
    objc::Ivar<"_specifiers", &ListController::rows>,
    objc::Readable<"specifier", &ListController::ledHere>,
    objc::Readable<"table", &ListController::table>, objc::Ivar<"_cells", &ListController::cells>,
    objc::Method<"init", &ListController::init>,
    objc::Method<"initForContentSize:", &ListController::initForSize>,
    objc::Method<"dealloc", &ListController::dealloc>,
    objc::Method<"loadView", &ListController::loadTable>,
    objc::Method<"viewWillAppear:", &ListController::cameBack>,
    objc::Method<"specifiers", &ListController::rowsOf>,
    objc::Method<"setSpecifiers:", &ListController::setRows>,
    objc::Method<"setSpecifier:", &ListController::setLedHere>,
    objc::Method<"bundle", &ListController::bundleOf>,
    objc::Method<"loadSpecifiersFromPlistName:target:", &ListController::loadRows>,
    objc::Method<"loadSpecifiersFromPlistName:target:bundle:", &ListController::loadRowsFrom>,
    objc::Method<"specifierForID:", &ListController::rowWithId>,
    objc::Method<"containsSpecifier:", &ListController::contains>,
    objc::Method<"indexPathForSpecifier:", &ListController::pathOf>,
    objc::Method<"specifierAtIndexPath:", &ListController::rowAt>,
    objc::Method<"cachedCellForSpecifier:", &ListController::cachedCell>,
    objc::Method<"reload", &ListController::reloadTable>,
    objc::Method<"reloadSpecifiers", &ListController::reloadRows>,
    objc::Method<"reloadSpecifier:", &ListController::reloadRow>,
    objc::Method<"reloadSpecifier:animated:", &ListController::reloadRowAnimated>,
    objc::Method<"reloadSpecifierID:animated:", &ListController::reloadRowWithId>,
    objc::Method<"insertSpecifier:afterSpecifier:animated:", &ListController::insertRow>,
    objc::Method<"insertContiguousSpecifiers:afterSpecifier:animated:",
                 &ListController::insertRows>,
    objc::Method<"removeSpecifier:animated:", &ListController::removeRow>,
    objc::Method<"removeContiguousSpecifiers:animated:", &ListController::removeRows>,
    objc::Method<"numberOfSectionsInTableView:", &ListController::sectionCount>,
    objc::Method<"tableView:numberOfRowsInSection:", &ListController::rowCount>,
    objc::Method<"tableView:titleForHeaderInSection:", &ListController::header>,
    objc::Method<"tableView:titleForFooterInSection:", &ListController::footer>,
    objc::Method<"tableView:heightForRowAtIndexPath:", &ListController::height>,
    objc::Method<"tableView:cellForRowAtIndexPath:", &ListController::cell>,
    objc::Method<"tableView:didSelectRowAtIndexPath:", &ListController::select>,
    objc::Method<"controllerForSpecifier:", &ListController::pageBehind>,
    objc::Method<"controllerForRowAtIndexPath:", &ListController::pageBehindRow>,
    objc::Method<"performActionForSpecifier:", &ListController::performAction>,
    objc::Method<"performButtonActionForSpecifier:", &ListController::performButton>,
    objc::Method<"lazyLoadBundle:", &ListController::loadBundleOf>,
    objc::Method<"pushController:animate:", &ListController::pushAnimated>,
    objc::Method<"showController:", &ListController::show>)
