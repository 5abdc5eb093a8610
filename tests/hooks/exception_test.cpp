// An exception of the platform that is raised below a replacement and caught above it passes
// through, and the catcher continues.
#include <sys/wait.h>
#include <unistd.h>

#include <set>
#include <span>

#include "support/springboard.h"

namespace {

using namespace test;
using host::ProcessKind;

/// Sends a message as its callers do, with nil and zero as arguments.
using Send = void (*)(const void* receiver, SEL selector);

template <class R, class... A>
void message(const void* receiver, SEL selector) {
  objc::sendDynamic<R>(receiver, selector, A{}...);
}

/// A replaced method, and what raises below the replacement: the original method or, if the
/// replacement does not call that, one of the manager's.
struct Row {
  const char* name;  ///< as installed: "-[Class selector]"
  Send send;
  const char* managers = nullptr;
  const char* settings = "";
};

constexpr Send kPlain = &message<void>;
constexpr Send kAnswer = &message<NSObject*>;
constexpr Send kTakes = &message<void, NSObject*>;
constexpr Send kFramed = &message<NSObject*, CGRect>;
constexpr Send kPhase = &message<void, CGColorRef, CGPoint>;

constexpr Row kInterface[] = {
    {"-[UIStatusBarNewUIStyleAttributes initWithRequest:backgroundColor:foregroundColor:]",
     &message<NSObject*, NSObject*, UIColor*, UIColor*>},
    {"-[UIView tintColor]", kAnswer, "dye"},
    {"-[UIView setTintColor:]", kTakes},
    {"-[UISwitch layoutSubviews]", kPlain},
    {"-[UISwitch setOnTintColor:]", kTakes},
    {"-[UISwitch setTintColor:]", kTakes},
    {"-[UIKeyboard initWithFrame:]", kFramed},
    {"-[UIKBRenderConfig lightKeyboard]", &message<bool>, nullptr,
     "<key>keyboard_color_type</key><integer>1</integer>"},
};
constexpr Row kInstagram[] = {
    {"-[IGStringStyle linkColor]", kAnswer, "dye"},
    {"-[IGStringStyle setLinkColor:]", kTakes},
};
constexpr Row kMessages[] = {{"-[CKGradientView colors]", kAnswer}};
constexpr Row kTwitter[] = {
    {"+[UIColor twitterColorTextLink]", kAnswer, "dye"},
    {"+[UIColor twitterColorTextUsername]", kAnswer, "dye"},
    {"+[UIColor twitterColorTextTimestamp]", kAnswer, "dye"},
    {"+[UIColor twitterColorTextSocial]", kAnswer, "dye"},
    {"+[UIColor twitterColorTextLinkSubtle]", kAnswer, "dye"},
    {"+[UIColor twitterColorActivityTitle]", kAnswer, "dye"},
    {"+[UIColor twitterColorChangeTrendsLocationText]", kAnswer, "dye"},
};
constexpr Row kSpringBoard[] = {
    {"-[SBControlCenterContentContainerView _accessibilityBackgroundContrastDidChange:]", kTakes},
    {"-[SBControlCenterContentContainerView controlCenterWillPresent]", kPlain},
    {"-[SBControlCenterContentContainerView _updateBackground]", kPlain},
    {"-[SBControlCenterContentContainerView initWithFrame:]", kFramed},
    {"-[SBControlCenterContentContainerView dealloc]", kPlain},
    {"-[SBNotificationCenterViewController hostWillPresent]", kAnswer},
    {"-[SBNotificationCenterViewController initWithNibName:bundle:]",
     &message<NSObject*, NSString*, NSBundle*>},
    {"-[SBNotificationCenterViewController dealloc]", kPlain},
    {"-[SBNotificationCenterViewController _backgroundContrastDidChange:]", kTakes},
    {"-[SBFolderIconBackgroundView setWallpaperColor:phase:]", kPhase},
    {"-[SBIconBlurryBackgroundView setWallpaperColor:phase:]", kPhase},
    {"-[SBIconBlurryBackgroundView "
     "setWallpaperBackgroundRect:forContents:withFallbackColor:]",
     &message<void, CGRect, NSObject*, CGColorRef>},
    {"+[SBIconBadgeView _checkoutBackgroundImage]", kAnswer},
    {"-[SBHUDView layoutSubviews]", kPlain},
};

/// A process with the rows that are installed there in addition to the interface's.
struct Process {
  const char* bundle;
  ProcessKind kind;
  std::span<const Row> own;
};
constexpr Process kProcesses[] = {
    {"com.example.app", ProcessKind::application, kInterface},
    {"com.burbn.instagram", ProcessKind::application, kInstagram},
    {"com.apple.MobileSMS", ProcessKind::application, kMessages},
    {"com.atebits.Tweetie2", ProcessKind::application, kTwitter},
    {"com.apple.springboard", ProcessKind::springboard, kSpringBoard},
};

/// The parts of a row's name.
struct Method {
  explicit Method(std::string name) : isOfClass(name.front() == '+') {
    const std::size_t space = name.find(' ');
    className = name.substr(2, space - 2);
    selector = sel_registerName(name.substr(space + 1, name.size() - space - 2).c_str());
  }
  Class cls() const {
    return isOfClass ? objc_getMetaClass(className.c_str()) : objc_getClass(className.c_str());
  }
  bool isOfClass;
  std::string className;
  SEL selector;
};

/// Replaces any method, since it touches neither arguments nor result.
void raise(NSObject*, SEL selector) {
  throw host::runtime::Exception("NSGenericException", sel_getName(selector));
}

void makeRaise(Class cls, SEL selector) {
  IMP ignored = nullptr;
  MSHookMessageEx(cls, selector, reinterpret_cast<IMP>(&raise), &ignored);
}

class ExceptionsPass : public test::SpringBoard {
 protected:
  /// Runs in a process that has loaded the library for this row only. True if the exception came
  /// through, twice.
  bool passes(const Process& process, const Row& row) {
    const Method method(row.name);
    settings(row.settings);
    start(process.bundle, process.kind);
    if (row.managers == nullptr) makeRaise(method.cls(), method.selector);
    load();
    SEL raising = method.selector;
    if (row.managers != nullptr) {
      raising = sel_registerName(row.managers);
      makeRaise(objc_getClass("VNXManager"), raising);
    }
    // Not initialised, since that may raise; not released, for the same reason.
    Class cls = objc_getClass(method.className.c_str());
    const void* receiver =
        method.isOfClass ? static_cast<const void*>(cls) : send<NSObject*>(cls, "alloc"_sel);
    int caught = 0;
    for (int i = 0; i < 2; ++i) {
      try {
        row.send(receiver, method.selector);
      } catch (const host::runtime::Exception& exception) {
        caught += std::string(exception.what()).find(sel_getName(raising)) != std::string::npos;
      }
    }
    return caught == 2;
  }
  static int statusOf(const std::function<bool()>& check) {
    const pid_t child = fork();
    if (child == 0) _exit(check() ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    return status;
  }
};

TEST_F(ExceptionsPass, TheTableIsWhatIsInstalled) {
  for (const Process& process : kProcesses) {
    EXPECT_EQ(statusOf([&] {
                settings("");
                start(process.bundle, process.kind);
                load();
                std::set<std::string> rows;
                for (const auto group : {std::span<const Row>(kInterface), process.own})
                  for (const Row& row : group) rows.insert(std::string("hook ") + row.name);
                std::set<std::string> hooks;
                for (const std::string& line : installed)
                  if (line.starts_with("hook ")) hooks.insert(line);
                EXPECT_EQ(hooks, rows);
                return !HasFailure();
              }),
              0)
        << process.bundle;
  }
}

TEST_F(ExceptionsPass, EveryReplacement) {
#if defined(__arm__)
  GTEST_SKIP() << "there exceptions jump over frames, which this system's do not";
#endif
  for (const Process& process : kProcesses)
    for (const Row& row : process.own)
      EXPECT_EQ(statusOf([&] { return passes(process, row); }), 0) << row.name;
}

}  // namespace
