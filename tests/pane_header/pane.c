// Calls every function, in C and in C++.
#include "varnix/pane.h"

int call(UIViewController *pane, UIColor *color, UIImage *image, NSString *text);

int call(UIViewController *pane, UIColor *color, UIImage *image, NSString *text) {
  PSSpecifier *footer = QKVersionCopyrightSpecifier(text, text, text);
  QKSetPrefsTint(pane, color);
  QKResetPrefsTint(pane);
  QKOpenMailAddress(text);
  QKShowTwitterFollowAlert(text, text, text);
  QKOpenTwitterUsername(text);
  QKAddTwitterShareButton(pane, image, text);
  return footer != 0 ? QKKillProcess(text, text) : 0;
}
