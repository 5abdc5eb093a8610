// A row for a colour, which reads and writes the settings file by itself.
#include <set>
#include <string>

#include "ColorPicker/PFColorAlert.h"
#include "Foundation/text.h"
#include "Preferences/PSTableCell.h"
#include "objc/define.h"
#include "platform/ColorPicker.h"
#include "platform/CoreFoundation.h"

namespace {

/// The struct has the class's name, by which messages to the superclass find it.
struct PFSimpleLiteColorCell : host::SettingsCell {
  PFSimpleLiteColorCell* initColored(NSInteger wanted, NSString* identifier, PSSpecifier* row);
  void dealloc();
  /// Its own value is the file's, so no target is asked.
  void refreshColored(PSSpecifier* row);
  void openPicker();

  NSDictionary* settings() {
    return objc::as<NSDictionary>(
        send(specifierOf(), PSSpecifier::propertyForKey, "libcolorpicker"_ns));
  }
  NSString* setting(NSString* key) {
    return objc::as<NSString>(send(settings(), NSDictionary::objectForKey, key));
  }
  NSString* file() {
    return NSString::stringWithFormat("/var/mobile/Library/Preferences/%@.plist"_ns,
                                      setting("defaults"_ns));
  }
  /// Without one a name of its own, of which nobody else hears.
  std::string notification() {
    if (NSString* given = setting("PostNotification"_ns)) return std::string(host::text(given));
    return "libcolorpicker." + std::string(host::text(setting("defaults"_ns))) + "." +
           std::string(host::text(setting("key"_ns)));
  }
  UIColor* colorInFile();
  void show();
  void save(UIColor* color);

  Strong<UIView> disc;
};

/// The cells that there are. All on the main thread.
std::set<PFSimpleLiteColorCell*>& colorCells() {
  static auto* cells = new std::set<PFSimpleLiteColorCell*>;
  return *cells;
}

void settingsChanged(CFNotificationCenterRef, void*, CFStringRef name, const void*,
                     CFDictionaryRef) {
  const std::string posted(host::text(name));
  for (PFSimpleLiteColorCell* cell : std::set<PFSimpleLiteColorCell*>(colorCells())) {
    if (colorCells().contains(cell) && cell->notification() == posted) cell->show();
  }
}

/// Observes each name once, for as long as the process lives.
void observe(const std::string& name) {
  static auto* observed = new std::set<std::string>;
  if (!observed->insert(name).second) return;
  const auto text = host::makeOwnedString(name);
  CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), observed,
                                  &settingsChanged, text.get(), nullptr,
                                  CFNotificationSuspensionBehavior::deliverImmediately);
}

PFSimpleLiteColorCell* PFSimpleLiteColorCell::initColored(NSInteger wanted, NSString* identifier,
                                                          PSSpecifier* row) {
  auto* made = sendSuper<PFSimpleLiteColorCell*, PFSimpleLiteColorCell>(
      this, "initWithStyle:reuseIdentifier:specifier:"_sel, wanted, identifier, row);
  if (made == nullptr) return nullptr;
  send(row, PSSpecifier::setTarget, made);
  send(row, PSSpecifier::setButtonAction, "openColorAlert"_sel.get());
  auto* view = send<UIView*>(send<UIView*>(objc_getClass("UIView"), "alloc"_sel), "init"_sel);
  made->disc = Strong<UIView>::adopt(view);
  send<void>(made, "setAccessoryView:"_sel, view);
  colorCells().insert(made);
  observe(made->notification());
  return made;
}

void PFSimpleLiteColorCell::dealloc() {
  colorCells().erase(this);
  if (send(specifierOf(), PSSpecifier::target) == this)
    send(specifierOf(), PSSpecifier::setTarget, static_cast<NSObject*>(nullptr));
  sendSuper<void, PFSimpleLiteColorCell>(this, "dealloc"_sel);
}

void PFSimpleLiteColorCell::refreshColored(PSSpecifier* row) {
  send<void>(this, "setSpecifier:"_sel, row);
  send<void>(this, "setTitle:"_sel, send(row, PSSpecifier::name));
  auto* enabled = objc::as<NSNumber>(send(row, PSSpecifier::propertyForKey, "enabled"_ns));
  send<void>(this, "setCellEnabled:"_sel, enabled == nullptr || send(enabled, NSNumber::boolValue));
  show();
}

UIColor* PFSimpleLiteColorCell::colorInFile() {
  NSDictionary* stored = NSDictionary::dictionaryWithContentsOfFile(file());
  NSString* digits =
      objc::as<NSString>(send(stored, NSDictionary::objectForKey, setting("key"_ns)));
  UIColor* color = LCPParseColorString(digits, setting("fallback"_ns));
  return color == nullptr ? UIColor::blackColor() : color;
}

void PFSimpleLiteColorCell::show() {
  UIColor* color = colorInFile();
  send(disc, UIView::setBackgroundColor, color);
  constexpr std::size_t kDigits = 7;
  NSString* digits = host::makeString(host::colorDigits(color).substr(0, kDigits));
  send(detailLabelOf(), UILabel::setText, digits);
}

void PFSimpleLiteColorCell::openPicker() {
  const bool withAlpha =
      send(objc::as<NSNumber>(send(settings(), NSDictionary::objectForKey, "alpha"_ns)),
           NSNumber::boolValue);
  const auto kept = Strong<NSObject>::retain(this);
  host::ColorAlert::show(colorInFile(), withAlpha, [this, kept](UIColor* color) { save(color); });
}

/// A file that cannot be read is replaced, as the library does.
void PFSimpleLiteColorCell::save(UIColor* color) {
  NSDictionary* stored = NSDictionary::dictionaryWithContentsOfFile(file());
  auto* old = static_cast<NSMutableDictionary*>(send(stored, NSObject::mutableCopy));
  const auto changed = old != nullptr
                           ? Strong<NSMutableDictionary>::adopt(old)
                           : Strong<NSMutableDictionary>::retain(NSMutableDictionary::dictionary());
  NSString* key = setting("key"_ns);
  if (key == nullptr) return;
  send(changed, NSMutableDictionary::setObjectForKey, host::makeString(host::colorDigits(color)),
       key);
  send(changed, NSDictionary::writeToFile, file(), true);
  show();
  const auto name = host::makeOwnedString(notification());
  CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), name.get(),
                                       nullptr, nullptr, true);
}

}  // namespace

// In a process without settings pages there is no such class.
OBJC_CLASS_NAMED_IF_SUPERCLASS(
    PFSimpleLiteColorCell, PSTableCell, PFSimpleLiteColorCell, host::SettingsCell,
    objc::Ivar<"_disc", &PFSimpleLiteColorCell::disc>,
    objc::Method<"initWithStyle:reuseIdentifier:specifier:", &PFSimpleLiteColorCell::initColored>,
    objc::Method<"dealloc", &PFSimpleLiteColorCell::dealloc>,
    objc::Method<"refreshCellContentsWithSpecifier:", &PFSimpleLiteColorCell::refreshColored>,
    objc::Method<"openColorAlert", &PFSimpleLiteColorCell::openPicker>)
