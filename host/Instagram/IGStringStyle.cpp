// How the Instagram application styles text: links have a colour of their own.
#include "UIKit/UIColor.h"
#include "platform/Instagram.h"

namespace {
struct StringStyle : IGStringStyle {
  StringStyle* init();

  Strong<UIColor> link;
};

}  // namespace

OBJC_CLASS_NAMED(IGStringStyle, NSObject, StringStyle, NSObject,
                 objc::Property<"linkColor", &StringStyle::link>,
                 objc::Method<"init", &StringStyle::init>)

StringStyle* StringStyle::init() {
  constexpr CGFloat kRed = CGFloat(18 / 255.0);
  constexpr CGFloat kGreen = CGFloat(86 / 255.0);
  constexpr CGFloat kBlue = CGFloat(136 / 255.0);
  link = Strong<UIColor>::retain(UIColor::colorWithRed(kRed, kGreen, kBlue, 1));
  return this;
}
