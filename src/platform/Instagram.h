// Classes of the Instagram application.
#pragma once

#include "platform/UIKit.h"

struct IGStringStyle : objc::View<IGStringStyle, NSObject> {
  static constexpr Message<"linkColor", UIColor*()> linkColor{};
  static constexpr Message<"setLinkColor:", void(UIColor*)> setLinkColor{};
};
