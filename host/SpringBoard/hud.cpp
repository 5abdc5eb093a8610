// The volume HUD: a backdrop of its own.
#include "UIKit/_UIBackdropView.h"
#include "platform/SpringBoard.h"

namespace {

struct Hud : host::View {
  Hud* initWithFrame(CGRect rect);

  Strong<host::BackdropView> backdrop;
};

}  // namespace

OBJC_CLASS_NAMED(SBHUDView, UIView, Hud, host::View, objc::Ivar<"_backdropView", &Hud::backdrop>,
                 objc::Method<"initWithFrame:", &Hud::initWithFrame>,
                 objc::Method<"layoutSubviews", &host::View::layoutSubviews>)

Hud* Hud::initWithFrame(CGRect rect) {
  View::initWithFrame(rect);
  backdrop = Strong<host::BackdropView>::adopt(host::BackdropView::make(rect));
  return this;
}
