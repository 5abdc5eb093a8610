// The Social framework: requests to social networks, and the sheet that composes a post. It is not
// linked, which would load it into every process.
#pragma once

#include "platform/Accounts.h"
#include "platform/UIKit.h"

struct NSHTTPURLResponse : NSObject {
  NSInteger statusCode() { return send<NSInteger>(this, "statusCode"_sel); }
};

inline constexpr NSInteger SLRequestMethodPOST = 1;

struct SLRequest : NSObject {
  static SLRequest* requestForServiceType(NSString* service, NSInteger method, NSURL* url,
                                          NSDictionary* parameters) {
    return send<SLRequest*>(objc::classOf<SLRequest>(),
                            "requestForServiceType:requestMethod:URL:parameters:"_sel, service,
                            method, url, parameters);
  }
  void setAccount(ACAccount* account) { send<void>(this, "setAccount:"_sel, account); }
  /// Returns at once; the handler is called on any thread. It may not be nil.
  void performRequestWithHandler(objc::Block<void(NSData*, NSHTTPURLResponse*, NSError*)> handler) {
    send<void>(this, "performRequestWithHandler:"_sel, handler);
  }
};

struct SLComposeViewController : UIViewController {
  static SLComposeViewController* composeViewControllerForServiceType(NSString* service) {
    return send<SLComposeViewController*>(objc::classOf<SLComposeViewController>(),
                                          "composeViewControllerForServiceType:"_sel, service);
  }
  /// NO once the sheet has been presented.
  bool setInitialText(NSString* text) { return send<bool>(this, "setInitialText:"_sel, text); }
};

/// The value of the framework's constant.
inline NSString* SLServiceTypeTwitter() { return "com.apple.social.twitter"_ns; }
