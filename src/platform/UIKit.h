// UIKit: the parts that the library replaces and uses.
#pragma once

#include "objc/block.h"
#include "objc/metadata.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

struct UIColor : objc::View<UIColor, NSObject> {
  static constexpr ClassMessage<"colorWithRed:green:blue:alpha:",
                                UIColor*(CGFloat, CGFloat, CGFloat, CGFloat)>
      colorWithRed{};

  static constexpr ClassMessage<"colorWithHue:saturation:brightness:alpha:",
                                UIColor*(CGFloat, CGFloat, CGFloat, CGFloat)>
      colorWithHue{};
  static constexpr ClassMessage<"yellowColor", UIColor*()> yellowColor{};
  /// These two are in the grey colour space.
  static constexpr ClassMessage<"whiteColor", UIColor*()> whiteColor{};
  static constexpr ClassMessage<"blackColor", UIColor*()> blackColor{};

  /// Sets the fill and stroke colour of the current context.
  static constexpr Message<"set", void()> set{};
  /// Lives as long as the colour.
  static constexpr Message<"CGColor", CGColorRef()> CGColor{};
  static constexpr Message<"colorWithAlphaComponent:", UIColor*(CGFloat)> colorWithAlphaComponent{};
  /// Each 0 to 1; a null pointer is skipped. For a colour without components it returns NO and
  /// writes nothing.
  static constexpr Message<"getHue:saturation:brightness:alpha:",
                           bool(CGFloat*, CGFloat*, CGFloat*, CGFloat*)>
      getHue{};
  static constexpr Message<"getRed:green:blue:alpha:", bool(CGFloat*, CGFloat*, CGFloat*, CGFloat*)>
      getRed{};
};

struct UIView : objc::View<UIView, NSObject> {
  static constexpr Message<"tintColor", UIColor*()> tintColor{};
  static constexpr Message<"setTintColor:", void(UIColor*)> setTintColor{};
  static constexpr Message<"initWithFrame:", UIView*(CGRect)> initWithFrame{};
  static constexpr Message<"layoutSubviews", void()> layoutSubviews{};
  /// In its own coordinates, and in those of the view around it.
  static constexpr Message<"bounds", CGRect()> bounds{};
  static constexpr Message<"setFrame:", void(CGRect)> setFrame{};
  /// NO if it keeps the keyboard.
  static constexpr Message<"resignFirstResponder", bool()> resignFirstResponder{};
  static constexpr Message<"setOpaque:", void(bool)> setOpaque{};
  static constexpr Message<"setAutoresizesSubviews:", void(bool)> setAutoresizesSubviews{};
  static constexpr Message<"setBackgroundColor:", void(UIColor*)> setBackgroundColor{};
  /// The appearance of new instances inside containers of that class. A nil ends the list of
  /// containers.
  static constexpr ClassMessage<"appearanceWhenContainedIn:", NSObject*(Class, ...)>
      appearanceWhenContainedIn{};
};

struct UINavigationItem;
struct UINavigationController;
struct UISplitViewController;

using UIRectEdge = NSUInteger;
inline constexpr UIRectEdge UIRectEdgeBottom = 4;

struct UIViewController : objc::View<UIViewController, NSObject> {
  static constexpr Message<"initWithNibName:bundle:", UIViewController*(NSString*, NSBundle*)>
      initWithNibName{};
  static constexpr Message<"view", UIView*()> view{};
  /// The nearest split view that contains it, at any depth; nil if there is none.
  static constexpr Message<"splitViewController", UISplitViewController*()> splitViewController{};
  /// The edges at which its page may extend under bars.
  static constexpr Message<"edgesForExtendedLayout", UIRectEdge()> edgesForExtendedLayout{};
  static constexpr Message<"setEdgesForExtendedLayout:", void(UIRectEdge)>
      setEdgesForExtendedLayout{};
  static constexpr Message<"navigationItem", UINavigationItem*()> navigationItem{};
  /// The one that it is in; nil if there is none.
  static constexpr Message<"navigationController", UINavigationController*()>
      navigationController{};
  /// Raises for nil. The completion may be nil.
  static constexpr Message<"presentViewController:animated:completion:",
                           void(UIViewController*, bool, objc::Block<void()>)>
      presentViewController{};
};

