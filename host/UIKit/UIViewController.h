// The stand-in's view controller.
#pragma once

#include "UIKit/UIView.h"

namespace host {
struct ViewController : UIViewController {
  ViewController* init();
  /// Loads nothing from a nib: the view is a plain one.
  HOST_EXPORT ViewController* initWithNib(NSString* name, NSBundle* bundle);
  HOST_EXPORT void dealloc();

  UIView* viewOf() { return pageView; }
  UIViewController* parentOf() { return parent; }
  /// The nearest parent of that class; nil if there is none.
  UIViewController* splitViewControllerOf();
  UIViewController* navigationControllerOf();
  /// Made when first asked for; nil in a process without the class.
  NSObject* item();

  Strong<UIView> pageView;
  ViewController* parent;  ///< not kept alive
  Strong<NSObject> itemInBar;
  UIRectEdge edges;
};

/// A controller that shows others: it is their parent as long as it holds them.
struct ContainerViewController : ViewController {
  void dealloc();
  NSArray* children();
  /// Objects that are not view controllers are left out.
  void setChildren(NSArray* controllers);
  void add(ViewController* child);
  void removeLast();

  std::vector<Strong<ViewController>> held;
};

}  // namespace host
