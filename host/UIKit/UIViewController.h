// The stand-in's view controller.
#pragma once

#include "UIKit/UIView.h"

namespace host {

struct ViewController : NSObject {
  ViewController* init();
  /// Nothing is loaded from a nib here: the view is a plain one.
  HOST_EXPORT ViewController* initWithNib(NSString* name, NSBundle* bundle);
  UIView* viewOf() { return view; }

  Strong<UIView> view;
};

}  // namespace host
