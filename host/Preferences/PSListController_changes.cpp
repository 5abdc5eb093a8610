// Pages whose rows change.
#include "Preferences/PSListController.h"

namespace host {
namespace {

NSArray* rowsNow(ListController* page) { return send<NSArray*>(page, "specifiers"_sel); }

NSUInteger placeOf(NSArray* list, NSObject* wanted) {
  const NSUInteger count = send(list, NSArray::count);
  NSUInteger at = 0;
  while (at < count && send(list, NSArray::objectAtIndex, at) != wanted) ++at;
  return at;
}

void addRange(NSMutableArray* to, NSArray* from, NSUInteger begin, NSUInteger end) {
  for (NSUInteger i = begin; i < end; ++i)
    send(to, NSMutableArray::addObject, send(from, NSArray::objectAtIndex, i));
}

NSArray* listOf(PSSpecifier* row) {
  NSObject* only[] = {row};
  return NSArray::arrayWithObjects(only, row == nullptr ? 0 : 1);
}

}  // namespace

void ListController::reloadTable() { send<void>(table, "reloadData"_sel); }

void ListController::reloadRows() {
  send<void>(this, "setSpecifiers:"_sel, static_cast<NSArray*>(nullptr));
  rowsNow(this);
  send<void>(this, "reload"_sel);
}

void ListController::reloadRow(PSSpecifier* row) {
  send<void>(this, "reloadSpecifier:animated:"_sel, row, false);
}

/// Nothing happens before the row has been shown: then it is asked anyway.
void ListController::reloadRowAnimated(PSSpecifier* row, bool) {
  if (cachedCell(row) == nullptr) return;
  auto* path = send<NSIndexPath*>(this, "indexPathForSpecifier:"_sel, row);
  if (path == nullptr) return;
  NSObject* only[] = {path};
  constexpr NSInteger kNoAnimation = 5;
  send<void>(table, "reloadRowsAtIndexPaths:withRowAnimation:"_sel,
             NSArray::arrayWithObjects(only, 1), kNoAnimation);
}

void ListController::reloadRowWithId(NSString* identifier, bool animated) {
  send<void>(this, "reloadSpecifier:animated:"_sel,
             send<PSSpecifier*>(this, "specifierForID:"_sel, identifier), animated);
}

void ListController::insertRow(PSSpecifier* row, PSSpecifier* after, bool animated) {
  send<void>(this, "insertContiguousSpecifiers:afterSpecifier:animated:"_sel, listOf(row), after,
             animated);
}

/// At the end if there is no such row to follow.
void ListController::insertRows(NSArray* list, PSSpecifier* after, bool) {
  NSArray* old = rowsNow(this);
  const NSUInteger count = send(old, NSArray::count);
  const NSUInteger place = std::min(placeOf(old, after) + 1, count);
  auto* changed = NSMutableArray::array();
  addRange(changed, old, 0, place);
  addRange(changed, list, 0, send(list, NSArray::count));
  addRange(changed, old, place, count);
  rows = Strong<NSArray>::retain(changed);
  send<void>(this, "reload"_sel);
}

void ListController::removeRow(PSSpecifier* row, bool animated) {
  send<void>(this, "removeContiguousSpecifiers:animated:"_sel, listOf(row), animated);
}

void ListController::removeRows(NSArray* list, bool) {
  NSArray* old = rowsNow(this);
  const NSUInteger removed = send(list, NSArray::count);
  auto* changed = NSMutableArray::array();
  for (NSUInteger i = 0; i < send(old, NSArray::count); ++i) {
    NSObject* row = send(old, NSArray::objectAtIndex, i);
    if (placeOf(list, row) == removed) send(changed, NSMutableArray::addObject, row);
    else cells.erase(static_cast<PSSpecifier*>(row));
  }
  rows = Strong<NSArray>::retain(changed);
  send<void>(this, "reload"_sel);
}

}  // namespace host
