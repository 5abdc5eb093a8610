// Another extension: prints a view's tint when it is loaded and after each change of the settings.
#include <cmath>
#include <cstdio>

#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "platform/CoreFoundation.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

namespace {

unsigned byteOf(CGFloat component) { return static_cast<unsigned>(std::lround(component * 255)); }

void show() {
  objc::AutoreleasePool pool;
  auto view = Strong<UIView>::adopt(send<UIView*>(objc::alloc<UIView>(), "init"_sel));
  CGFloat c[4] = {};
  send<bool>(send(view, UIView::tintColor), "getRed:green:blue:alpha:"_sel, &c[0], &c[1], &c[2],
             &c[3]);
  std::printf("dye #%02x%02x%02x%02x\n", byteOf(c[0]), byteOf(c[1]), byteOf(c[2]), byteOf(c[3]));
  std::fflush(stdout);
}

void changed(CFNotificationCenterRef, void*, CFStringRef, const void*, CFDictionaryRef) { show(); }

[[gnu::constructor]] void start() {
  objc::AutoreleasePool pool;
  show();
  CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), nullptr, changed,
                                  "com.quillmarsh.varnix2.changed"_ns, nullptr,
                                  CFNotificationSuspensionBehavior::coalesce);
}

}  // namespace
