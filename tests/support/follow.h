// The follow and share helpers as a pane uses them: alerts, accounts, requests, opened URLs, as
// text.
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

/// An object's description; "nil" for none.
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
  /// Puts a build's framework where the device has it.
  void installFramework(const std::string& name) const;

  // Lists of alerts keep them alive: none outlasts the question.
  static NSUInteger alertCount();
  /// The alert on screen that was shown last.
  static UIAlertView* alert();
  static void press(NSInteger index) { host::pressAlertButton(alert(), index); }
  /// Title, message, tag and the buttons in order.
  static Lines texts(UIAlertView* alert);

  static Lines opened();
  /// One line a request: the account's name and what it asks for.
  static Lines requests();
  /// The line of a request that follows "maker".
  static std::string follows(const std::string& account);
};

}  // namespace test
