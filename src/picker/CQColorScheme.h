// What the picker finds in an image.
#pragma once

#include "objc/strong.h"
#include "platform/UIKit.h"

/// A background and two text colours; a new scheme has none.
struct CQColorScheme : NSObject {
  Strong<UIColor> _backgroundColor;
  Strong<UIColor> _primaryTextColor;
  Strong<UIColor> _secondaryTextColor;
};
