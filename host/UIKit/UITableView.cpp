#include "UIKit/UITableView.h"

namespace host {
namespace {

bool understands(NSObject* object, SEL selector) {
  return object != nullptr && send(object, NSObject::respondsToSelector, selector);
}

}  // namespace

TableView* TableView::initWithFrameAndStyle(CGRect rect, NSInteger wanted) {
  auto* made = send<TableView*>(this, "initWithFrame:"_sel, rect);
  if (made != nullptr) made->style = wanted;
  return made;
}

void TableView::dealloc() {
  reloadData();
  View::dealloc();
}

void TableView::setHeaderView(UIView* view) {
  if (view == header.get()) return;
  send<void>(header, "removeFromSuperview"_sel);
  header = Strong<UIView>::retain(view);
  send<void>(this, "addSubview:"_sel, view);
}

NSInteger TableView::sectionCount() {
  if (!understands(dataSource, "numberOfSectionsInTableView:"_sel)) return 1;
  return send<NSInteger>(dataSource, "numberOfSectionsInTableView:"_sel, this);
}

NSInteger TableView::rowCount(NSInteger section) {
  return send<NSInteger>(dataSource, "tableView:numberOfRowsInSection:"_sel, this, section);
}

bool TableView::hasRow(NSIndexPath* path) {
  if (path == nullptr) return false;
  const NSInteger section = send(path, NSIndexPath::section);
  const NSInteger row = send(path, NSIndexPath::row);
  return section >= 0 && row >= 0 && section < sectionCount() && row < rowCount(section);
}

UITableViewCell* TableView::cellAt(NSIndexPath* path) {
  if (!hasRow(path)) return nullptr;
  const Place place{send(path, NSIndexPath::section), send(path, NSIndexPath::row)};
  if (const auto shown = cells.find(place); shown != cells.end()) return shown->second;
  auto* cell =
      send<UITableViewCell*>(dataSource, "tableView:cellForRowAtIndexPath:"_sel, this, path);
  if (cell == nullptr) return nullptr;
  cells[place] = Strong<UITableViewCell>::retain(cell);
  send<void>(this, "addSubview:"_sel, cell);
  send<void>(cell, "layoutIfNeeded"_sel);
  return cell;
}

NSIndexPath* TableView::pathOf(UITableViewCell* cell) {
  for (const auto& [place, shown] : cells) {
    if (shown.get() == cell) return NSIndexPath::indexPathForRow(place.second, place.first);
  }
  return nullptr;
}

void TableView::forget(const Place& place) {
  const auto found = cells.find(place);
  if (found == cells.end()) return;
  const auto kept = std::move(found->second);
  cells.erase(found);
  send<void>(kept, "removeFromSuperview"_sel);
}

void TableView::reloadData() {
  while (!cells.empty()) forget(cells.begin()->first);
  selected = nullptr;
}

void TableView::reloadRows(NSArray* paths, NSInteger) {
  const NSUInteger count = send(paths, NSArray::count);
  for (NSUInteger i = 0; i < count; ++i) {
    auto* path = static_cast<NSIndexPath*>(send(paths, NSArray::objectAtIndex, i));
    forget({send(path, NSIndexPath::section), send(path, NSIndexPath::row)});
    cellAt(path);
  }
}

void TableView::layOutCells() {
  if (dataSource == nullptr) return;
  for (NSInteger section = 0; section < sectionCount(); ++section) {
    for (NSInteger row = 0; row < rowCount(section); ++row)
      cellAt(NSIndexPath::indexPathForRow(row, section));
  }
}

void TableView::deselect(NSIndexPath* path, bool) {
  if (path != nullptr && send(path, NSObject::isEqual, selected)) selected = nullptr;
}

void TableView::press(NSIndexPath* path) {
  if (cellAt(path) == nullptr) return;
  NSIndexPath* accepted = path;
  if (understands(delegate, "tableView:willSelectRowAtIndexPath:"_sel))
    accepted = send<NSIndexPath*>(delegate, "tableView:willSelectRowAtIndexPath:"_sel, this, path);
  if (accepted == nullptr) return;
  const auto kept = Strong<NSObject>::retain(this);
  selected = Strong<NSIndexPath>::retain(accepted);
  if (understands(delegate, "tableView:didSelectRowAtIndexPath:"_sel))
    send<void>(delegate, "tableView:didSelectRowAtIndexPath:"_sel, this, accepted);
}

NSString* TableView::headerOf(NSInteger section) {
  if (!understands(dataSource, "tableView:titleForHeaderInSection:"_sel)) return nullptr;
  return send<NSString*>(dataSource, "tableView:titleForHeaderInSection:"_sel, this, section);
}

NSString* TableView::footerOf(NSInteger section) {
  if (!understands(dataSource, "tableView:titleForFooterInSection:"_sel)) return nullptr;
  return send<NSString*>(dataSource, "tableView:titleForFooterInSection:"_sel, this, section);
}

}  // namespace host

using host::TableView;

OBJC_CLASS_NAMED(
    UITableView, UIView, TableView, host::View,
    objc::Property<"dataSource", &TableView::dataSource, objc::Storage::assign>,
    objc::Property<"delegate", &TableView::delegate, objc::Storage::assign>,
    objc::Ivar<"_style", &TableView::style>, objc::Readable<"tableHeaderView", &TableView::header>,
    objc::Readable<"indexPathForSelectedRow", &TableView::selected, "_selectedIndexPath">,
    objc::Ivar<"_visibleCells", &TableView::cells>,
    objc::Method<"initWithFrame:style:", &TableView::initWithFrameAndStyle>,
    objc::Method<"dealloc", &TableView::dealloc>,
    objc::Method<"setTableHeaderView:", &TableView::setHeaderView>,
    objc::Method<"numberOfSections", &TableView::sectionCount>,
    objc::Method<"numberOfRowsInSection:", &TableView::rowCount>,
    objc::Method<"cellForRowAtIndexPath:", &TableView::cellAt>,
    objc::Method<"indexPathForCell:", &TableView::pathOf>,
    objc::Method<"reloadData", &TableView::reloadData>,
    objc::Method<"reloadRowsAtIndexPaths:withRowAnimation:", &TableView::reloadRows>,
    objc::Method<"layoutSubviews", &TableView::layOutCells>,
    objc::Method<"deselectRowAtIndexPath:animated:", &TableView::deselect>,
    objc::Method<"standIn_pressRowAtIndexPath:", &TableView::press>,
    objc::Method<"standIn_headerOfSection:", &TableView::headerOf>,
    objc::Method<"standIn_footerOfSection:", &TableView::footerOf>)
