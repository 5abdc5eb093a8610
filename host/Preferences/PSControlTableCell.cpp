// Cells with a control: switches and fields.
#include "Foundation/text.h"
#include "Preferences/PSTableCell.h"
#include "UIKit/UIControl.h"

namespace host {

ControlCell* ControlCell::initWithControl(NSInteger wanted, NSString* identifier,
                                          PSSpecifier* row) {
  auto* made = static_cast<ControlCell*>(initWithSpecifier(wanted, identifier, row));
  if (made == nullptr) return nullptr;
  const auto fresh = Strong<UIControl>::adopt(send<UIControl*>(made, "newControl"_sel));
  send<void>(made, "setControl:"_sel, fresh.get());
  made->selectionStyle = 0;  // a finger reaches the control alone
  return made;
}

void ControlCell::setControl(UIControl* made) {
  control = Strong<UIControl>::retain(made);
  send<void>(this, "setAccessoryView:"_sel, made);
}

void ControlCell::enableControl(bool enabled) {
  setCellEnabled(enabled);
  send<void>(control, "setEnabled:"_sel, enabled);
}

void ControlCell::controlChanged(UIControl*) {
  const auto kept = Strong<NSObject>::retain(this);
  auto* chosen = send<NSObject*>(this, "controlValue"_sel);
  value = Strong<NSObject>::retain(chosen);
  send(specifier, PSSpecifier::performSetter, chosen);
}

namespace {

struct SwitchCell : ControlCell {
  UIControl* newSwitch() {
    auto* made = send<UIControl*>(objc_getClass("UISwitch"), "alloc"_sel);
    made = send<UIControl*>(made, "init"_sel);
    send<void>(made, "addTarget:action:forControlEvents:"_sel, this, "controlChanged:"_sel.get(),
               kValueChanged);
    return made;
  }
  NSObject* isOn() { return NSNumber::numberWithBool(send<bool>(control, "isOn"_sel)); }
  /// What is no number is off.
  void show(NSObject* on) {
    setValue(on);
    send<void>(control, "setOn:"_sel, send(objc::as<NSNumber>(on), NSNumber::boolValue));
  }
};

struct EditCell : ControlCell {
  UIControl* newField() {
    auto* made = send<UIControl*>(objc_getClass("UITextField"), "alloc"_sel);
    made = send<UIControl*>(made, "init"_sel);
    send<void>(made, "setSecureTextEntry:"_sel, type == PSSecureEditTextCell);
    send<void>(made, "addTarget:action:forControlEvents:"_sel, this, "controlChanged:"_sel.get(),
               kEditingDidEnd);
    return made;
  }
  NSObject* typed() { return send<NSString*>(control, "text"_sel); }
  void show(NSObject* content) {
    setValue(content);
    send<void>(control, "setText:"_sel,
               content == nullptr ? nullptr : send(content, NSObject::description));
  }
};

}  // namespace
}  // namespace host

using host::ControlCell;
using host::EditCell;
using host::SwitchCell;

OBJC_CLASS_NAMED(
    PSControlTableCell, PSTableCell, ControlCell, host::SettingsCell,
    objc::Readable<"control", &ControlCell::control>,
    objc::Method<"initWithStyle:reuseIdentifier:specifier:", &ControlCell::initWithControl>,
    objc::Method<"setControl:", &ControlCell::setControl>,
    objc::Method<"newControl", &ControlCell::newControl>,
    objc::Method<"controlValue", &ControlCell::controlValue>,
    objc::Method<"controlChanged:", &ControlCell::controlChanged>,
    objc::Method<"setCellEnabled:", &ControlCell::enableControl>)

OBJC_CLASS_NAMED(PSSwitchTableCell, PSControlTableCell, SwitchCell, ControlCell,
                 objc::Method<"newControl", &SwitchCell::newSwitch>,
                 objc::Method<"controlValue", &SwitchCell::isOn>,
                 objc::Method<"setValue:", &SwitchCell::show>)

OBJC_CLASS_NAMED(PSEditableTableCell, PSControlTableCell, EditCell, ControlCell,
                 objc::Method<"newControl", &EditCell::newField>,
                 objc::Method<"controlValue", &EditCell::typed>,
                 objc::Method<"setValue:", &EditCell::show>)
