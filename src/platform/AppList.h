// libapplist: the installed applications and their icons.
#pragma once

#include "platform/UIKit.h"

struct ALApplicationList : objc::View<ALApplicationList, NSObject> {
  /// May be nil.
  static constexpr ClassMessage<"sharedApplicationList", ALApplicationList*()>
      sharedApplicationList{};
  /// Of that size in points; nil for an application without icon.
  static constexpr Message<"iconOfSize:forDisplayIdentifier:", UIImage*(NSUInteger, NSString*)>
      iconOfSize{};
};

/// In points.
inline constexpr NSUInteger ALApplicationIconSizeLarge = 59;