struct UISplitViewController : objc::View<UISplitViewController, UIViewController> {
  /// The columns, the detail last.
  static constexpr Message<"viewControllers", NSArray*()> viewControllers{};
};

struct UINavigationBar : objc::View<UINavigationBar, UIView> {
  // Nil means the system's.
  static constexpr Message<"setTitleTextAttributes:", void(NSDictionary*)> setTitleTextAttributes{};
  static constexpr Message<"setBarTintColor:", void(UIColor*)> setBarTintColor{};
};

struct UINavigationController : objc::View<UINavigationController, UIViewController> {
  static constexpr Message<"navigationBar", UINavigationBar*()> navigationBar{};
  /// The page pushed last.
  static constexpr Message<"topViewController", UIViewController*()> topViewController{};
  /// The page on screen.
  static constexpr Message<"visibleViewController", UIViewController*()> visibleViewController{};
};

struct UISegment : objc::View<UISegment, UIView> {};
struct UISegmentedControl : objc::View<UISegmentedControl, UIView> {};
struct UISlider : objc::View<UISlider, UIView> {
  static constexpr Message<"setMaximumTrackTintColor:", void(UIColor*)> setMaximumTrackTintColor{};
};

struct UISwitch : objc::View<UISwitch, UIView> {
  static constexpr Message<"setOnTintColor:", void(UIColor*)> setOnTintColor{};
};

struct UIKeyboard : objc::View<UIKeyboard, UIView> {};
struct UIKBRenderConfig : objc::View<UIKBRenderConfig, NSObject> {
  static constexpr Message<"lightKeyboard", bool()> lightKeyboard{};
};
struct UIStatusBarNewUIStyleAttributes : objc::View<UIStatusBarNewUIStyleAttributes, NSObject> {
  static constexpr Message<"initWithRequest:backgroundColor:foregroundColor:",
                           UIStatusBarNewUIStyleAttributes*(NSObject* request, UIColor* background,
                                                            UIColor* foreground)>
      initWithRequest{};
};

/// Draws the blur behind a surface. The platform replaces its settings now and then.
struct _UIBackdropViewSettings : objc::View<_UIBackdropViewSettings, NSObject> {
  static constexpr Message<"setRequiresColorStatistics:", void(bool)> setRequiresColorStatistics{};
  static constexpr Message<"setUsesColorTintView:", void(bool)> setUsesColorTintView{};
  static constexpr Message<"setColorTint:", void(UIColor*)> setColorTint{};
  static constexpr Message<"setColorTintAlpha:", void(CGFloat)> setColorTintAlpha{};
  static constexpr Message<"setColorTintMaskAlpha:", void(CGFloat)> setColorTintMaskAlpha{};
};
struct _UIBackdropView : objc::View<_UIBackdropView, UIView> {
  static constexpr Message<"inputSettings", _UIBackdropViewSettings*()> inputSettings{};
};

struct UIApplication : objc::View<UIApplication, NSObject> {
  /// Nil in a process that is not an application.
  static constexpr ClassMessage<"sharedApplication", UIApplication*()> sharedApplication{};
  /// Whether an installed application opens URLs of that scheme.
  static constexpr Message<"canOpenURL:", bool(NSURL*)> canOpenURL{};
  /// NO if no application opens the URL, and for nil.
  static constexpr Message<"openURL:", bool(NSURL*)> openURL{};
  static constexpr Message<"applicationState", NSInteger()> applicationState{};
};

inline constexpr NSInteger UIApplicationStateBackground = 2;

struct UIEdgeInsets {
  CGFloat top, left, bottom, right;
};
OBJC_STRUCT(UIEdgeInsets, CGFloat, CGFloat, CGFloat, CGFloat);

