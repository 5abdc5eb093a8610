// Frameworks that are loaded when a helper needs them, so that other processes do not load them.
#pragma once

#include "platform/dlfcn.h"

namespace varnix {

/// ACAccountStore exists afterwards, if the device has it.
inline void loadAccounts() {
  dlopen("/System/Library/Frameworks/Accounts.framework/Accounts", RTLD_NOW);
}

/// SLRequest and SLComposeViewController exist afterwards, if the device has them.
inline void loadSocial() { dlopen("/System/Library/Frameworks/Social.framework/Social", RTLD_NOW); }

}  // namespace varnix
