// The follow and share helpers as a pane uses them. Alerts, accounts, requests and opened URLs are
// given as text.
#pragma once

#include <string>
#include <vector>

#include "Accounts/accounts.h"
#include "Social/requests.h"
#include "UIKit/UIAlertView.h"
#include "UIKit/UIApplication_urls.h"
#include "objc/hook.h"
#include "process/container.h"
#include "support/pane.h"

namespace test {

using Lines = std::vector<std::string>;

NSArray* strings(const Lines& lines);

/// An object's description; "nil" if there is none.
std::string words(NSObject* object);

/// What an object answers to a message without arguments.
template <objc::FixedString Name>
std::string answer(NSObject* object, objc::Selector<Name> selector) {
  return words(send<NSObject*>(object, selector));
}

class Follow : public Pane {
 protected:
  void SetUp() override { unsetenv("VARNIX_SOCIAL_HOST"); }

  static void show(NSString* title, NSString* message, NSString* username);
  static void openUsername(NSString* name);
  /// Puts a framework of this build where the device has it.
  void installFramework(const std::string& name) const;

  // Lists keep alerts alive, so none outlives the question.
  static NSUInteger alertCount();
  /// The alert on screen that was shown last.
  static UIAlertView* alert();
  static void press(NSInteger index) { host::pressAlertButton(alert(), index); }
  /// Title, message, tag and buttons, in order.
  static Lines texts(UIAlertView* alert);

  static Lines opened();
  /// One line for each request: the account's name and what it asks for.
  static Lines requests();
  /// The line of a request that follows "maker".
  static std::string follows(const std::string& account);
};

}  // namespace test
