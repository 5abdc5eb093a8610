// Frameworks that are loaded when a helper needs them, so that no other process has to.
#pragma once

#include "platform/dlfcn.h"

namespace varnix {

/// ACAccountStore is there afterwards, where the device has it.
inline void loadAccounts() {
  dlopen("/System/Library/Frameworks/Accounts.framework/Accounts", RTLD_NOW);
}

/// SLRequest and SLComposeViewController are there afterwards, where the device has them.
inline void loadSocial() { dlopen("/System/Library/Frameworks/Social.framework/Social", RTLD_NOW); }

}  // namespace varnix
