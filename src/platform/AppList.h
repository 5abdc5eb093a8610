// libapplist: the installed applications and their icons.
#pragma once

#include "objc/metadata.h"
#include "platform/UIKit.h"

struct ALApplicationList : objc::View<ALApplicationList, NSObject> {
  /// May be nil.
  static constexpr ClassMessage<"sharedApplicationList", ALApplicationList*()>
      sharedApplicationList{};
  /// Of that size in points; nil for an application without icon.
  static constexpr Message<"iconOfSize:forDisplayIdentifier:", UIImage*(NSUInteger, NSString*)>
      iconOfSize{};
  /// Whether iconOfSize answers at once. Otherwise it asks another process, which takes long.
  static constexpr Message<"hasCachedIconOfSize:forDisplayIdentifier:", bool(NSUInteger, NSString*)>
      hasCachedIconOfSize{};
  /// Names by identifier, of all applications for a nil predicate. The array gets the identifiers,
  /// sorted by name.
  static constexpr Message<"applicationsFilteredUsingPredicate:onlyVisible:titleSortedIdentifiers:",
                           NSDictionary*(NSObject* predicate, bool onlyVisible, NSArray** sorted)>
      applications{};
};

#pragma GCC visibility push(default)
extern "C" {
/// Posted when an icon has come that was not there when it was asked for; the identifier is in the
/// user information. Null if the device lacks the library.
OBJC_WEAK extern NSString* const ALIconLoadedNotification;
OBJC_WEAK extern NSString* const ALDisplayIdentifierKey;
}
#pragma GCC visibility pop

// In points.
inline constexpr NSUInteger ALApplicationIconSizeSmall = 29;
inline constexpr NSUInteger ALApplicationIconSizeLarge = 59;
