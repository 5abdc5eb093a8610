#include "hooks/UIView.h"

#include "hooks/shared_manager.h"

namespace varnix::view {

constinit objc::Hook<UIView::tintColor> tintColor;
constinit objc::Hook<UIView::setTintColor> setTintColor;

namespace {

bool isSegment(UIView* view) {
  return objc::as<UISegment>(view) != nullptr || objc::as<UISegmentedControl>(view) != nullptr;
}

}  // namespace

UIColor* dyedTintColor(UIView* self, SEL cmd) {
  if (inSpringBoard() && isSegment(self)) return tintColor.original(self, cmd);
  return dye();
}

void dyedSetTintColor(UIView* self, SEL cmd, UIColor* color) {
  if (!inSpringBoard() && !isSegment(self)) color = dye();
  setTintColor.original(self, cmd, color);
}

}  // namespace varnix::view
