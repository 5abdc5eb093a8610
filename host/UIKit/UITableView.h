// The stand-in's table, on a screen that is long enough for all its rows.
#pragma once

#include <map>

#include "UIKit/UITableViewCell.h"
#include "UIKit/index_path.h"

namespace host {

struct TableView : View {
  TableView* initWithFrameAndStyle(CGRect rect, NSInteger style);
  void dealloc();

  void setHeaderView(UIView* view);
  /// 1 where the data source does not say.
  NSInteger sectionCount();
  NSInteger rowCount(NSInteger section);
  /// The cell that the row has been shown with, else a new one; nil for no such row.
  UITableViewCell* cellAt(NSIndexPath* path);
  /// Nil for a cell that is not shown.
  NSIndexPath* pathOf(UITableViewCell* cell);
  /// Forgets the cells.
  void reloadData();
  /// Asks for these rows' cells anew.
  void reloadRows(NSArray* paths, NSInteger animation);
  /// Makes the cells.
  void layOutCells();
  void deselect(NSIndexPath* path, bool animated);

  /// Acts like a tap: the row is selected, and the delegate told. Nothing happens without such a
  /// row.
  void press(NSIndexPath* path);
  /// The header or the footer above and below a section; nil for none.
  NSString* headerOf(NSInteger section);
  NSString* footerOf(NSInteger section);

  using Place = std::pair<NSInteger, NSInteger>;  ///< section, row
  NSObject* dataSource;                           ///< not kept alive
  NSObject* delegate;                             ///< the same
  NSInteger style;
  Strong<UIView> header;
  Strong<NSIndexPath> selected;
  std::map<Place, Strong<UITableViewCell>> cells;

 private:
  bool hasRow(NSIndexPath* path);
  void forget(const Place& place);
};

}  // namespace host
