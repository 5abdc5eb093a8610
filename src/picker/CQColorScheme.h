// What the picker finds in an image.
#pragma once

#include "objc/own_class.h"
#include "platform/UIKit.h"

/// A background and two text colours; a new scheme has none.
struct CQColorScheme : objc::View<CQColorScheme, NSObject> {
  static constexpr Message<"backgroundColor", UIColor*()> backgroundColor{};
  static constexpr Message<"setBackgroundColor:", void(UIColor*)> setBackgroundColor{};
  static constexpr Message<"primaryTextColor", UIColor*()> primaryTextColor{};
  static constexpr Message<"setPrimaryTextColor:", void(UIColor*)> setPrimaryTextColor{};
  static constexpr Message<"secondaryTextColor", UIColor*()> secondaryTextColor{};
  static constexpr Message<"setSecondaryTextColor:", void(UIColor*)> setSecondaryTextColor{};
};
OBJC_OWN_CLASS(CQColorScheme);
