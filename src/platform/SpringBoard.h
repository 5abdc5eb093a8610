// SpringBoard's private classes.
#pragma once

#include "objc/variable.h"
#include "platform/UIKit.h"

/// An application as SpringBoard knows it.
struct SBApplication : objc::View<SBApplication, NSObject> {
  static constexpr Message<"bundleIdentifier", NSString*()> bundleIdentifier{};
  /// Its name in earlier systems.
  static constexpr Message<"displayIdentifier", NSString*()> displayIdentifier{};
};

/// SpringBoard's own application object.
struct SpringBoard : objc::View<SpringBoard, UIApplication> {
  /// The application in front, or nil on the home screen.
  static constexpr Message<"_accessibilityFrontMostApplication", SBApplication*()>
      frontMostApplication{};
};

struct SBControlCenterContentContainerView
    : objc::View<SBControlCenterContentContainerView, UIView> {
  static constexpr Message<"_accessibilityBackgroundContrastDidChange:", void(NSObject*)>
      contrastDidChange{};
  static constexpr Message<"controlCenterWillPresent", void()> willPresent{};
  static constexpr Message<"_updateBackground", void()> updateBackground{};
  static constexpr Message<"backdropView", UIView*()> backdropView{};
  /// The view behind the content when contrast is enhanced.
  static constexpr objc::Variable<SBControlCenterContentContainerView,
                                  "_accessibilityBackgroundView", UIView>
      accessibilityBackgroundView{};
};

struct SBNotificationCenterViewController
    : objc::View<SBNotificationCenterViewController, UIViewController> {
  /// Its result, if it has one, is ignored.
  static constexpr Message<"hostWillPresent", NSObject*()> hostWillPresent{};
  static constexpr Message<"_backgroundContrastDidChange:", void(NSObject*)> contrastDidChange{};
  static constexpr Message<"backdropView", UIView*()> backdropView{};
};

/// The background of an icon with a blurred backing; a folder's derives from it.
struct SBIconBlurryBackgroundView : objc::View<SBIconBlurryBackgroundView, UIView> {
  static constexpr Message<"setWallpaperColor:phase:", void(CGColorRef, CGSize phase)>
      setWallpaperColor{};
  /// Missing on some systems.
  static constexpr Message<"setWallpaperBackgroundRect:forContents:withFallbackColor:",
                           void(CGRect, NSObject* contents, CGColorRef fallback)>
      setWallpaperBackgroundRect{};
};
struct SBFolderIconBackgroundView
    : objc::View<SBFolderIconBackgroundView, SBIconBlurryBackgroundView> {};

/// An image that a pool hands out and takes back by its key.
struct SBIconAccessoryImage : objc::View<SBIconAccessoryImage, UIImage> {
  static constexpr Message<"initWithImage:", SBIconAccessoryImage*(UIImage*)> initWithImage{};
  static constexpr Message<"countedMapKey", NSObject*()> countedMapKey{};
  static constexpr Message<"setCountedMapKey:", void(NSObject*)> setCountedMapKey{};
};
struct SBIconBadgeView : objc::View<SBIconBadgeView, UIView> {
  static constexpr ClassMessage<"_checkoutBackgroundImage", SBIconAccessoryImage*()>
      checkoutBackgroundImage{};
};

struct SBHUDView : objc::View<SBHUDView, UIView> {
  static constexpr objc::Variable<SBHUDView, "_backdropView", _UIBackdropView> backdropView{};
};
