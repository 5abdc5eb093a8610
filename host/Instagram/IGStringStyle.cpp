// How the Instagram application sets text: its links have a colour of their own.
#include "UIKit/UIColor.h"
#include "platform/Instagram.h"

namespace {

struct StringStyle : IGStringStyle {
  StringStyle* init();
  UIColor* linkColor() { return link; }
  void setLinkColor(UIColor* color) { link = Strong<UIColor>::retain(color); }

  Strong<UIColor> link;
};

}  // namespace

OBJC_CLASS_NAMED(IGStringStyle, NSObject, StringStyle, NSObject,
                 objc::Ivar<"_linkColor", &StringStyle::link>,
                 objc::Method<"init", &StringStyle::init>,
                 objc::Method<"linkColor", &StringStyle::linkColor>,
                 objc::Method<"setLinkColor:", &StringStyle::setLinkColor>)

StringStyle* StringStyle::init() {
  constexpr CGFloat kRed = CGFloat(18 / 255.0);
  constexpr CGFloat kGreen = CGFloat(86 / 255.0);
  constexpr CGFloat kBlue = CGFloat(136 / 255.0);
  link = Strong<UIColor>::retain(UIColor::colorWithRed(kRed, kGreen, kBlue, 1));
  return this;
}
