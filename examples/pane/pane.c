/* A settings pane's dealings with the library, in plain C: copy it, and change the constants. In
 * Objective-C a string is @"..." and the calls are the same. */
#include "pane.h"

#include <stddef.h>

/* What the run-time offers to C. */
void *objc_getClass(const char *name);
void *sel_registerName(const char *name);
void objc_msgSend(void);

static NSString *string(const char *text) {
  typedef NSString *(*Send)(void *receiver, void *selector, const char *text);
  Send send = (Send)objc_msgSend;
  return send(objc_getClass("NSString"), sel_registerName("stringWithUTF8String:"), text);
}

#if defined(__LP64__)
typedef double Component;
#else
typedef float Component;
#endif

static UIColor *orange(void) {
  typedef UIColor *(*Send)(void *receiver, void *selector, Component red, Component green,
                           Component blue, Component alpha);
  Send send = (Send)objc_msgSend;
  return send(objc_getClass("UIColor"), sel_registerName("colorWithRed:green:blue:alpha:"), 1,
              (Component)0.58, 0, 1);
}

/* viewDidLoad */
void examplePaneDidLoad(UIViewController *controller) {
  QKAddTwitterShareButton(controller, NULL, string("My phone is orange, thanks to Varnix."));
}

/* viewWillAppear: and viewWillDisappear: -- the navigation bar is shared with the other panes. */
void examplePaneWillAppear(UIViewController *controller) {
  QKSetPrefsTint(controller, orange());
}

void examplePaneWillDisappear(UIViewController *controller) { QKResetPrefsTint(controller); }

/* specifiers */
PSSpecifier *examplePaneFooter(void) {
  return QKVersionCopyrightSpecifier(string("com.quillmarsh.varnix2"), string("Quillmarsh"),
                                     string("2015"));
}

int examplePaneRestart(void) { return QKKillProcess(NULL, string("SpringBoard")); }

void examplePaneWrite(void) { QKOpenMailAddress(string("varnix@quillmarsh.example")); }

void examplePaneFollow(void) {
  QKShowTwitterFollowAlert(string("Varnix"), NULL, string("quillmarsh"));
}

void examplePaneProfile(void) { QKOpenTwitterUsername(string("quillmarsh")); }
