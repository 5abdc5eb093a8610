// The stand-in's view controller.
#pragma once

#include "UIKit/UIView.h"

namespace host {
struct ViewController : UIViewController {
  HOST_EXPORT ViewController* init();
  /// Loads nothing from a nib: the view is a plain one.
  HOST_EXPORT ViewController* initWithNib(NSString* name, NSBundle* bundle);
  HOST_EXPORT void dealloc();

  /// Loaded when first asked for: loadView makes it, then viewDidLoad is sent.
  UIView* viewOf();
  void setView(UIView* view);
  bool isLoaded() { return pageView != nullptr; }
  /// A plain view.
  HOST_EXPORT void loadView();
  // For subclasses.
  void viewDidLoad() {}
  void appears(bool) {}

  /// Also that of the bar while the page is on top.
  void setTitle(NSString* text);
  /// The nearest parent of that class; nil if there is none.
  UIViewController* splitViewControllerOf();
  UIViewController* navigationControllerOf();
  /// Made when first asked for; nil in a process without the class.
  NSObject* item();

  Strong<UIView> pageView;
  ViewController* parent;  ///< not kept alive
  Strong<NSObject> itemInBar;
  Strong<NSString> title;
  UIRectEdge edges;
};

/// A controller that shows others: it is their parent as long as it holds them. It tells those of
/// them that are on the screen that they come and go, once it is on the screen itself.
struct ContainerViewController : ViewController {
  // Those that it shows.
  void willAppear(bool animated);
  void didAppear(bool animated);
  void willDisappear(bool animated);
  void didDisappear(bool animated);

  ViewController* initShowingAll(NSString* name, NSBundle* bundle);

  void dealloc();
  NSArray* children();
  /// Objects that are not view controllers are left out.
  void setChildren(NSArray* controllers);
  void add(ViewController* child);
  void removeLast();

  std::vector<Strong<ViewController>> held;
  bool isOnScreen;
  bool showsAll;  ///< else the last

 private:
  template <class Tell>
  void tellShown(Tell tell);
};

}  // namespace host
