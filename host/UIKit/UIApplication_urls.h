// Which URLs the device's applications open, and which were opened.
#pragma once

#include "platform/UIKit.h"
#include "runtime/send.h"

namespace host {

/// Sets the schemes of installed applications, as strings, for this process. They come on top of
/// the system's (http, https, mailto).
inline void setInstalledURLSchemes(NSArray* schemes) {
  send<void>(objc_getClass("UIApplication"), "standIn_setInstalledURLSchemes:"_sel, schemes);
}

/// The URLs that this process has opened, in order.
inline NSArray* openedURLs() {
  return send<NSArray*>(objc_getClass("UIApplication"), "standIn_openedURLs"_sel);
}

}  // namespace host
