// What was not replaced or added, and why. `varnix inspect` shows it.
#pragma once

#include "objc/hook.h"
#include "objc/own_class.h"
#include "platform/Foundation.h"

namespace varnix {

struct SkipReason {
  enum Kind : unsigned char {
    none,
    absent,   ///< the class has no such method
    differs,  ///< its method has other types: the detail is its encoding
    lacks,    ///< the platform lacks the detail, which the replacement relies on
    taken,    ///< the class already has a method with the name of ours
  };
  Kind kind = none;
  const char* detail = "";
};

/// The row and the detail must live as long as the process. Called only at installation, on one
/// thread.
void keepSkipped(const objc::Replacement& row, SkipReason reason);

}  // namespace varnix

/// The library's report about itself.
struct VarnixInstallation : objc::View<VarnixInstallation, NSObject> {
  /// Two strings for each skipped method, its name and the reason, in the order of installation.
  static constexpr ClassMessage<"skipped", NSArray*()> skipped{};
};
OBJC_OWN_CLASS(VarnixInstallation);
