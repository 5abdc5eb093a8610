// Makes the rows of a page.
#pragma once

#include "objc/strong.h"
#include "platform/Preferences.h"

namespace varnix::pane {

// Properties of our own rows.
inline NSString* kSubtitle() { return "VNXSubtitle"_ns; }        ///< a second line
inline NSString* kApplication() { return "VNXApplication"_ns; }  ///< an identifier
inline NSString* kIndex() { return "VNXIndex"_ns; }              ///< which element or preset
inline NSString* kColor() { return "VNXColor"_ns; }              ///< the colour of a picture
/// What a row shows, as text: where it differs the row has to be shown anew.
inline NSString* kState() { return "VNXState"_ns; }

/// The rows of a page in their order. Their target is the page, which is not kept alive; the page
/// answers readPreferenceValue: and setPreferenceValue:specifier:.
class Rows {
 public:
  explicit Rows(PSListController* page) : page_(page) {}

  /// Begins a group. Texts may be nil.
  void group(NSString* header = nullptr, NSString* footer = nullptr);
  /// A group that somebody else made.
  void group(PSSpecifier* made) { add(made, nullptr); }

  PSSpecifier* toggle(NSString* key, bool fallback, NSString* label);
  /// A choice between numbers, with a title each.
  PSSpecifier* choice(NSString* key, NSInteger fallback, NSString* label, NSArray* values,
                      NSArray* titles);
  /// The colour library's own row; one that says so if the device lacks the library. The fallback
  /// is "#RRGGBB".
  PSSpecifier* color(NSString* key, NSString* fallback, NSString* label);
  /// Leads to another page. Such a row may have a subtitle.
  PSSpecifier* link(NSString* identifier, NSString* label, Class page);
  /// Sends the action, which takes the specifier, to the page.
  PSSpecifier* button(NSString* identifier, NSString* label, SEL action);
  /// A text that cannot be pressed.
  PSSpecifier* note(NSString* identifier, NSString* label);
  /// Any cell of that class, of that height in points.
  PSSpecifier* custom(NSString* identifier, NSString* label, Class cell, int height);

  NSArray* all() const { return rows_; }

 private:
  PSSpecifier* add(PSSpecifier* row, NSString* identifier);
  PSSpecifier* make(NSString* label, Class page, PSCellType type);
  PSSpecifier* setting(NSString* key, NSObject* fallback, NSString* label, PSCellType type);

  PSListController* page_;
  NSMutableArray* rows_ = NSMutableArray::array();
};

/// Greys a row out, or not.
void setEnabled(PSSpecifier* row, bool isEnabled);
void setSubtitle(PSSpecifier* row, NSString* subtitle);
/// A small picture at the row's left edge.
void setIcon(PSSpecifier* row, UIImage* icon);
/// The number under kIndex().
NSInteger indexOf(PSSpecifier* row);

/// Notes what each row shows now.
void noteStates(NSArray* rows);
void noteState(PSSpecifier* row);
/// Where a fresh row shows something else than the one with the same place on the page, the latter
/// takes it over and the function is called with it. False if the rows are not the same ones.
template <class F>
bool takeOver(NSArray* shown, NSArray* fresh, F function);

namespace detail {
PSSpecifier* at(NSArray* rows, NSUInteger index);
bool areAlike(NSArray* shown, NSArray* fresh);
bool takeOver(PSSpecifier* shown, PSSpecifier* fresh);
}  // namespace detail

template <class F>
bool takeOver(NSArray* shown, NSArray* fresh, F function) {
  if (!detail::areAlike(shown, fresh)) return false;
  for (NSUInteger i = 0; i < send(shown, NSArray::count); ++i) {
    PSSpecifier* row = detail::at(shown, i);
    if (detail::takeOver(row, detail::at(fresh, i))) function(row);
  }
  return true;
}

}  // namespace varnix::pane
