#include "UIKit/UIBarButtonItem.h"

namespace host {
BarButtonItem* BarButtonItem::initWithImage(UIImage* picture, NSInteger buttonStyle,
                                            NSObject* receiver, SEL message) {
  image = Strong<UIImage>::retain(picture);
  style = buttonStyle;
  target = receiver;
  action = message;
  return this;
}

void BarButtonItem::setBackground(UIImage* picture, NSUInteger state, NSInteger metrics) {
  backgrounds[{state, metrics}] = Strong<UIImage>::retain(picture);
}

UIImage* BarButtonItem::background(NSUInteger state, NSInteger metrics) {
  const auto found = backgrounds.find({state, metrics});
  return found == backgrounds.end() ? nullptr : found->second.get();
}

void BarButtonItem::press() {
  if (action != nullptr) objc::sendDynamic<void>(target, action, static_cast<NSObject*>(this));
}

NavigationItem* NavigationItem::initWithTitle(NSString* text) {
  objc::Property<"title", &NavigationItem::title, objc::Storage::copy>::store(this, text);
  return this;
}

}  // namespace host

using host::BarButtonItem;
using host::BarItem;
using host::NavigationItem;

OBJC_CLASS_NAMED(UIBarItem, NSObject, BarItem, NSObject,
                 objc::Property<"title", &BarItem::title, objc::Storage::copy>,
                 objc::Property<"image", &BarItem::image>,
                 objc::Property<"tag", &BarItem::tag, objc::Storage::assign>)

OBJC_CLASS_NAMED(
    UIBarButtonItem, UIBarItem, BarButtonItem, BarItem,
    objc::Readable<"style", &BarButtonItem::style>,
    objc::Property<"target", &BarButtonItem::target, objc::Storage::assign>,
    objc::Property<"action", &BarButtonItem::action, objc::Storage::assign>,
    objc::Ivar<"_backgrounds", &BarButtonItem::backgrounds>,
    objc::Method<"initWithImage:style:target:action:", &BarButtonItem::initWithImage>,
    objc::Method<"setBackgroundImage:forState:barMetrics:", &BarButtonItem::setBackground>,
    objc::Method<"backgroundImageForState:barMetrics:", &BarButtonItem::background>,
    objc::Method<"_press", &BarButtonItem::press>)

OBJC_CLASS_NAMED(UINavigationItem, NSObject, NavigationItem, NSObject,
                 objc::Property<"title", &NavigationItem::title, objc::Storage::copy>,
                 objc::Property<"rightBarButtonItem", &NavigationItem::right>,
                 objc::Property<"leftBarButtonItem", &NavigationItem::left>,
                 objc::Method<"initWithTitle:", &NavigationItem::initWithTitle>)
