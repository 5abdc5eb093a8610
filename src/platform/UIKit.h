// UIKit: what the library replaces and asks.
#pragma once

#include "objc/block.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

struct UIColor : NSObject {
  static UIColor* colorWithRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    return send<UIColor*>(objc::classOf<UIColor>(), "colorWithRed:green:blue:alpha:"_sel, red,
                          green, blue, alpha);
  }

  static UIColor* colorWithHue(CGFloat hue, CGFloat saturation, CGFloat brightness, CGFloat alpha) {
    return send<UIColor*>(objc::classOf<UIColor>(), "colorWithHue:saturation:brightness:alpha:"_sel,
                          hue, saturation, brightness, alpha);
  }
  /// Both in the grey colour space.
  static UIColor* whiteColor() {
    return send<UIColor*>(objc::classOf<UIColor>(), "whiteColor"_sel);
  }
  void set() { send<void>(this, "set"_sel); }
  static UIColor* blackColor() {
    return send<UIColor*>(objc::classOf<UIColor>(), "blackColor"_sel);
  }

  /// The library's own mark: the colour was handed out for an element.
  void setIsVarnixColor(bool isOurs) { send<void>(this, "setIsVarnixColor:"_sel, isOurs); }
};

struct UIView : NSObject {
  UIColor* tintColor() { return send<UIColor*>(this, "tintColor"_sel); }
  void setTintColor(UIColor* color) { send<void>(this, "setTintColor:"_sel, color); }
  void setOpaque(bool opaque) { send<void>(this, "setOpaque:"_sel, opaque); }
  void setBackgroundColor(UIColor* color) { send<void>(this, "setBackgroundColor:"_sel, color); }
};

struct UINavigationItem;

/// Its edgesForExtendedLayout (a UIRectEdge) is how far its page may reach below the bars.
struct UIViewController : NSObject {
  UIView* view() { return send<UIView*>(this, "view"_sel); }
  UINavigationItem* navigationItem() { return send<UINavigationItem*>(this, "navigationItem"_sel); }
  /// Raises for nil. The completion may be nil.
  void presentViewController(UIViewController* controller, bool animated,
                             objc::Block<void()> completion) {
    send<void>(this, "presentViewController:animated:completion:"_sel, controller, animated,
               completion);
  }
};

using UIRectEdge = NSUInteger;
inline constexpr UIRectEdge UIRectEdgeBottom = 4;

/// viewControllers: the columns, the detail last.
struct UISplitViewController : UIViewController {};
/// visibleViewController: the page on screen.
struct UINavigationController : UIViewController {};
/// titleTextAttributes, barTintColor, tintColor: nil for the system's.
struct UINavigationBar : UIView {};

struct UISegment : UIView {};
struct UISegmentedControl : UIView {};
struct UISlider : UIView {};

struct UISwitch : UIView {
  void setOnTintColor(UIColor* color) { send<void>(this, "setOnTintColor:"_sel, color); }
};

struct UIKeyboard : UIView {};
struct UIKBRenderConfig : NSObject {};
struct UIStatusBarNewUIStyleAttributes : NSObject {};

struct UIApplication : NSObject {
  /// Nil in a process that runs no application.
  static UIApplication* sharedApplication() {
    return send<UIApplication*>(objc::classOf<UIApplication>(), "sharedApplication"_sel);
  }
  /// Whether an installed application takes URLs of that scheme.
  bool canOpenURL(NSURL* url) { return send<bool>(this, "canOpenURL:"_sel, url); }
  /// NO where no application takes the URL, and for nil.
  bool openURL(NSURL* url) { return send<bool>(this, "openURL:"_sel, url); }
};

inline constexpr NSInteger UIApplicationStateBackground = 2;

struct UIEdgeInsets {
  CGFloat top, left, bottom, right;
};
OBJC_STRUCT(UIEdgeInsets, CGFloat, CGFloat, CGFloat, CGFloat);

struct UIImage : NSObject {
  static UIImage* imageWithCGImage(CGImageRef image) {
    return send<UIImage*>(objc::classOf<UIImage>(), "imageWithCGImage:"_sel, image);
  }
  /// PNG or JPEG, turned as its orientation says. Nil for anything else.
  UIImage* initWithData(NSData* data) { return send<UIImage*>(this, "initWithData:"_sel, data); }
  /// Stretched to the rectangle of the current image context, in points.
  void drawInRect(CGRect rect) { send<void>(this, "drawInRect:"_sel, rect); }
};

struct UIBarButtonItem : NSObject {
  /// The target is not kept alive.
  UIBarButtonItem* initWithImage(UIImage* image, NSInteger style, NSObject* target, SEL action) {
    return send<UIBarButtonItem*>(this, "initWithImage:style:target:action:"_sel, image, style,
                                  target, action);
  }
  void setBackgroundImage(UIImage* image, NSUInteger state, NSInteger barMetrics) {
    send<void>(this, "setBackgroundImage:forState:barMetrics:"_sel, image, state, barMetrics);
  }
};

inline constexpr NSInteger UIBarButtonItemStylePlain = 0;
inline constexpr NSUInteger UIControlStateNormal = 0;
inline constexpr NSInteger UIBarMetricsDefault = 0;

struct UINavigationItem : NSObject {
  UIBarButtonItem* rightBarButtonItem() {
    return send<UIBarButtonItem*>(this, "rightBarButtonItem"_sel);
  }
  void setRightBarButtonItem(UIBarButtonItem* item) {
    send<void>(this, "setRightBarButtonItem:"_sel, item);
  }
};

/// Used on the main thread. Does not keep its delegate alive.
struct UIAlertView : UIView {
  /// A nil text is left out, a button too. More titles follow the first other button's; a nil ends
  /// them.
  template <class... A>
  UIAlertView* initWithTitle(NSString* title, NSString* message, NSObject* delegate,
                             NSString* cancelTitle, NSString* firstOther, A... others) {
    return objc::sendVariadic<UIAlertView*, NSString*, NSString*, NSObject*, NSString*, NSString*>(
        this, "initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:"_sel, title,
        message, delegate, cancelTitle, firstOther, others...);
  }
  /// The new button's index.
  NSInteger addButtonWithTitle(NSString* title) {
    return send<NSInteger>(this, "addButtonWithTitle:"_sel, title);
  }
  NSInteger tag() { return send<NSInteger>(this, "tag"_sel); }
  void setTag(NSInteger tag) { send<void>(this, "setTag:"_sel, tag); }
  /// The screen keeps it alive until it is dismissed.
  void show() { send<void>(this, "show"_sel); }
};

#pragma GCC visibility push(default)
extern "C" {
/// The key of a text's colour among its attributes.
extern NSString* const NSForegroundColorAttributeName;

/// A new image context on top of the thread's stack of them: its size in points, pixels a point (0
/// for the screen's), (0, 0) the upper left corner. An opaque one begins black.
void UIGraphicsBeginImageContextWithOptions(CGSize size, bool opaque, CGFloat scale);
/// What the context on top holds; nil without one.
UIImage* UIGraphicsGetImageFromCurrentImageContext();
void UIGraphicsEndImageContext();
/// Nil without one.
CGContextRef UIGraphicsGetCurrentContext();
/// Whether the user asks for backgrounds that are less see-through.
bool _UIAccessibilityEnhanceBackgroundContrast();
/// Quality 0 to 1. The image's transparent parts are laid on white. Nil for an image without
/// bitmap.
NSData* UIImageJPEGRepresentation(UIImage* image, CGFloat quality);
}
#pragma GCC visibility pop
