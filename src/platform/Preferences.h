// The Preferences framework: pages of settings, their rows and cells.
#pragma once

#include "platform/UIKitLists.h"

/// What a row is. Property lists write the name of the constant.
using PSCellType = NSInteger;
inline constexpr PSCellType PSGroupCell = 0;
inline constexpr PSCellType PSLinkCell = 1;
inline constexpr PSCellType PSLinkListCell = 2;
inline constexpr PSCellType PSListItemCell = 3;
inline constexpr PSCellType PSTitleValueCell = 4;
inline constexpr PSCellType PSSliderCell = 5;
inline constexpr PSCellType PSSwitchCell = 6;
inline constexpr PSCellType PSStaticTextCell = 7;
inline constexpr PSCellType PSEditTextCell = 8;
inline constexpr PSCellType PSSegmentCell = 9;
inline constexpr PSCellType PSGiantIconCell = 10;
inline constexpr PSCellType PSGiantCell = 11;
inline constexpr PSCellType PSSecureEditTextCell = 12;
inline constexpr PSCellType PSButtonCell = 13;
inline constexpr PSCellType PSEditTextViewCell = 14;

/// A row, or the group that the rows after it belong to.
struct PSSpecifier : objc::View<PSSpecifier, NSObject> {
  /// The target is not kept alive. Getter and setter are messages to it: of the specifier, and of
  /// the value and the specifier. The detail class is that of the page behind the row.
  static constexpr ClassMessage<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:",
                                PSSpecifier*(NSString*, NSObject*, SEL, SEL, Class, PSCellType,
                                             Class)>
      preferenceSpecifierNamed{};
  static constexpr ClassMessage<"emptyGroupSpecifier", PSSpecifier*()> emptyGroupSpecifier{};
  static constexpr ClassMessage<"groupSpecifierWithHeader:footer:",
                                PSSpecifier*(NSString*, NSString*)>
      groupSpecifierWithHeader{};

  static constexpr Message<"properties", NSMutableDictionary*()> properties{};
  static constexpr Message<"propertyForKey:", NSObject*(NSString*)> propertyForKey{};
  /// Raises for nil.
  static constexpr Message<"setProperty:forKey:", void(NSObject*, NSString*)> setProperty{};
  static constexpr Message<"removePropertyForKey:", void(NSString*)> removeProperty{};

  static constexpr Message<"name", NSString*()> name{};
  static constexpr Message<"setName:", void(NSString*)> setName{};
  /// What was set, else the property "id", else "key", else the name.
  static constexpr Message<"identifier", NSString*()> identifier{};
  static constexpr Message<"setIdentifier:", void(NSString*)> setIdentifier{};
  static constexpr Message<"target", NSObject*()> target{};
  static constexpr Message<"setTarget:", void(NSObject*)> setTarget{};
  static constexpr Message<"cellType", PSCellType()> cellType{};
  /// A message of the specifier to the target, sent when the row is pressed.
  static constexpr Message<"buttonAction", SEL()> buttonAction{};
  static constexpr Message<"setButtonAction:", void(SEL)> setButtonAction{};
  static constexpr Message<"detailControllerClass", Class()> detailControllerClass{};
  /// Choices of a list, and what they are called there.
  static constexpr Message<"setValues:titles:", void(NSArray*, NSArray*)> setValues{};
  static constexpr Message<"values", NSArray*()> values{};
  /// Titles by value.
  static constexpr Message<"titleDictionary", NSDictionary*()> titleDictionary{};

  /// Ask the target for the row's value, and tell it a new one.
  static constexpr Message<"performGetter", NSObject*()> performGetter{};
  static constexpr Message<"performSetterWithValue:", void(NSObject*)> performSetter{};
};

// Properties of a row. The first words are those of property lists, which also know "id", and
// "height" in points.
#pragma GCC visibility push(default)
extern "C" {
extern NSString* const PSKeyNameKey;          ///< "key"
extern NSString* const PSDefaultValueKey;     ///< "default"
extern NSString* const PSEnabledKey;          ///< "enabled", a boolean
extern NSString* const PSFooterTextGroupKey;  ///< "footerText"
extern NSString* const PSTableCellClassKey;   ///< "cellClass", a class
extern NSString* const PSIconImageKey;        ///< "iconImage", a UIImage
}
#pragma GCC visibility pop

