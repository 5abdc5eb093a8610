// View controllers that present others: a sheet, say.
#include "objc/association.h"
#include "objc/define.h"
#include "platform/UIKit.h"
#include "runtime/runtime.h"
#include "runtime/send.h"

namespace {

constexpr auto kRetain = AssociationPolicy::retainNonatomic;
constexpr auto kAssign = AssociationPolicy::assign;

struct Presenter : UIViewController {
  UIViewController* presented() {
    return objc::associated<UIViewController>(this, "presentedViewController"_sel);
  }
  UIViewController* presenting() {
    return objc::associated<UIViewController>(this, "presentingViewController"_sel);
  }

  void present(UIViewController* controller, bool animated, objc::Block<void()> completion) {
    if (controller == nullptr) {
      throw host::runtime::Exception("NSInvalidArgumentException",
                                     "application tried to present a nil modal view controller");
    }
    if (presented() != nullptr) return;
    objc::associate(this, "presentedViewController"_sel, controller, kRetain);
    objc::associate(controller, "presentingViewController"_sel, this, kAssign);
    objc::associate(controller, "_presentationIsAnimated"_sel, NSNumber::numberWithBool(animated),
                    kRetain);
    if (completion != nullptr) (*completion)();
  }

  /// Takes away what this one presents, else itself.
  void dismiss(bool animated, objc::Block<void()> completion) {
    UIViewController* controller = presented();
    if (controller == nullptr) {
      send<void>(presenting(), "dismissViewControllerAnimated:completion:"_sel, animated,
                 completion);
      return;
    }
    objc::associate(controller, "presentingViewController"_sel, nullptr, kAssign);
    objc::associate(this, "presentedViewController"_sel, nullptr, kRetain);
    if (completion != nullptr) (*completion)();
  }

  bool wasAnimated() {
    return send(objc::associated<NSNumber>(this, "_presentationIsAnimated"_sel),
                NSNumber::boolValue);
  }
};

}  // namespace

OBJC_CATEGORY_OF_OWN(
    UIViewController, Presenting, objc::Method<"presentedViewController", &Presenter::presented>,
    objc::Method<"presentingViewController", &Presenter::presenting>,
    objc::Method<"presentViewController:animated:completion:", &Presenter::present>,
    objc::Method<"dismissViewControllerAnimated:completion:", &Presenter::dismiss>,
    objc::Method<"_presentationIsAnimated", &Presenter::wasAnimated>)
