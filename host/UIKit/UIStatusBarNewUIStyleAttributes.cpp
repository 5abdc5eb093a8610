// The status bar's colours.
#include "objc/define.h"
#include "platform/UIKit.h"

namespace {

struct Attributes : UIStatusBarNewUIStyleAttributes {
  Attributes* init(NSObject* styleRequest, UIColor* background, UIColor* foreground) {
    request = Strong<NSObject>::retain(styleRequest);
    backgroundColor = Strong<UIColor>::retain(background);
    foregroundColor = Strong<UIColor>::retain(foreground);
    return this;
  }
  NSObject* requestOf() { return request; }
  UIColor* background() { return backgroundColor; }
  UIColor* foreground() { return foregroundColor; }

  Strong<NSObject> request;
  Strong<UIColor> backgroundColor;
  Strong<UIColor> foregroundColor;
};

}  // namespace

OBJC_CLASS_NAMED(
    UIStatusBarNewUIStyleAttributes, NSObject, Attributes, NSObject,
    objc::Ivar<"_request", &Attributes::request>,
    objc::Ivar<"_backgroundColor", &Attributes::backgroundColor>,
    objc::Ivar<"_foregroundColor", &Attributes::foregroundColor>,
    objc::Method<"initWithRequest:backgroundColor:foregroundColor:", &Attributes::init>,
    objc::Method<"request", &Attributes::requestOf>,
    objc::Method<"backgroundColor", &Attributes::background>,
    objc::Method<"foregroundColor", &Attributes::foreground>)
