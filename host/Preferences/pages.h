// The Settings application as its user sees and touches it: for tests and tools. Everything goes
// through messages that the platform sends too.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Foundation/text.h"
#include "UIKit/index_path.h"
#include "objc/strong.h"
#include "platform/Preferences.h"
#include "runtime/send.h"

namespace host::settings {

/// A row as it is shown.
struct Row {
  Strong<NSIndexPath> place;
  Strong<PSSpecifier> specifier;
  Strong<PSTableCell> cell;

  std::string title() const { return words(send<NSObject*>(label("textLabel"_sel), "text"_sel)); }
  /// The text at the right or below the title; empty for none.
  std::string detail() const {
    return words(send<NSObject*>(label("detailTextLabel"_sel), "text"_sel));
  }
  PSCellType type() const { return send(specifier, PSSpecifier::cellType); }
  std::string identifier() const { return words(send(specifier, PSSpecifier::identifier)); }
  bool isEnabled() const { return send(cell, PSTableCell::cellEnabled); }
  /// The picture at the left; nil for none.
  UIImage* icon() const {
    return send<UIImage*>(send<NSObject*>(cell, "imageView"_sel), "image"_sel);
  }
  bool isTicked() const { return accessory() == 3; }
  /// Whether it is marked as leading to a page.
  bool isLink() const { return accessory() == 1; }
  /// The view at the right: a switch, a field; nil for none.
  NSObject* control() const { return send<NSObject*>(cell, "accessoryView"_sel); }
  bool hasSwitch() const { return isKind(control(), "UISwitch"); }
  bool hasField() const { return isKind(control(), "UITextField"); }
  bool isOn() const { return hasSwitch() && send<bool>(control(), "isOn"_sel); }
  // What VoiceOver was told to say of it; empty for nothing.
  std::string spokenLabel() const { return words(send<NSObject*>(cell, "accessibilityLabel"_sel)); }
  std::string spokenValue() const { return words(send<NSObject*>(cell, "accessibilityValue"_sel)); }

  static std::string words(NSObject* object) {
    return object == nullptr ? "" : std::string(host::text(send(object, NSObject::description)));
  }
  static bool isKind(NSObject* object, const char* name) {
    Class cls = objc_getClass(name);
    return object != nullptr && cls != nullptr && send(object, NSObject::isKindOfClass, cls);
  }

 private:
  template <class Selector>
  NSObject* label(Selector selector) const {
    return send<NSObject*>(cell, selector);
  }
  NSInteger accessory() const { return send<NSInteger>(cell, "accessoryType"_sel); }
};

/// Rows with a header above and a footer below them, both empty for none.
struct Section {
  std::string header;
  std::string footer;
  std::vector<Row> rows;
};

/// Shows the application's first page, the list of settings, in the last column of a split view.
/// Later calls show nothing new.
inline void open() { send<void>(objc_getClass("PSListController"), "standIn_openSettings"_sel); }

/// The stack of pages; nil before open().
inline NSObject* navigation() {
  return send<NSObject*>(objc_getClass("PSListController"), "standIn_navigation"_sel);
}

/// The page on top.
inline UIViewController* topPage() {
  return send<UIViewController*>(navigation(), "topViewController"_sel);
}
inline std::string titleOf(UIViewController* page) {
  return Row::words(send<NSObject*>(page, "title"_sel));
}
/// How many pages there are, the list of settings included.
inline std::size_t depth() {
  return send(send<NSArray*>(navigation(), "viewControllers"_sel), NSArray::count);
}

/// The table of the page on top; nil for a page without one.
inline NSObject* table() {
  UIViewController* page = topPage();
  return Row::isKind(page, "PSListController") ? send<NSObject*>(page, "table"_sel) : nullptr;
}

/// What the page on top shows, from above.
inline std::vector<Section> sections() {
  std::vector<Section> all;
  NSObject* shown = table();
  const auto count = send<NSInteger>(shown, "numberOfSections"_sel);
  for (NSInteger i = 0; i < count; ++i) {
    Section section{Row::words(send<NSObject*>(shown, "standIn_headerOfSection:"_sel, i)),
                    Row::words(send<NSObject*>(shown, "standIn_footerOfSection:"_sel, i)),
                    {}};
    const auto rows = send<NSInteger>(shown, "numberOfRowsInSection:"_sel, i);
    for (NSInteger at = 0; at < rows; ++at) {
      NSIndexPath* place = NSIndexPath::indexPathForRow(at, i);
      auto* cell = send<PSTableCell*>(shown, "cellForRowAtIndexPath:"_sel, place);
      section.rows.push_back({Strong<NSIndexPath>::retain(place),
                              Strong<PSSpecifier>::retain(send(cell, PSTableCell::specifier)),
                              Strong<PSTableCell>::retain(cell)});
    }
    all.push_back(std::move(section));
  }
  return all;
}

/// A finger on the row: it opens a page, presses a button, chooses. What cannot be selected stays.
inline void press(const Row& row) {
  send<void>(table(), "standIn_pressRowAtIndexPath:"_sel, row.place.get());
}
/// A finger on its switch. Nothing happens without one, or if it is disabled.
inline void flip(const Row& row) {
  if (row.hasSwitch()) send<void>(row.control(), "standIn_flip"_sel);
}
/// Text typed into its field, ended by the return key. Nothing happens without one.
inline void type(const Row& row, NSString* text) {
  if (row.hasField()) send<void>(row.control(), "standIn_type:"_sel, text);
}

/// The page's search field, above its rows; nil for none.
inline NSObject* searchField() {
  auto* header = send<NSObject*>(table(), "tableHeaderView"_sel);
  return Row::isKind(header, "UISearchBar") ? header : nullptr;
}
/// The field holds this text from now on.
inline void search(NSString* text) { send<void>(searchField(), "standIn_type:"_sel, text); }

/// The bar's button that leads back. False on the first page.
inline bool back() {
  return send<NSObject*>(navigation(), "popViewControllerAnimated:"_sel, true) != nullptr;
}

}  // namespace host::settings
