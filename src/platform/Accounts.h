// The Accounts framework: the accounts of social networks that are stored on the device. It is not
// linked, which would load it into every process.
#pragma once

#include "objc/block.h"
#include "platform/Foundation.h"

struct ACAccountType : NSObject {};

struct ACAccount : NSObject {
  NSString* username() { return send<NSString*>(this, "username"_sel); }
};

struct ACAccountStore : NSObject {
  ACAccountType* accountTypeWithAccountTypeIdentifier(NSString* identifier) {
    return send<ACAccountType*>(this, "accountTypeWithAccountTypeIdentifier:"_sel, identifier);
  }
  /// Asks the user where that was not done before. The handler is called on any thread.
  void requestAccessToAccountsWithType(ACAccountType* type,
                                       objc::Block<void(bool granted, NSError*)> handler) {
    send<void>(this, "requestAccessToAccountsWithType:withCompletionHandler:"_sel, type, handler);
  }
  /// Nil without access.
  NSArray* accountsWithAccountType(ACAccountType* type) {
    return send<NSArray*>(this, "accountsWithAccountType:"_sel, type);
  }
};

/// The value of the framework's constant.
inline NSString* ACAccountTypeIdentifierTwitter() { return "com.apple.twitter"_ns; }
