// The Social framework: requests to social networks, and the sheet for writing a post. It is not
// linked, since that would load it into every process.
#pragma once

#include "platform/Accounts.h"
#include "platform/UIKit.h"

struct NSHTTPURLResponse : objc::View<NSHTTPURLResponse, NSObject> {
  static constexpr Message<"statusCode", NSInteger()> statusCode{};
};

inline constexpr NSInteger SLRequestMethodPOST = 1;

struct SLRequest : objc::View<SLRequest, NSObject> {
  static constexpr ClassMessage<"requestForServiceType:requestMethod:URL:parameters:",
                                SLRequest*(NSString*, NSInteger, NSURL*, NSDictionary*)>
      requestForServiceType{};
  static constexpr Message<"setAccount:", void(ACAccount*)> setAccount{};
  /// Returns at once. The handler may be called on any thread, and must not be nil.
  static constexpr Message<"performRequestWithHandler:",
                           void(objc::Block<void(NSData*, NSHTTPURLResponse*, NSError*)>)>
      performRequestWithHandler{};
};

struct SLComposeViewController : objc::View<SLComposeViewController, UIViewController> {
  static constexpr ClassMessage<"composeViewControllerForServiceType:",
                                SLComposeViewController*(NSString*)>
      composeViewControllerForServiceType{};
  /// NO once the sheet has been presented.
  static constexpr Message<"setInitialText:", bool(NSString*)> setInitialText{};
};

/// The value of the framework's constant.
inline NSString* SLServiceTypeTwitter() { return "com.apple.social.twitter"_ns; }
