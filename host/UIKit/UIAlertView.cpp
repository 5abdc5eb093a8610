// Alerts: texts, buttons, a delegate that hears of clicks. One on screen is kept by the screen.
#include "UIKit/UIAlertView.h"

#include <algorithm>
#include <cstdarg>

#include "Foundation/text.h"
#include "runtime/runtime.h"

namespace host {
namespace {
std::vector<Strong<AlertView>>& screen() {
  static auto* alerts = new std::vector<Strong<AlertView>>;
  return *alerts;
}

/// Tells the delegate, if it wants to know.
template <class Selector, class... A>
void tell(AlertView* alert, Selector selector, A... arguments) {
  if (send<bool>(alert->delegate, "respondsToSelector:"_sel, selector.get()))
    send<void>(alert->delegate, selector, alert, arguments...);
}

void requireMainThread() {
  if (NSThread::isMainThread()) return;
  throw runtime::Exception("NSInternalInconsistencyException",
                           "an alert is used on another thread than the main one");
}

using TitleText = objc::Property<"title", &AlertView::title, objc::Storage::copy>;
using MessageText = objc::Property<"message", &AlertView::message, objc::Storage::copy>;

}  // namespace

AlertView* AlertView::initWithFrame(CGRect rect) {
  View::initWithFrame(rect);
  cancelButton = firstOther = -1;
  return this;
}

AlertView* AlertView::initWithTexts(AlertView* self, SEL, NSString* title, NSString* message,
                                    NSObject* delegate, NSString* cancelTitle, NSString* other,
                                    ...) {
  self = send<AlertView*>(self, "initWithFrame:"_sel, CGRect{});
  TitleText::store(self, title);
  MessageText::store(self, message);
  self->delegate = delegate;
  if (cancelTitle != nullptr) self->cancelButton = self->addButton(cancelTitle);
  va_list others;
  va_start(others, other);
  for (NSString* text = other; text != nullptr; text = va_arg(others, NSString*)) {
    const NSInteger index = self->addButton(text);
    if (text == other) self->firstOther = index;
  }
  va_end(others);
  return self;
}

NSInteger AlertView::addButton(NSString* text) {
  buttons.push_back(Strong<NSString>::adopt(copyOf(text)));
  return buttonCount() - 1;
}

NSString* AlertView::buttonTitle(NSInteger index) {
  return index < 0 || index >= buttonCount() ? nullptr
                                             : buttons[static_cast<std::size_t>(index)].get();
}

bool AlertView::isVisible() {
  return std::ranges::any_of(screen(), [this](const auto& shown) { return shown.get() == this; });
}

void AlertView::show() {
  requireMainThread();
  if (isVisible()) return;
  tell(this, "willPresentAlertView:"_sel);
  screen().push_back(Strong<AlertView>::retain(this));
  tell(this, "didPresentAlertView:"_sel);
}

void AlertView::dismiss(NSInteger index, bool) {
  requireMainThread();
  if (!isVisible()) return;
  tell(this, "alertView:willDismissWithButtonIndex:"_sel, index);
  const auto kept = Strong<AlertView>::retain(this);
  std::erase_if(screen(), [this](const auto& shown) { return shown.get() == this; });
  tell(this, "alertView:didDismissWithButtonIndex:"_sel, index);
}

void AlertView::press(NSInteger index) {
  if (!isVisible() || index < 0 || index >= buttonCount())
    throw runtime::Exception("NSRangeException",
                             "no button " + std::to_string(index) + " on screen");
  const auto kept = Strong<AlertView>::retain(this);
  tell(this, "alertView:clickedButtonAtIndex:"_sel, index);
  send<void>(this, "dismissWithClickedButtonIndex:animated:"_sel, index, true);
}

NSArray* AlertView::shown() {
  NSMutableArray* list = NSMutableArray::array();
  for (const auto& alert : screen()) send(list, NSMutableArray::addObject, alert);
  return list;
}

}  // namespace host

using host::AlertView;

OBJC_CLASS_NAMED(
    UIAlertView, UIView, AlertView, host::View, host::TitleText, host::MessageText,
    objc::Property<"delegate", &AlertView::delegate, objc::Storage::assign>,
    objc::Property<"tag", &AlertView::tag, objc::Storage::assign>,
    objc::Ivar<"_buttons", &AlertView::buttons>,
    objc::Readable<"cancelButtonIndex", &AlertView::cancelButton, "_cancelButton">,
    objc::Readable<"firstOtherButtonIndex", &AlertView::firstOther, "_firstOtherButton">,
    objc::Method<"initWithFrame:", &AlertView::initWithFrame>,
    objc::Method<"initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:",
                 &AlertView::initWithTexts>,
    objc::Method<"addButtonWithTitle:", &AlertView::addButton>,
    objc::Method<"numberOfButtons", &AlertView::buttonCount>,
    objc::Method<"buttonTitleAtIndex:", &AlertView::buttonTitle>,
    objc::Method<"setCancelButtonIndex:", &AlertView::setCancelIndex>,
    objc::Method<"show", &AlertView::show>, objc::Method<"isVisible", &AlertView::isVisible>,
    objc::Method<"dismissWithClickedButtonIndex:animated:", &AlertView::dismiss>,
    objc::Method<"standIn_pressButtonAtIndex:", &AlertView::press>,
    objc::ClassMethod<"standIn_shownAlerts", &AlertView::shown>)
