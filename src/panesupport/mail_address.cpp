// Opens a mail address in the mail application.
#include "platform/UIKit.h"
#include "varnix/pane.h"

void QKOpenMailAddress(NSString* address) {
  if (address == nullptr) return;
  NSURL* url = NSURL::URLWithString(send("mailto:"_ns, NSString::stringByAppendingString, address));
  if (url == nullptr) return;
  send(UIApplication::sharedApplication(), UIApplication::openURL, url);
}
