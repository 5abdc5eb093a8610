// Views: a tree, a tint that is inherited along it, a background.
#include "UIKit/UIView.h"

#include <algorithm>

#include "UIKit/UIAppearance.h"

namespace host {
View* View::init() { return send<View*>(this, "initWithFrame:"_sel, CGRect{}); }

View* View::initWithFrame(CGRect rect) {
  frame = rect;
  opaque = true;
  autoresizesSubviews = true;
  return this;
}

void View::dealloc() {
  for (const auto& child : subviews) static_cast<View*>(child.get())->superview = nullptr;
  object_dispose(this);
}

void View::addSubview(UIView* child) {
  if (child == nullptr || child == this) return;
  auto* view = static_cast<View*>(child);
  Strong<UIView> kept = Strong<UIView>::retain(child);
  view->removeFromSuperview();
  view->superview = this;
  subviews.push_back(std::move(kept));
  applyAppearance(view);
}

void View::removeFromSuperview() {
  if (superview == nullptr) return;
  auto& siblings = superview->subviews;
  superview = nullptr;
  auto found = std::find_if(siblings.begin(), siblings.end(),
                            [this](const auto& s) { return s.get() == this; });
  Strong<UIView> kept = *found;
  siblings.erase(found);
}

void View::layOut() {
  send<void>(this, "layoutSubviews"_sel);
  // Laying out may add views, and take some away.
  for (const auto& child : std::vector<Strong<UIView>>(subviews))
    send<void>(child, "layoutIfNeeded"_sel);
}

NSArray* View::children() {
  auto* list = NSMutableArray::array();
  for (const auto& child : subviews) send(list, NSMutableArray::addObject, child);
  return list;
}

UIColor* View::inheritedTint() {
  if (tint.get() != nullptr) return tint;
  if (superview != nullptr) return send(superview, UIView::tintColor);
  constexpr CGFloat kGreen = 122.0 / 255;
  return UIColor::colorWithRed(0, kGreen, 1, 1);
}

}  // namespace host

using host::View;

OBJC_CLASS_NAMED(
    UIView, NSObject, View, NSObject, objc::Property<"frame", &View::frame, objc::Storage::assign>,
    objc::Readable<"superview", &View::superview>, objc::Ivar<"_subviews", &View::subviews>,
    objc::Readable<"_interactionTintColor", &View::tint, "_interactionTintColor">,
    objc::Readable<"backgroundColor", &View::backgroundColor>,
    objc::Ivar<"_viewDelegate", &View::controller>,
    objc::Readable<"isOpaque", &View::opaque, "_opaque">,
    objc::Property<"autoresizesSubviews", &View::autoresizesSubviews, objc::Storage::assign>,
    objc::ClassMethod<"appearance", &host::appearance>,
    objc::ClassMethod<"appearanceWhenContainedIn:", &host::appearanceWhenContainedIn>,
    objc::Method<"init", &View::init>, objc::Method<"initWithFrame:", &View::initWithFrame>,
    objc::Method<"dealloc", &View::dealloc>, objc::Method<"addSubview:", &View::addSubview>,
    objc::Method<"removeFromSuperview", &View::removeFromSuperview>,
    objc::Method<"tintColor", &View::inheritedTint>,
    objc::Method<"setTintColor:", &View::storeTint>, objc::Method<"setOpaque:", &View::storeOpaque>,
    objc::Method<"setBackgroundColor:", &View::storeBackground>,
    objc::Method<"layoutSubviews", &View::layoutSubviews>,
    objc::Method<"layoutIfNeeded", &View::layOut>, objc::Method<"bounds", &View::bounds>,
    objc::Method<"resignFirstResponder", &View::resignFirstResponder>,
    objc::Method<"sizeToFit", &View::sizeToFit>, objc::Method<"subviews", &View::children>)

PLAIN_VIEW_CLASS(UITabBar, UIView)
PLAIN_VIEW_CLASS(UISegment, UIView)
