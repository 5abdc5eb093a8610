// The accounts of the device, which a test or a person sets.
#pragma once

#include "platform/Accounts.h"
#include "runtime/send.h"

namespace host {

/// Sets the user names of the accounts of one type, in order, for this process. Needs the Accounts
/// framework in the process.
inline void setAccounts(NSString* typeIdentifier, NSArray* usernames) {
  send<void>(objc_getClass("ACAccountStore"), "standIn_setUsernames:ofType:"_sel, usernames,
             typeIdentifier);
}

/// Sets what the user answers when asked for access. Yes before the first call.
inline void setAccountAccess(bool granted) {
  send<void>(objc_getClass("ACAccountStore"), "standIn_setAccessGranted:"_sel, granted);
}

/// How often access was asked for.
inline NSUInteger accountAccessRequests() {
  return send<NSUInteger>(objc_getClass("ACAccountStore"), "standIn_accessRequests"_sel);
}

}  // namespace host
