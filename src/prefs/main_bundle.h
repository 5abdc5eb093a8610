// The identity of this process.
#pragma once

#include "platform/Foundation.h"

namespace varnix {

/// The main bundle's identifier, or nil. Read again at every call, from the bundle that is the main
/// one as long as the process lives.
inline NSString* mainBundleIdentifier() {
  static constinit NSBundle* remembered = nullptr;
  NSBundle* bundle = __atomic_load_n(&remembered, __ATOMIC_RELAXED);
  if (bundle == nullptr) {
    bundle = NSBundle::mainBundle();
    __atomic_store_n(&remembered, bundle, __ATOMIC_RELAXED);
  }
  return send(bundle, NSBundle::bundleIdentifier);
}

}  // namespace varnix
