// libapplist: the installed applications and their icons.
#pragma once

#include "platform/UIKit.h"

struct ALApplicationList : NSObject {
  /// May be nil.
  static ALApplicationList* sharedApplicationList() {
    return send<ALApplicationList*>(objc::classOf<ALApplicationList>(),
                                    "sharedApplicationList"_sel);
  }
};

/// In points.
inline constexpr NSUInteger ALApplicationIconSizeLarge = 59;
