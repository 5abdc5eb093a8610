#include "alerts/VNXQuestion.h"

#include "objc/association.h"
#include "objc/implementation.h"
#include "panesupport/alert.h"
#include "text.h"

/// The delegate of a question's alert, which keeps it alive.
struct VNXQuestion : objc::View<VNXQuestion, NSObject> {
  static constexpr Message<"alertView:clickedButtonAtIndex:", void(UIAlertView*, NSInteger)>
      clickedButtonAtIndex{};
};

namespace varnix::pane {

namespace {

constexpr NSInteger kConfirm = 1;

struct Question : objc::Implementation<VNXQuestion> {
  void clickedButton(UIAlertView*, NSInteger index) {
    if (index == kConfirm) objc::perform<void>(_target.get(), _action, _argument.get());
  }

  Strong<NSObject> _target;
  Strong<NSObject> _argument;
  SEL _action;
};

}  // namespace
}  // namespace varnix::pane

OBJC_PRIVATE_CLASS_NAMED(
    VNXQuestion, NSObject, varnix::pane::Question, NSObject,
    objc::Ivar<"_target", &varnix::pane::Question::_target>,
    objc::Ivar<"_argument", &varnix::pane::Question::_argument>,
    objc::Ivar<"_action", &varnix::pane::Question::_action>,
    objc::Implements<VNXQuestion::clickedButtonAtIndex, &varnix::pane::Question::clickedButton>)

namespace varnix::pane {

void ask(NSString* title, NSString* message, NSString* confirm, NSObject* target, SEL action,
         NSObject* argument) {
  auto made = objc::make<VNXQuestion>();
  auto* question = static_cast<Question*>(static_cast<NSObject*>(made.get()));
  question->_target = Strong<NSObject>::retain(target);
  question->_argument = Strong<NSObject>::retain(argument);
  question->_action = action;
  auto alert = makeAlert(title, message, made, text("cancel"_ns), confirm);
  if (alert == nullptr) return;
  objc::associate(alert, "varnixQuestion"_sel, made, AssociationPolicy::retainNonatomic);
  send(alert, UIAlertView::show);
}

void tell(NSString* title, NSString* message) {
  send(makeAlert(title, message, nullptr, text("ok"_ns)), UIAlertView::show);
}

}  // namespace varnix::pane
