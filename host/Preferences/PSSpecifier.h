// The stand-in's row of a settings page.
#pragma once

#include "objc/define.h"
#include "platform/Preferences.h"
#include "runtime/send.h"

namespace host {

struct Specifier : PSSpecifier {
  static PSSpecifier* named(Class cls, SEL, NSString* name, NSObject* target, SEL set, SEL get,
                            Class detail, PSCellType cell, Class edit);
  static PSSpecifier* emptyGroup();
  static PSSpecifier* groupNamed(NSString* name);
  static PSSpecifier* groupWithHeader(NSString* header, NSString* footer);
  static PSSpecifier* groupWithId(NSString* identifier);
  static PSSpecifier* groupWithIdAndName(NSString* identifier, NSString* name);

  Specifier* init();

  NSObject* propertyForKey(NSString* key);
  /// Raises for nil.
  void storeProperty(NSObject* value, NSString* key);
  void removeProperty(NSString* key);
  /// Their own copy.
  void storeProperties(NSDictionary* all);

  /// The property "id", else the property "key", else the name.
  NSString* identifier();
  void storeIdentifier(NSString* text);

  /// Tells the row's target a new value. Nothing happens without target or setter.
  void performSetter(NSObject* value);
  /// Asks the row's target; nil without target or getter.
  NSObject* performGetter();
  /// Nothing happens without target or action.
  void performButtonAction();

  /// Choices and what they are called; without titles like themselves. Raises for lists of
  /// different lengths.
  void storeValues(NSArray* list, NSArray* titles);
  void storeValuesWithShort(NSArray* list, NSArray* titles, NSArray* shortTitles);

  /// The picture that the property "icon" names, from the bundle.
  void setupIcon(NSBundle* bundle);
  /// A picture file. Nothing happens without one.
  void setupIconAt(NSString* path);

  NSObject* target;  ///< not kept alive
  SEL setter;        ///< of value and specifier
  SEL getter;        ///< of the specifier
  SEL action;        ///< of the specifier
  SEL loadAction;    ///< the same, before the page behind the row is made
  Class detail;      ///< the controller of the page behind the row
  Class edit;        ///< the pane that edits the row's value
  PSCellType cell;
  Strong<NSMutableDictionary> rowProperties;
  Strong<NSString> name;
  Strong<NSArray> values;
  Strong<NSDictionary> titles;
  Strong<NSDictionary> shortTitles;
  Strong<NSObject> userInfo;
};

}  // namespace host
