// The share button: how it looks, what it contains, what a tap does, and a larger superclass.
#include "objc/define.h"
#include "panesupport/QKBarButtonItem.h"
#include "runtime/runtime.h"
#include "support/follow.h"

namespace {

using test::Follow;
using test::words;

/// Replaces a string, so that its end can be observed.
struct ShareFixtureText : NSObject {
  static inline int gone = 0;
  void dealloc() {
    ++gone;
    sendSuper<void>(this, "dealloc"_sel);
  }
};

}  // namespace

OBJC_CLASS(ShareFixtureText, NSObject, objc::Method<"dealloc", &ShareFixtureText::dealloc>)

namespace {

int controllersGone = 0;
constinit objc::Hook<NSObject::dealloc> controllerDealloc;
void countController(NSObject* self, SEL command) {
  ++controllersGone;
  controllerDealloc.original(self, command);
}

class PanesupportShare : public Follow {
 protected:
  void settings() {
    settingsApplication();
    controllerDealloc.install<&countController>(objc_getClass("UIViewController"),
                                                NSObject::dealloc);
  }
  static Strong<UIViewController> makeController() {
    return Strong<UIViewController>::adopt(send<UIViewController*>(
        send<NSObject*>(objc_getClass("UIViewController"), "alloc"_sel), "init"_sel));
  }
  static void add(UIViewController* controller, UIImage* image, NSString* text) {
    exported<void(UIViewController*, UIImage*, NSString*)>("QKAddTwitterShareButton")(controller,
                                                                                      image, text);
  }
  static NSObject* button(UIViewController* controller) {
    return send(send(controller, UIViewController::navigationItem),
                UINavigationItem::rightBarButtonItem);
  }
  static UIViewController* presented(UIViewController* controller) {
    return send<UIViewController*>(controller, "presentedViewController"_sel);
  }
  static std::ptrdiff_t offset(const char* name) {
    return ivar_getOffset(class_getInstanceVariable(objc_getClass("QKBarButtonItem"), name));
  }
};

TEST_F(PanesupportShare, MakesTheRightHandButton) {
  settings();
  auto controller = makeController();
  auto* image = test::make<UIImage>("UIImage");
  add(controller, image, "Look at this"_ns);
  NSObject* item = button(controller);
  ASSERT_NE(item, nullptr);
  EXPECT_STREQ(class_getName(item->isa), "QKBarButtonItem");
  EXPECT_EQ(send<UIImage*>(item, "image"_sel), image);
  EXPECT_EQ(send<NSInteger>(item, "style"_sel), 0);
  EXPECT_EQ(send<NSObject*>(item, "target"_sel),
            send<NSObject*>(objc_getClass("QKTwitterShareHandler"), "sharedInstance"_sel));
  EXPECT_EQ(send<SEL>(item, "action"_sel), "shareTapped:"_sel.get());
  EXPECT_EQ(test::answer(item, "shareText"_sel), "Look at this");
  EXPECT_EQ(send<UIViewController*>(item, "container"_sel), controller.get());
}

TEST_F(PanesupportShare, HasAnEmptyBackground) {
  settings();
  auto controller = makeController();
  add(controller, nullptr, "text"_ns);
  auto* background = send<UIImage*>(button(controller), "backgroundImageForState:barMetrics:"_sel,
                                    NSUInteger{0}, NSInteger{0});
  ASSERT_NE(background, nullptr);
  const auto size = send<CGSize>(background, "size"_sel);
  EXPECT_EQ(size.width, 20);
  EXPECT_EQ(size.height, 20);
  // A context of scale zero uses the screen's scale.
  UIGraphicsBeginImageContextWithOptions({1, 1}, false, 0);
  auto* sample = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  EXPECT_EQ(send<CGFloat>(background, "scale"_sel), send<CGFloat>(sample, "scale"_sel));
  // Drawn over red, it does not change it.
  UIGraphicsBeginImageContextWithOptions({20, 20}, true, 1);
  send<void>(send<UIColor*>(objc_getClass("UIColor"), "redColor"_sel), "set"_sel);
  CGContextFillRect(UIGraphicsGetCurrentContext(), {{0, 0}, {20, 20}});
  auto* before = UIGraphicsGetImageFromCurrentImageContext();
  send(background, UIImage::drawInRect, {{0, 0}, {20, 20}});
  auto* after = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  EXPECT_TRUE(send(UIImageJPEGRepresentation(before, 1), NSObject::isEqual,
                   UIImageJPEGRepresentation(after, 1)));
  EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
}

TEST_F(PanesupportShare, PresentsTheSheetFromTheContainer) {
  settings();
  auto controller = makeController();
  add(controller, nullptr, "Look at this"_ns);
  send<void>(button(controller), "_press"_sel);
  auto* sheet = presented(controller);
  ASSERT_NE(sheet, nullptr);
  EXPECT_STREQ(class_getName(sheet->isa), "SLComposeViewController");
  EXPECT_EQ(test::answer(sheet, "serviceType"_sel), "com.apple.social.twitter");
  EXPECT_EQ(test::answer(sheet, "_initialText"_sel), "Look at this");
  EXPECT_TRUE(send<bool>(sheet, "_presentationIsAnimated"_sel));
}

TEST_F(PanesupportShare, ReplacesAnEarlierButton) {
  settings();
  auto controller = makeController();
  add(controller, nullptr, "one"_ns);
  NSObject* first = button(controller);
  add(controller, nullptr, "two"_ns);
  EXPECT_NE(button(controller), first);
  EXPECT_EQ(test::answer(button(controller), "shareText"_sel), "two");
}

TEST_F(PanesupportShare, TakesNil) {
  settings();
  add(nullptr, nullptr, nullptr);
  auto controller = makeController();
  add(controller, nullptr, nullptr);
  send<void>(button(controller), "_press"_sel);
  EXPECT_EQ(test::answer(presented(controller), "_initialText"_sel), "nil");
  auto* handler = send<NSObject*>(objc_getClass("QKTwitterShareHandler"), "sharedInstance"_sel);
  send<void>(handler, "shareTapped:"_sel, static_cast<NSObject*>(nullptr));
}

TEST_F(PanesupportShare, HoldsItsTextAndNotItsContainer) {
  settings();
  auto item = Strong<NSObject>();
  {
    const objc::AutoreleasePool pool;
    auto controller = makeController();
    add(controller, nullptr, static_cast<NSString*>(test::make<NSObject>("ShareFixtureText")));
    item = Strong<NSObject>::retain(button(controller));
  }
  EXPECT_EQ(controllersGone, 1);
  EXPECT_EQ(ShareFixtureText::gone, 0);
  send<void>(item, "setShareText:"_sel, "another"_ns);
  EXPECT_EQ(ShareFixtureText::gone, 1);
  {
    const objc::AutoreleasePool pool;
    send<void>(item, "setShareText:"_sel,
               static_cast<NSString*>(test::make<NSObject>("ShareFixtureText")));
  }
  item = nullptr;
  EXPECT_EQ(ShareFixtureText::gone, 2);
}

constinit objc::Hook<QKBarButtonItem::setShareText> setShareText;
bool clearsShareText = false;
void noteShareText(QKBarButtonItem* self, SEL command, NSString* text) {
  clearsShareText = text == nullptr;
  setShareText.original(self, command, text);
}

TEST_F(PanesupportShare, ClearsItsTextInTheEnd) {
  settings();
  setShareText.install<&noteShareText>(objc_getClass("QKBarButtonItem"),
                                       QKBarButtonItem::setShareText);
  {
    const objc::AutoreleasePool pool;
    auto controller = makeController();
    add(controller, nullptr, "text"_ns);
    EXPECT_FALSE(clearsShareText);
  }
  EXPECT_TRUE(clearsShareText);
}

TEST_F(PanesupportShare, SharesNothingWithoutTheFramework) {
  start("com.example.app");
  load();
  auto controller = makeController();
  add(controller, nullptr, "text"_ns);
  send<void>(button(controller), "_press"_sel);
  EXPECT_EQ(presented(controller), nullptr);
}

TEST_F(PanesupportShare, LoadsTheFrameworkOnATap) {
  installFramework("Social");
  start("com.example.app");
  load();
  auto controller = makeController();
  add(controller, nullptr, "text"_ns);
  EXPECT_EQ(objc_getClass("SLComposeViewController"), nullptr);
  send<void>(button(controller), "_press"_sel);
  EXPECT_EQ(test::answer(presented(controller), "_initialText"_sel), "text");
}

// The platform's class has grown since the library was compiled: its new variables must not overlap
// ours.
class PanesupportShareGrown : public PanesupportShare {
 protected:
  static constexpr std::uint32_t kGrown = 40;
  /// Settings on a platform whose buttons are that many bytes larger.
  void grownSettings() {
    start("com.apple.Preferences");
    before_ = class_getInstanceSize(objc_getClass("UIBarButtonItem"));
    host::runtime::growClass("UIBarButtonItem", kGrown);
    load();
  }
  std::size_t before_ = 0;
};

TEST_F(PanesupportShareGrown, KeepsApartFromTheNewVariables) {
  grownSettings();
  EXPECT_GE(offset("_shareText"), static_cast<std::ptrdiff_t>(before_ + kGrown));
  EXPECT_EQ(offset("_container"), offset("_shareText") + std::ptrdiff_t{sizeof(void*)});
  auto controller = makeController();
  {
    const objc::AutoreleasePool pool;
    add(controller, nullptr, static_cast<NSString*>(test::make<NSObject>("ShareFixtureText")));
    send<void>(button(controller), "setTitle:"_sel, "Share"_ns);
    auto* item = reinterpret_cast<char*>(button(controller));
    // Plays the platform, which writes to its new variables again and again.
    for (std::size_t i = 0; i < kGrown; ++i) item[before_ + i] = '\xa5';
    EXPECT_EQ(send<UIViewController*>(button(controller), "container"_sel), controller.get());
    auto* text = send<NSObject*>(button(controller), "shareText"_sel);
    ASSERT_STREQ(class_getName(object_getClass(text)), "ShareFixtureText");
    send<void>(button(controller), "setContainer:"_sel, static_cast<UIViewController*>(nullptr));
    send<void>(button(controller), "setShareText:"_sel, static_cast<NSString*>(text));
    for (std::size_t i = 0; i < kGrown; ++i) EXPECT_EQ(item[before_ + i], '\xa5') << i;
    EXPECT_EQ(test::answer(button(controller), "title"_sel), "Share");
  }
  EXPECT_EQ(ShareFixtureText::gone, 0);
  {
    const objc::AutoreleasePool pool;
    send(send(controller, UIViewController::navigationItem),
         UINavigationItem::setRightBarButtonItem, nullptr);
  }
  EXPECT_EQ(ShareFixtureText::gone, 1);
}

TEST_F(PanesupportShareGrown, SharesAsEver) {
  grownSettings();
  auto controller = makeController();
  add(controller, nullptr, "Look at this"_ns);
  send<void>(button(controller), "_press"_sel);
  EXPECT_EQ(test::answer(presented(controller), "_initialText"_sel), "Look at this");
}

TEST_F(PanesupportShare, HasNoButtonInAProcessWithoutUIKit) {
  start("com.example.daemon", host::ProcessKind::daemon);
  load();
  EXPECT_EQ(objc_getClass("QKBarButtonItem"), nullptr);
  for (const char* name : {"KTPrefsManager", "VNXManager", "CQColorPicker",
                           "QKWelcomeTwitterHandler", "QKTwitterShareHandler"})
    EXPECT_NE(objc_getClass(name), nullptr) << name;
  auto* handler = send<NSObject*>(objc_getClass("QKTwitterShareHandler"), "sharedInstance"_sel);
  EXPECT_NE(handler, nullptr);
  EXPECT_NE(test::manager(), nullptr);
  add(nullptr, nullptr, "text"_ns);
  send<void>(handler, "shareTapped:"_sel, static_cast<NSObject*>(nullptr));
}

}  // namespace
