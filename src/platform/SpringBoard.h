// SpringBoard's private classes.
#pragma once

#include "platform/UIKit.h"

/// An application as SpringBoard knows it.
struct SBApplication : NSObject {
  NSString* displayIdentifier() { return send<NSString*>(this, "displayIdentifier"_sel); }
};

struct SBControlCenterContentContainerView : UIView {};
struct SBNotificationCenterViewController : NSObject {};
struct SBFolderIconBackgroundView : UIView {};
struct SBIconBlurryBackgroundView : UIView {};
struct SBIconBadgeView : UIView {};
struct SBIconAccessoryImage : NSObject {};
struct SBHUDView : UIView {};

/// SpringBoard's own application object.
struct SpringBoard : UIApplication {
  /// The application in front, or nil on the home screen.
  SBApplication* frontMostApplication() {
    return send<SBApplication*>(this, "_accessibilityFrontMostApplication"_sel);
  }
};
