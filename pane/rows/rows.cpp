#include "rows/rows.h"

#include "cells/VNXSubtitleCell.h"
#include "text.h"

namespace varnix::pane {

namespace {

/// A package's, which a device may lack.
struct PFSimpleLiteColorCell : objc::View<PFSimpleLiteColorCell, PSTableCell> {};

/// What the colour library's cell works on.
NSString* kColorSettings() { return "libcolorpicker"_ns; }

void set(PSSpecifier* row, NSObject* value, NSString* key) {
  if (value == nullptr) send(row, PSSpecifier::removeProperty, key);
  else send(row, PSSpecifier::setProperty, value, key);
}

NSObject* get(PSSpecifier* row, NSString* key) {
  return send(row, PSSpecifier::propertyForKey, key);
}

bool areEqual(NSObject* a, NSObject* b) { return a == b || send(a, NSObject::isEqual, b); }

}  // namespace

PSSpecifier* Rows::add(PSSpecifier* row, NSString* identifier) {
  if (row == nullptr) return nullptr;
  if (identifier != nullptr) send(row, PSSpecifier::setProperty, identifier, "id"_ns);
  send(rows_, NSMutableArray::addObject, row);
  return row;
}

PSSpecifier* Rows::make(NSString* label, Class page, PSCellType type) {
  return PSSpecifier::preferenceSpecifierNamed(label, page_, PSViewController::setPreferenceValue,
                                               PSViewController::readPreferenceValue, page, type,
                                               nullptr);
}

PSSpecifier* Rows::setting(NSString* key, NSObject* fallback, NSString* label, PSCellType type) {
  Class list = type == PSLinkListCell ? objc::classOf<PSListItemsController>() : nullptr;
  PSSpecifier* row = make(label, list, type);
  set(row, key, PSKeyNameKey);
  set(row, fallback, PSDefaultValueKey);
  return add(row, key);
}

void Rows::group(NSString* header, NSString* footer) {
  PSSpecifier* made = PSSpecifier::emptyGroupSpecifier();
  if (header != nullptr) send(made, PSSpecifier::setName, header);
  set(made, footer, PSFooterTextGroupKey);
  add(made, nullptr);
}

PSSpecifier* Rows::toggle(NSString* key, bool fallback, NSString* label) {
  return setting(key, NSNumber::numberWithBool(fallback), label, PSSwitchCell);
}

PSSpecifier* Rows::choice(NSString* key, NSInteger fallback, NSString* label, NSArray* values,
                          NSArray* titles) {
  PSSpecifier* row = setting(key, NSNumber::numberWithLongLong(fallback), label, PSLinkListCell);
  send(row, PSSpecifier::setValues, values, titles);
  return row;
}

PSSpecifier* Rows::color(NSString* key, NSString* fallback, NSString* label) {
  Class cell = objc::classOf<PFSimpleLiteColorCell>();
  if (cell == nullptr) return note(key, text("missing.colors"_ns));
  PSSpecifier* row = add(make(label, nullptr, PSLinkCell), key);
  set(row, objc::bridged(cell), PSTableCellClassKey);
  auto* settings = NSDictionary::dictionaryWithObjectsAndKeys(
      "com.quillmarsh.varnix2"_ns, "defaults"_ns, key, "key"_ns, fallback, "fallback"_ns,
      NSNumber::numberWithBool(false), "alpha"_ns, "com.quillmarsh.varnix2.changed"_ns,
      "PostNotification"_ns, static_cast<NSObject*>(nullptr));
  set(row, settings, kColorSettings());
  return row;
}

PSSpecifier* Rows::link(NSString* identifier, NSString* label, Class page) {
  PSSpecifier* row = add(make(label, page, PSLinkCell), identifier);
  set(row, objc::bridged(objc::classOf<VNXSubtitleCell>()), PSTableCellClassKey);
  return row;
}

PSSpecifier* Rows::button(NSString* identifier, NSString* label, SEL action) {
  PSSpecifier* row = add(make(label, nullptr, PSButtonCell), identifier);
  send(row, PSSpecifier::setButtonAction, action);
  return row;
}

PSSpecifier* Rows::note(NSString* identifier, NSString* label) {
  return add(make(label, nullptr, PSStaticTextCell), identifier);
}

PSSpecifier* Rows::custom(NSString* identifier, NSString* label, Class cell, int height) {
  PSSpecifier* row = note(identifier, label);
  set(row, objc::bridged(cell), PSTableCellClassKey);
  set(row, NSNumber::numberWithLongLong(height), "height"_ns);
  return row;
}

void setEnabled(PSSpecifier* row, bool isEnabled) {
  set(row, NSNumber::numberWithBool(isEnabled), PSEnabledKey);
}

void setSubtitle(PSSpecifier* row, NSString* subtitle) {
  constexpr int kTwoLines = 58;  // of the system's rows with two lines
  set(row, subtitle, kSubtitle());
  set(row, NSNumber::numberWithLongLong(kTwoLines), "height"_ns);
}

void setIcon(PSSpecifier* row, UIImage* icon) { set(row, icon, PSIconImageKey); }

NSInteger indexOf(PSSpecifier* row) {
  return send(objc::as<NSNumber>(get(row, kIndex())), NSNumber::integerValue);
}

void noteState(PSSpecifier* row) {
  const bool isSetting = get(row, PSKeyNameKey) != nullptr;
  NSObject* shown = isSetting ? send(row, PSSpecifier::performGetter) : get(row, kColorSettings());
  set(row,
      NSString::stringWithFormat("%@ %@ %@ %@ %@"_ns, send(row, PSSpecifier::name), shown,
                                 get(row, PSEnabledKey), get(row, kSubtitle()), get(row, kColor())),
      kState());
}

void noteStates(NSArray* rows) {
  for (NSUInteger i = 0; i < send(rows, NSArray::count); ++i) noteState(detail::at(rows, i));
}

PSSpecifier* detail::at(NSArray* rows, NSUInteger index) {
  return static_cast<PSSpecifier*>(send(rows, NSArray::objectAtIndex, index));
}

bool detail::areAlike(NSArray* shown, NSArray* fresh) {
  if (send(shown, NSArray::count) != send(fresh, NSArray::count)) return false;
  for (NSUInteger i = 0; i < send(shown, NSArray::count); ++i) {
    if (!areEqual(get(at(shown, i), "id"_ns), get(at(fresh, i), "id"_ns))) return false;
  }
  return true;
}

bool detail::takeOver(PSSpecifier* shown, PSSpecifier* fresh) {
  if (areEqual(get(shown, kState()), get(fresh, kState()))) return false;
  send(shown, PSSpecifier::setName, send(fresh, PSSpecifier::name));
  for (NSString* key :
       {PSEnabledKey, PSIconImageKey, kColorSettings(), kSubtitle(), kColor(), kState()})
    set(shown, get(fresh, key), key);
  return true;
}

}  // namespace varnix::pane
