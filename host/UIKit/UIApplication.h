// The stand-in's application object.
#pragma once

#include "objc/define.h"
#include "platform/UIKit.h"

namespace host {

struct Application : UIApplication {
  static Application* shared();
  /// 0 active, 1 inactive, 2 background.
  void setApplicationState(NSInteger value) { state = value; }

  /// Only SpringBoard knows which application is in front.

  NSInteger state;
};

}  // namespace host
