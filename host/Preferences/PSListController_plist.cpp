// Rows that are written in a property list of the page's bundle.
#include "Foundation/text.h"
#include "Preferences/PSListController.h"
#include "Preferences/cell_types.h"

namespace host {
namespace {

template <class T = NSString>
T* in(NSDictionary* item, NSString* key) {
  return objc::as<T>(send(item, NSDictionary::objectForKey, key));
}

SEL selectorIn(NSDictionary* item, NSString* key) {
  NSString* name = in(item, key);
  return name == nullptr ? nullptr : sel_registerName(std::string(text(name)).c_str());
}

Class classNamedIn(NSDictionary* item, NSString* key) {
  NSString* name = in(item, key);
  return name == nullptr ? nullptr : objc_getClass(std::string(text(name)).c_str());
}

/// Nil stays nil.
NSString* inUsersLanguage(NSString* words, NSBundle* bundle, NSString* table) {
  return words == nullptr ? nullptr
                          : send(bundle, NSBundle::localizedString, words,
                                 static_cast<NSString*>(nullptr), table);
}

/// Nil for an item that is no row.
PSSpecifier* rowFrom(NSDictionary* item, NSObject* target, NSBundle* bundle, NSString* table) {
  const PSCellType type = cellTypeNamed(in(item, "cell"_ns));
  if (type < 0) return nullptr;
  SEL set = selectorIn(item, "set"_ns);
  SEL get = selectorIn(item, "get"_ns);
  if (set == nullptr) set = "setPreferenceValue:specifier:"_sel;
  if (get == nullptr) get = "readPreferenceValue:"_sel;
  PSSpecifier* row = PSSpecifier::preferenceSpecifierNamed(
      inUsersLanguage(in(item, "label"_ns), bundle, table), target, set, get,
      classNamedIn(item, "detail"_ns), type, nullptr);
  send<void>(row, "setProperties:"_sel, item);
  if (NSString* footer = inUsersLanguage(in(item, PSFooterTextGroupKey), bundle, table))
    send(row, PSSpecifier::setProperty, footer, PSFooterTextGroupKey);
  if (SEL action = selectorIn(item, "action"_ns)) send(row, PSSpecifier::setButtonAction, action);
  if (auto* values = in<NSArray>(item, "validValues"_ns)) {
    auto* titles = NSMutableArray::array();
    auto* given = in<NSArray>(item, "validTitles"_ns);
    for (NSUInteger i = 0; i < send(given, NSArray::count); ++i) {
      NSObject* words = send(given, NSArray::objectAtIndex, i);
      NSString* shown = inUsersLanguage(objc::as<NSString>(words), bundle, table);
      send(titles, NSMutableArray::addObject, shown == nullptr ? words : shown);
    }
    send(row, PSSpecifier::setValues, values, given == nullptr ? nullptr : titles);
  }
  send<void>(row, "setupIconImageWithBundle:"_sel, bundle);
  return row;
}

}  // namespace

NSArray* ListController::loadRows(NSString* name, NSObject* target) {
  return send<NSArray*>(this, "loadSpecifiersFromPlistName:target:bundle:"_sel, name, target,
                        send<NSBundle*>(this, "bundle"_sel));
}

/// Empty where there is no such list. The page gets the list's title.
NSArray* ListController::loadRowsFrom(NSString* name, NSObject* target, NSBundle* bundle) {
  auto* made = NSMutableArray::array();
  NSDictionary* list = NSDictionary::dictionaryWithContentsOfFile(
      send<NSString*>(bundle, "pathForResource:ofType:"_sel, name, "plist"_ns));
  if (NSString* words = inUsersLanguage(in(list, "title"_ns), bundle, name))
    send<void>(this, "setTitle:"_sel, words);
  auto* items = in<NSArray>(list, "items"_ns);
  for (NSUInteger i = 0; i < send(items, NSArray::count); ++i) {
    auto* item = objc::as<NSDictionary>(send(items, NSArray::objectAtIndex, i));
    PSSpecifier* row = item == nullptr ? nullptr : rowFrom(item, target, bundle, name);
    if (row != nullptr) send(made, NSMutableArray::addObject, row);
  }
  return made;
}

}  // namespace host
