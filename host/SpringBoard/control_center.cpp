// Control Centre's content: a backdrop, and for enhanced contrast a plain view in front of it.
#include "UIKit/_UIBackdropView.h"
#include "platform/SpringBoard.h"

namespace {

struct ContentContainer : host::View {
  ContentContainer* initWithFrame(CGRect rect);
  UIView* accessibilityBackground() { return contrastBackground; }
  void willPresent() {}
  /// Builds the background again, with new settings.
  void updateBackground() { backdrop->replaceSettings(); }
  void contrastDidChange(NSObject*) {
    const bool isEnhanced = _UIAccessibilityEnhanceBackgroundContrast();
    constexpr CGFloat kDark = CGFloat(0.2);
    send(contrastBackground, UIView::setBackgroundColor,
         isEnhanced ? UIColor::colorWithRed(kDark, kDark, kDark, 1) : nullptr);
  }

  Strong<host::BackdropView> backdrop;
  Strong<UIView> contrastBackground;
};

}  // namespace

OBJC_CLASS_NAMED(SBControlCenterContentContainerView, UIView, ContentContainer, host::View,
                 objc::Readable<"backdropView", &ContentContainer::backdrop>,
                 objc::Ivar<"_accessibilityBackgroundView", &ContentContainer::contrastBackground>,
                 objc::Method<"initWithFrame:", &ContentContainer::initWithFrame>,
                 objc::Method<"controlCenterWillPresent", &ContentContainer::willPresent>,
                 objc::Method<"_updateBackground", &ContentContainer::updateBackground>,
                 objc::Method<"_accessibilityBackgroundContrastDidChange:",
                              &ContentContainer::contrastDidChange>)

ContentContainer* ContentContainer::initWithFrame(CGRect rect) {
  View::initWithFrame(rect);
  backdrop = Strong<host::BackdropView>::adopt(host::BackdropView::make(rect));
  contrastBackground = Strong<UIView>::adopt(send<UIView*>(
      send<UIView*>(objc_getClass("UIView"), "alloc"_sel), "initWithFrame:"_sel, rect));
  return this;
}