struct UIImage : objc::View<UIImage, NSObject> {
  static constexpr ClassMessage<"imageWithCGImage:", UIImage*(CGImageRef)> imageWithCGImage{};
  /// From PNG or JPEG, rotated according to its orientation. Nil for anything else.
  static constexpr Message<"initWithData:", UIImage*(NSData*)> initWithData{};
  /// In points, and in pixels per point.
  static constexpr Message<"size", CGSize()> size{};
  static constexpr Message<"scale", CGFloat()> scale{};
  /// Lives as long as the image; nil for one without bitmap.
  static constexpr Message<"CGImage", CGImageRef()> CGImage{};
  static constexpr Message<"capInsets", UIEdgeInsets()> capInsets{};
  static constexpr Message<"alignmentRectInsets", UIEdgeInsets()> alignmentRectInsets{};
  static constexpr Message<"renderingMode", NSInteger()> renderingMode{};
  // Copies that differ in one property.
  static constexpr Message<"resizableImageWithCapInsets:", UIImage*(UIEdgeInsets)>
      resizableImageWithCapInsets{};
  static constexpr Message<"imageWithAlignmentRectInsets:", UIImage*(UIEdgeInsets)>
      imageWithAlignmentRectInsets{};
  static constexpr Message<"imageWithRenderingMode:", UIImage*(NSInteger)> imageWithRenderingMode{};

  // Draw into the current image context, in points. The former stretches to the rectangle.
  static constexpr Message<"drawInRect:", void(CGRect)> drawInRect{};
  static constexpr Message<"drawAtPoint:", void(CGPoint)> drawAtPoint{};
};

struct UIBarButtonItem : objc::View<UIBarButtonItem, NSObject> {
  /// The target is not kept alive.
  static constexpr Message<"initWithImage:style:target:action:",
                           UIBarButtonItem*(UIImage*, NSInteger, NSObject*, SEL)>
      initWithImage{};
  static constexpr Message<"setBackgroundImage:forState:barMetrics:",
                           void(UIImage*, NSUInteger, NSInteger)>
      setBackgroundImage{};
};

inline constexpr NSInteger UIBarButtonItemStylePlain = 0;
inline constexpr NSUInteger UIControlStateNormal = 0;
inline constexpr NSInteger UIBarMetricsDefault = 0;

struct UINavigationItem : objc::View<UINavigationItem, NSObject> {
  static constexpr Message<"rightBarButtonItem", UIBarButtonItem*()> rightBarButtonItem{};
  static constexpr Message<"setRightBarButtonItem:", void(UIBarButtonItem*)>
      setRightBarButtonItem{};
};

/// Used on the main thread. Does not keep its delegate alive.
struct UIAlertView : objc::View<UIAlertView, UIView> {
  /// A nil text or button is left out. More titles follow the first other button's; a nil ends
  /// them.
  static constexpr Message<"initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:",
                           UIAlertView*(NSString* title, NSString* message, NSObject* delegate,
                                        NSString* cancelTitle, NSString* firstOther, ...)>
      initWithTitle{};
  /// The new button's index.
  static constexpr Message<"addButtonWithTitle:", NSInteger(NSString*)> addButtonWithTitle{};
  static constexpr Message<"tag", NSInteger()> tag{};
  static constexpr Message<"setTag:", void(NSInteger)> setTag{};
  /// The screen keeps it alive until it is dismissed.
  static constexpr Message<"show", void()> show{};
};

#pragma GCC visibility push(default)
extern "C" {
/// The key of a text's colour among its attributes.
extern NSString* const NSForegroundColorAttributeName;

/// Pushes a new image context on the thread's stack: its size in points, pixels per point (0 for
/// the screen's), with (0, 0) at the upper left corner. An opaque one starts black.
void UIGraphicsBeginImageContextWithOptions(CGSize size, bool opaque, CGFloat scale);
/// The image in the topmost context; nil without one.
UIImage* UIGraphicsGetImageFromCurrentImageContext();
void UIGraphicsEndImageContext();
/// Nil without one.
CGContextRef UIGraphicsGetCurrentContext();
/// Whether the user wants less transparent backgrounds: any byte but zero is yes. Private: null on
/// a system without it.
OBJC_WEAK unsigned char _UIAccessibilityEnhanceBackgroundContrast();
/// Quality is 0 to 1. Transparent parts of the image become white. Nil for an image without bitmap.
NSData* UIImageJPEGRepresentation(UIImage* image, CGFloat quality);
}
#pragma GCC visibility pop
