// Opens a mail address in the application for mail.
#include "platform/UIKit.h"
#include "varnix/pane.h"

void QKOpenMailAddress(NSString* address) {
  if (address == nullptr) return;
  NSURL* url = NSURL::URLWithString("mailto:"_ns->stringByAppendingString(address));
  if (url == nullptr) return;
  send<bool>(UIApplication::sharedApplication(), "openURL:"_sel, url);
}
