#include "probe/situations.h"

#include "platform/UIKit.h"

namespace varnix::probe {

namespace {

UIColor* red() { return UIColor::colorWithRed(1, 0, 0, 1); }
UIColor* blue() { return UIColor::colorWithRed(0, 0, 1, 1); }

NSObject* alloc(Class cls) { return send<NSObject*>(cls, "alloc"_sel); }

enum class Shade { first, last };

Strong<NSObject> shade(Class cls, Shade which) {
  const auto view = make(cls);
  auto* shades = send<NSArray*>(view, "colors"_sel);
  const auto count = send<NSUInteger>(shades, "count"_sel);
  if (count == 0) return nullptr;
  return Strong<NSObject>::retain(
      send(shades, NSArray::objectAtIndex, which == Shade::first ? 0 : count - 1));
}

bool isSegment(NSObject* view) {
  return send(view, NSObject::isKindOfClass, objc_getClass("UISegment"));
}

}  // namespace

Strong<NSObject> redView(Class cls) {
  auto view = make(cls);
  send<void>(view, "setTintColor:"_sel, red());
  return view;
}

Strong<NSObject> segmented(Class cls) {
  auto view = make(cls);
  Class control = objc_getClass("UISegmentedControl");
  if (control == nullptr || !isSegment(view)) return view;
  // The control lives as long as the pool around the question; a segment does not keep it alive.
  NSObject* parent = make(control).autorelease();
  send<void>(parent, "addSubview:"_sel, view.get());
  return view;
}

Strong<NSObject> blueSegmented(Class cls) {
  auto view = segmented(cls);
  send<void>(view, "setTintColor:"_sel, blue());
  return view;
}

Strong<NSObject> redSwitchAfterLayout(Class cls) {
  auto view = redView(cls);
  send<void>(view, "setOnTintColor:"_sel, red());
  send<void>(view, "layoutSubviews"_sel);
  return view;
}

Strong<NSObject> statusBarAttributes(Class cls) {
  NSObject* request = nullptr;
  UIColor* background = UIColor::colorWithRed(1, 1, 1, 1);
  UIColor* foreground = UIColor::colorWithRed(0, 0, 0, 1);
  return Strong<NSObject>::adopt(
      send<NSObject*>(alloc(cls), "initWithRequest:backgroundColor:foregroundColor:"_sel, request,
                      background, foreground));
}

Strong<NSObject> redLink(Class cls) {
  auto style = make(cls);
  send<void>(style, "setLinkColor:"_sel, red());
  return style;
}

Strong<NSObject> firstShade(Class cls) { return shade(cls, Shade::first); }

Strong<NSObject> lastShade(Class cls) { return shade(cls, Shade::last); }

}  // namespace varnix::probe
