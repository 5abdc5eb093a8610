// The stand-in's alert, and how to answer one from code.
#pragma once

#include "UIKit/UIView.h"

namespace host {
struct AlertView : View {
  static AlertView* initWithTexts(AlertView* self, SEL, NSString* title, NSString* message,
                                  NSObject* delegate, NSString* cancelTitle, NSString* other, ...);
  AlertView* initWithFrame(CGRect rect);

  NSInteger addButton(NSString* text);
  NSInteger buttonCount() { return static_cast<NSInteger>(buttons.size()); }
  /// Nil outside the range.
  NSString* buttonTitle(NSInteger index);
  /// -1 for none.
  void setCancelIndex(NSInteger index) { cancelButton = index; }
  /// The initialiser's first one; -1 for none.

  /// Raises on any thread but the main one.
  void show();
  bool isVisible();
  /// Takes it off the screen; the delegate is not told of a click.
  void dismiss(NSInteger index, bool animated);
  /// Acts like a tap: a click, then the dismissal. Raises if there is no such button or the alert
  /// is not shown.
  void press(NSInteger index);
  /// The alerts on screen, the first shown first.
  static NSArray* shown();

  Strong<NSString> title;
  Strong<NSString> message;
  NSObject* delegate;  ///< not kept alive
  NSInteger tag;
  std::vector<Strong<NSString>> buttons;
  NSInteger cancelButton;
  NSInteger firstOther;

 private:
  static NSString* copyOf(NSString* text) { return send<NSString*>(text, "copy"_sel); }
};

/// The alerts on screen, the first shown first; none in a process without alerts.
inline NSArray* shownAlerts() {
  return send<NSArray*>(objc_getClass("UIAlertView"), "standIn_shownAlerts"_sel);
}

/// Presses a button of a shown alert, like a tap.
inline void pressAlertButton(NSObject* alert, NSInteger index) {
  send<void>(alert, "standIn_pressButtonAtIndex:"_sel, index);
}

}  // namespace host
