// Alerts, as the follow invitation needs them.
#pragma once

#include "objc/strong.h"
#include "platform/UIKit.h"

namespace varnix {

/// An alert with a button that dismisses it, followed by buttons with the other titles. Texts and
/// delegate may be nil. Nil in a process without alerts.
template <class... A>
Strong<UIAlertView> makeAlert(NSString* title, NSString* message, NSObject* delegate,
                              NSString* cancelTitle, A... others) {
  auto* raw = objc::alloc<UIAlertView>();
  if (raw == nullptr) return nullptr;
  constexpr NSString* kEnd = nullptr;
  if constexpr (sizeof...(others) == 0) {
    return Strong<UIAlertView>::adopt(
        send(raw, UIAlertView::initWithTitle, title, message, delegate, cancelTitle, kEnd));
  } else {
    return Strong<UIAlertView>::adopt(send(raw, UIAlertView::initWithTitle, title, message,
                                           delegate, cancelTitle, others..., kEnd));
  }
}

}  // namespace varnix
