// What was not replaced or added, and why: for whoever looks for it, such as `varnix inspect`.
#pragma once

#include "objc/hook.h"
#include "objc/own_class.h"
#include "platform/Foundation.h"

namespace varnix {

struct SkipReason {
  enum Kind : unsigned char {
    none,
    absent,   ///< the class has no such method
    differs,  ///< its method takes or answers something else: the detail is its encoding
    lacks,    ///< the platform lacks the detail, which the replacement relies on
    taken,    ///< the class has a method of the name of one of ours
  };
  Kind kind = none;
  const char* detail = "";
};

/// The row and the detail live as long as the process. At installation only, on one thread.
void keepSkipped(const objc::Replacement& row, SkipReason reason);

}  // namespace varnix

/// The library's report about itself.
struct VarnixInstallation : objc::View<VarnixInstallation, NSObject> {
  /// For each method that was passed over its name and the reason, two strings, in the order of
  /// installation.
  static constexpr ClassMessage<"skipped", NSArray*()> skipped{};
};
OBJC_OWN_CLASS(VarnixInstallation);
