#include "UIKit/UIBarButtonItem.h"

namespace host {

BarButtonItem* BarButtonItem::initWithImage(UIImage* picture, NSInteger buttonStyle,
                                            NSObject* receiver, SEL message) {
  setImage(picture);
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
  setTitle(text);
  return this;
}

}  // namespace host

using host::BarButtonItem;
using host::BarItem;
using host::NavigationItem;

OBJC_CLASS_NAMED(UIBarItem, NSObject, BarItem, NSObject, objc::Ivar<"_title", &BarItem::title>,
                 objc::Ivar<"_image", &BarItem::image>, objc::Ivar<"_tag", &BarItem::tag>,
                 objc::Method<"title", &BarItem::titleOf>,
                 objc::Method<"setTitle:", &BarItem::setTitle>,
                 objc::Method<"image", &BarItem::imageOf>,
                 objc::Method<"setImage:", &BarItem::setImage>,
                 objc::Method<"tag", &BarItem::tagOf>, objc::Method<"setTag:", &BarItem::setTag>)

OBJC_CLASS_NAMED(
    UIBarButtonItem, UIBarItem, BarButtonItem, BarItem, objc::Ivar<"_style", &BarButtonItem::style>,
    objc::Ivar<"_target", &BarButtonItem::target>, objc::Ivar<"_action", &BarButtonItem::action>,
    objc::Ivar<"_backgrounds", &BarButtonItem::backgrounds>,
    objc::Method<"initWithImage:style:target:action:", &BarButtonItem::initWithImage>,
    objc::Method<"style", &BarButtonItem::styleOf>,
    objc::Method<"target", &BarButtonItem::targetOf>,
    objc::Method<"setTarget:", &BarButtonItem::setTarget>,
    objc::Method<"action", &BarButtonItem::actionOf>,
    objc::Method<"setAction:", &BarButtonItem::setAction>,
    objc::Method<"setBackgroundImage:forState:barMetrics:", &BarButtonItem::setBackground>,
    objc::Method<"backgroundImageForState:barMetrics:", &BarButtonItem::background>,
    objc::Method<"_press", &BarButtonItem::press>)

OBJC_CLASS_NAMED(UINavigationItem, NSObject, NavigationItem, NSObject,
                 objc::Ivar<"_title", &NavigationItem::title>,
                 objc::Ivar<"_rightBarButtonItem", &NavigationItem::right>,
                 objc::Ivar<"_leftBarButtonItem", &NavigationItem::left>,
                 objc::Method<"initWithTitle:", &NavigationItem::initWithTitle>,
                 objc::Method<"title", &NavigationItem::titleOf>,
                 objc::Method<"setTitle:", &NavigationItem::setTitle>,
                 objc::Method<"rightBarButtonItem", &NavigationItem::rightItem>,
                 objc::Method<"setRightBarButtonItem:", &NavigationItem::setRightItem>,
                 objc::Method<"leftBarButtonItem", &NavigationItem::leftItem>,
                 objc::Method<"setLeftBarButtonItem:", &NavigationItem::setLeftItem>)
