// The follow invitation: what its alerts' buttons do.
#pragma once

#include "objc/strong.h"
#include "platform/Accounts.h"
#include "platform/UIKit.h"

/// The delegate of the invitation (tag 1) and of the account chooser (tag 2). The alerts hold it.
struct QKWelcomeTwitterHandler : NSObject {
  enum Tag : NSInteger { kInvitation = 1, kChooser = 2 };

  void dealloc();
  void setUsername(NSString* name) { send<void>(this, "setUsername:"_sel, name); }

  void clickedButton(UIAlertView* alert, NSInteger index);
  /// Asks for the device's accounts. One follows at once, several are to choose from, and without
  /// any the profile opens. Without access nothing happens.
  void dropMeAFollow();
  /// Sends the request, whose outcome nobody looks at. From any thread.
  void followWithAccount(ACAccount* account);

  /// Makes the alert hold its delegate, which alerts do not do by themselves.
  void heldBy(UIAlertView* alert);

  Strong<NSString> _username;  ///< the account to follow, without a leading sign
};
