// Another extension has classes with the same names as ours, and is loaded before or after it.
#include <algorithm>

#include "support/springboard.h"
#include "varnix/pane.h"

namespace {

using namespace test;

constexpr const char* kGlobal = "<key>global_color</key><string>#112233</string>";
constexpr const char* kDyed = "#112233ff";

/// All our classes; the other extension's are numbered in this order, from 1.
constexpr const char* kOurs[] = {
    "KTPrefsManager",        "VXPrefsManager",           "VNXManager",         "CQColorPicker",
    "CQColorScheme",         "VarnixNowPlayingDelegate", "VarnixInstallation", "QKBarButtonItem",
    "QKTwitterShareHandler", "QKWelcomeTwitterHandler"};
class SameNames : public test::SpringBoard {
 protected:
  void startApplication() {
    settings(kGlobal);
    start("com.example.app");
  }
  static void loadOther() { host::loadLibrary(VARNIX_SAME_NAMES); }
  static Class others(int number, const std::string& file = VARNIX_SAME_NAMES) {
    return static_cast<Class*>(host::librarySymbol(file, "same_classes"))[number - 1];
  }
  static int numberOf(Class cls) {
    id object = send<id>(send<id>(cls, "alloc"_sel), "init"_sel);
    const int number = send<int>(object, "number"_sel);
    objc_release(object);
    return number;
  }
  static void expectOthersWork() {
    for (int number = 1; number <= 10; ++number)
      EXPECT_EQ(numberOf(others(number)), number) << kOurs[number - 1];
  }
  static void expectBothWork() {
    EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), kDyed);
    expectOthersWork();
  }
  void expectTold(const std::string& name, const std::string& first, const std::string& second) {
    const std::string line = "3 Class " + name + " is implemented in both " + first + " and " +
                             second + ". One of the two will be used. Which one is undefined.";
    const auto lines = log();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1) << line;
  }
};

TEST_F(SameNames, OfTwoExtensionsGoToTheFirst) {
  startApplication();
  const std::string copy = folder.path() + "/copy.so";
  std::filesystem::copy_file(VARNIX_SAME_NAMES, copy);
  host::loadLibrary(copy);
  loadOther();
  for (int number = 1; number <= 10; ++number) {
    Class first = others(number, copy);
    EXPECT_EQ(objc_getClass(kOurs[number - 1]), first);
    EXPECT_NE(first, others(number));
    EXPECT_EQ(numberOf(first), number);
    expectTold(kOurs[number - 1], copy, VARNIX_SAME_NAMES);
  }
  expectOthersWork();
}

TEST_F(SameNames, LoadedAfterOursAreNot) {
  startApplication();
  load();
  loadOther();
  for (int number = 1; number <= 10; ++number) {
    EXPECT_NE(objc_getClass(kOurs[number - 1]), others(number));
    expectTold(kOurs[number - 1], VARNIX_LIBRARY, VARNIX_SAME_NAMES);
  }
  expectBothWork();
}

TEST_F(SameNames, LoadedBeforeOursLeaveOursItsOwn) {
  startApplication();
  loadOther();
  load();
  for (int number = 1; number <= 10; ++number) {
    EXPECT_EQ(objc_getClass(kOurs[number - 1]), others(number));
    expectTold(kOurs[number - 1], VARNIX_SAME_NAMES, VARNIX_LIBRARY);
  }
  expectBothWork();
}

// The icon's colour uses the picker and its scheme.
TEST_F(SameNames, LoadedBeforeOursLeaveThePickerItsOwn) {
  icons["com.example.app"] = std::string(VARNIX_SAMPLES) + "/icons/com.example.mail.png";
  settings(integerEntry("global_color_type", 1));
  start("com.example.app");
  loadOther();
  load();
  EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), "#308ff7ff");
}

// A changed track reaches Control Centre through the delegate.
TEST_F(SameNames, LoadedBeforeOursLeaveTheDelegateItsOwn) {
  installNowPlaying();
  settings(boolEntry("use_album_art", true));
  startSpringBoard();
  loadOther();
  load();
  auto center = makeControlCenter();
  recordSettings();
  setTrack(nullptr, true);
  ASSERT_TRUE(eventually([] { return !writes().empty(); }));
  EXPECT_EQ(writes(), tinted("#de3027ff", "0.6"));
  expectOthersWork();
}

// What a pane calls creates our buttons and handlers.
TEST_F(SameNames, LoadedBeforeOursLeaveThePanesItsOwn) {
  startApplication();
  loadOther();
  load();
  auto* add = reinterpret_cast<decltype(&QKAddTwitterShareButton)>(
      host::librarySymbol(VARNIX_LIBRARY, "QKAddTwitterShareButton"));
  auto controller = objc::make<UIViewController>();
  add(controller, nullptr, string("text"));
  NSObject* item =
      send<NSObject*>(send(controller, UIViewController::navigationItem), "rightBarButtonItem"_sel);
  ASSERT_NE(item, nullptr);
  EXPECT_NE(object_getClass(item), others(8));
  EXPECT_STREQ(class_getName(object_getClass(item)), "QKBarButtonItem");
}

}  // namespace
