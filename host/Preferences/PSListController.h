// The stand-in's pages of settings.
#pragma once

#include <map>

#include "UIKit/UIViewController.h"
#include "UIKit/index_path.h"
#include "platform/Preferences.h"

namespace host {

struct SettingsController : ViewController {
  void setParentPage(NSObject* controller) { parentPage = controller; }
  void setRoot(NSObject* controller) { root = controller; }
  NSObject* readPreference(PSSpecifier* row);
  void setPreference(NSObject* value, PSSpecifier* row);
  void pushPage(NSObject* controller);
  // For subclasses: the application leaves the screen and comes back.
  void suspend() {}
  void becomeActive() {}

  NSObject* parentPage;  ///< not kept alive
  NSObject* root;        ///< the same
};

struct ListController : SettingsController {
  ListController* init();
  ListController* initForSize(CGSize size);
  void dealloc();
  void loadTable();
  void cameBack(bool animated);

  NSArray* rowsOf();
  void setRows(NSArray* list);
  void setLedHere(PSSpecifier* row);
  NSBundle* bundleOf();
  NSArray* loadRows(NSString* name, NSObject* target);
  NSArray* loadRowsFrom(NSString* name, NSObject* target, NSBundle* bundle);

  PSSpecifier* rowWithId(NSString* identifier);
  bool contains(PSSpecifier* row);
  NSIndexPath* pathOf(PSSpecifier* row);
  PSSpecifier* rowAt(NSIndexPath* path);
  PSTableCell* cachedCell(PSSpecifier* row);

  void reloadTable();
  void reloadRows();
  void reloadRow(PSSpecifier* row);
  void reloadRowAnimated(PSSpecifier* row, bool animated);
  void reloadRowWithId(NSString* identifier, bool animated);
  void insertRow(PSSpecifier* row, PSSpecifier* after, bool animated);
  void insertRows(NSArray* list, PSSpecifier* after, bool animated);
  void removeRow(PSSpecifier* row, bool animated);
  void removeRows(NSArray* list, bool animated);

  NSInteger sectionCount(UITableView* shown);
  NSInteger rowCount(UITableView* shown, NSInteger section);
  NSString* header(UITableView* shown, NSInteger section);
  NSString* footer(UITableView* shown, NSInteger section);
  CGFloat height(UITableView* shown, NSIndexPath* path);
  UITableViewCell* cell(UITableView* shown, NSIndexPath* path);
  /// The row there, if a finger selects it: not one that is disabled, or has a control.
  PSSpecifier* selectable(NSIndexPath* path);
  void select(UITableView* shown, NSIndexPath* path);

  UIViewController* pageBehind(PSSpecifier* row);
  UIViewController* pageBehindRow(NSIndexPath* path);
  /// What the row asks for before its page is made; false if it asks for nothing.
  bool performAction(PSSpecifier* row);
  bool performButton(PSSpecifier* row);
  /// Loads the bundle that the row names, and finds the class of its page there.
  void loadBundleOf(PSSpecifier* row);
  void pushAnimated(NSObject* controller, bool animated);
  void show(NSObject* controller);

  Strong<NSArray> rows;
  Strong<PSSpecifier> ledHere;
  Strong<UITableView> table;
  /// Of the rows that have been shown, by row.
  std::map<PSSpecifier*, Strong<PSTableCell>> cells;
};

}  // namespace host
