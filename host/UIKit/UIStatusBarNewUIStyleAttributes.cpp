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

  Strong<NSObject> request;
  Strong<UIColor> backgroundColor;
  Strong<UIColor> foregroundColor;
};

}  // namespace

OBJC_CLASS_NAMED(
    UIStatusBarNewUIStyleAttributes, NSObject, Attributes, NSObject,
    objc::Readable<"request", &Attributes::request>,
    objc::Readable<"backgroundColor", &Attributes::backgroundColor>,
    objc::Readable<"foregroundColor", &Attributes::foregroundColor>,
    objc::Method<"initWithRequest:backgroundColor:foregroundColor:", &Attributes::init>)