struct PSTableCell : objc::View<PSTableCell, UITableViewCell> {
  static constexpr Message<"initWithStyle:reuseIdentifier:specifier:",
                           PSTableCell*(NSInteger, NSString*, PSSpecifier*)>
      initWithSpecifier{};
  /// Shows the row's texts, icon and state as they are now. The table sends it whenever it shows
  /// the row.
  static constexpr Message<"refreshCellContentsWithSpecifier:", void(PSSpecifier*)>
      refreshCellContents{};
  static constexpr Message<"specifier", PSSpecifier*()> specifier{};
  static constexpr Message<"setSpecifier:", void(PSSpecifier*)> setSpecifier{};
  static constexpr Message<"title", NSString*()> title{};
  static constexpr Message<"setTitle:", void(NSString*)> setTitle{};
  static constexpr Message<"value", NSObject*()> value{};
  static constexpr Message<"setValue:", void(NSObject*)> setValue{};
  static constexpr Message<"cellEnabled", bool()> cellEnabled{};
  static constexpr Message<"setCellEnabled:", void(bool)> setCellEnabled{};
  static constexpr Message<"type", PSCellType()> type{};
};

struct PSControlTableCell : objc::View<PSControlTableCell, PSTableCell> {
  static constexpr Message<"control", UIControl*()> control{};
};

struct PSSwitchTableCell : objc::View<PSSwitchTableCell, PSControlTableCell> {};

struct PSViewController : objc::View<PSViewController, UIViewController> {
  static constexpr Message<"parentController", NSObject*()> parentController{};
  static constexpr Message<"setParentController:", void(NSObject*)> setParentController{};
  static constexpr Message<"rootController", NSObject*()> rootController{};
  static constexpr Message<"setRootController:", void(NSObject*)> setRootController{};
  /// What a row shows. The system's own asks its preferences.
  static constexpr Message<"readPreferenceValue:", NSObject*(PSSpecifier*)> readPreferenceValue{};
  static constexpr Message<"setPreferenceValue:specifier:", void(NSObject*, PSSpecifier*)>
      setPreferenceValue{};
  static constexpr Message<"pushController:", void(NSObject*)> pushController{};
};

/// A page of rows.
struct PSListController : objc::View<PSListController, PSViewController> {
  /// The page's rows; those of a class of its own make them at the first question, in _specifiers.
  static constexpr Message<"specifiers", NSArray*()> specifiers{};
  static constexpr objc::Variable<PSListController, "_specifiers", NSArray> _specifiers{};
  /// The row that led to this page; nil for the first one.
  static constexpr Message<"specifier", PSSpecifier*()> specifier{};
  static constexpr Message<"setSpecifier:", void(PSSpecifier*)> setSpecifier{};
  static constexpr Message<"specifierForID:", PSSpecifier*(NSString*)> specifierForID{};
  /// Where its pictures and texts come from: that of its class.
  static constexpr Message<"bundle", NSBundle*()> bundle{};
  static constexpr Message<"table", UITableView*()> table{};

  /// Forgets the rows, asks for them anew and shows them.
  static constexpr Message<"reloadSpecifiers", void()> reloadSpecifiers{};
  static constexpr Message<"reloadSpecifier:", void(PSSpecifier*)> reloadSpecifier{};
  /// The row's cell if it has been shown.
  static constexpr Message<"cachedCellForSpecifier:", PSTableCell*(PSSpecifier*)> cachedCell{};
  static constexpr Message<"controllerForSpecifier:", UIViewController*(PSSpecifier*)>
      controllerForSpecifier{};

  static constexpr Message<"viewDidLoad", void()> viewDidLoad{};
  static constexpr Message<"viewWillAppear:", void(bool)> viewWillAppear{};
  static constexpr Message<"viewDidAppear:", void(bool)> viewDidAppear{};
  static constexpr Message<"viewWillDisappear:", void(bool)> viewWillDisappear{};
  static constexpr Message<"setTitle:", void(NSString*)> setTitle{};
};

/// The choices of a row with a list.
struct PSListItemsController : objc::View<PSListItemsController, PSListController> {};
