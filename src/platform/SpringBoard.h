// SpringBoard's private classes.
#pragma once

#include "platform/UIKit.h"

/// An application as SpringBoard knows it.
struct SBApplication : NSObject {
  NSString* displayIdentifier() { return send<NSString*>(this, "displayIdentifier"_sel); }
};

/// SpringBoard's own application object.
struct SpringBoard : UIApplication {
  /// The application in front, or nil on the home screen.
  SBApplication* frontMostApplication() {
    return send<SBApplication*>(this, "_accessibilityFrontMostApplication"_sel);
  }
};
