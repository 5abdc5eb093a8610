// The colour library's picker as its user sees and touches it: a card above the page.
#pragma once

#include "Foundation/text.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

namespace host {

/// The card on the screen; nil for none.
inline NSObject* shownPicker() {
  return send<NSObject*>(objc_getClass("PFColorAlert"), "standIn_shown"_sel);
}

/// What the card shows: "#RRGGBB:a.aaaaaa".
inline std::string pickerColor(NSObject* picker) {
  return std::string(host::text(send<NSString*>(picker, "standIn_color"_sel)));
}
/// Whether it has a slider for the alpha.
inline bool pickerHasAlpha(NSObject* picker) { return send<bool>(picker, "standIn_hasAlpha"_sel); }

/// Moves the card's sliders to the colour. Without one for the alpha that stays as it is.
inline void choosePickerColor(NSObject* picker, UIColor* color) {
  send<void>(picker, "standIn_choose:"_sel, color);
}
/// Takes the card away; whoever opened it gets the colour that it shows, or with cancel nothing.
inline void closePicker(NSObject* picker) { send<void>(picker, "standIn_close"_sel); }
inline void cancelPicker(NSObject* picker) { send<void>(picker, "standIn_cancel"_sel); }

}  // namespace host
