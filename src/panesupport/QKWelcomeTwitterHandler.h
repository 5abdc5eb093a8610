// The follow invitation: the actions of its alerts' buttons.
#pragma once

#include "objc/association.h"
#include "objc/own_class.h"
#include "platform/Accounts.h"
#include "platform/UIKit.h"

/// The delegate of the invitation (tag 1) and of the account chooser (tag 2). The alerts keep it
/// alive.
struct QKWelcomeTwitterHandler : objc::View<QKWelcomeTwitterHandler, NSObject> {
  enum Tag : NSInteger { kInvitation = 1, kChooser = 2 };

  /// The account to follow, without a leading sign.
  static constexpr Message<"username", NSString*()> username{};
  static constexpr Message<"setUsername:", void(NSString*)> setUsername{};

  static constexpr Message<"alertView:clickedButtonAtIndex:", void(UIAlertView*, NSInteger)>
      clickedButtonAtIndex{};
  /// Asks for the device's accounts. A single account follows at once, among several the user
  /// chooses, and if there are none the profile opens. Without access nothing happens.
  static constexpr Message<"dropMeAFollow", void()> dropMeAFollow{};
  /// Sends the request and ignores the outcome. May be called on any thread.
  static constexpr Message<"followWithAccount:", void(ACAccount*)> followWithAccount{};
};
OBJC_OWN_EXPORTED_CLASS(QKWelcomeTwitterHandler);

namespace varnix {

/// Makes the alert retain its delegate, which alerts do not do by themselves.
inline void keepFor(UIAlertView* alert, QKWelcomeTwitterHandler* handler) {
  objc::associate(alert, "varnixFollowHandler"_sel, handler, AssociationPolicy::retainNonatomic);
}

}  // namespace varnix
