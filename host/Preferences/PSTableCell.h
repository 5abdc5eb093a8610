// The stand-in's cells of settings pages.
#pragma once

#include "UIKit/UITableViewCell.h"
#include "platform/Preferences.h"

namespace host {

struct SettingsCell : TableViewCell {
  static PSCellType typeNamed(NSString* name);
  static NSString* nameOf(PSCellType type);

  SettingsCell* initWithSpecifier(NSInteger style, NSString* reuseIdentifier, PSSpecifier* row);
  void refresh(PSSpecifier* row);
  /// The picture at the left edge, in the middle of the row's height.
  void layOutCell();

  PSSpecifier* specifierOf() { return specifier; }
  void setSpecifier(PSSpecifier* row) { specifier = Strong<PSSpecifier>::retain(row); }
  NSString* title();
  void setTitle(NSString* text);
  /// Also shows it in a cell that has a place for it: a choice by its title.
  void setValue(NSObject* object);
  void setIcon(UIImage* image);
  bool isCellEnabled() { return !cellDisabled; }
  /// Also of the control in it.
  void setCellEnabled(bool enabled);
  UILabel* titleLabel() { return textLabelOf(); }
  UILabel* valueLabel() { return detailLabelOf(); }
  UIImageView* iconView() { return imageViewOf(); }

  Strong<PSSpecifier> specifier;
  Strong<NSObject> value;
  PSCellType type;
  bool cellDisabled;
  NSObject* cellTarget;  ///< not kept alive
  SEL cellAction;
};

struct ControlCell : SettingsCell {
  ControlCell* initWithControl(NSInteger style, NSString* reuseIdentifier, PSSpecifier* row);
  void enableControl(bool enabled);
  void setControl(UIControl* made);
  /// For subclasses: made by the cell at its start, owned by the caller.
  UIControl* newControl() { return nullptr; }
  NSObject* controlValue() { return nullptr; }
  /// Tells the row's target what the control shows.
  void controlChanged(UIControl* changed);

  Strong<UIControl> control;
};

}  // namespace host
