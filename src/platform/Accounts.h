// The Accounts framework: the accounts of social networks on the device. It is not linked, since
// that would load it into every process.
#pragma once

#include "objc/block.h"
#include "platform/Foundation.h"

struct ACAccountType : objc::View<ACAccountType, NSObject> {};

struct ACAccount : objc::View<ACAccount, NSObject> {
  static constexpr Message<"username", NSString*()> username{};
};

struct ACAccountStore : objc::View<ACAccountStore, NSObject> {
  static constexpr Message<"accountTypeWithAccountTypeIdentifier:", ACAccountType*(NSString*)>
      accountTypeWithAccountTypeIdentifier{};
  /// Asks the user, if that was not done before. The handler may be called on any thread.
  static constexpr Message<"requestAccessToAccountsWithType:withCompletionHandler:",
                           void(ACAccountType*, objc::Block<void(bool granted, NSError*)>)>
      requestAccessToAccountsWithType{};
  /// Nil without access.
  static constexpr Message<"accountsWithAccountType:", NSArray*(ACAccountType*)>
      accountsWithAccountType{};
};

/// The value of the framework's constant.
inline NSString* ACAccountTypeIdentifierTwitter() { return "com.apple.twitter"_ns; }
