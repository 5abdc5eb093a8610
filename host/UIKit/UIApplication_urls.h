// Which URLs the device's applications take, and which were opened.
#pragma once

#include "platform/UIKit.h"
#include "runtime/send.h"

namespace host {

/// The schemes of the applications that are installed beside the system's (http, https, mailto), as
/// strings; in this process from now on.
inline void setInstalledURLSchemes(NSArray* schemes) {
  send<void>(objc_getClass("UIApplication"), "standIn_setInstalledURLSchemes:"_sel, schemes);
}

/// The URLs that this process has opened, in order.
inline NSArray* openedURLs() {
  return send<NSArray*>(objc_getClass("UIApplication"), "standIn_openedURLs"_sel);
}

}  // namespace host
