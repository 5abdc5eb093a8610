// Another extension has classes of the names that ours has, and is loaded before it or after it.
#include <algorithm>

#include "support/hosted.h"

namespace {

using namespace test;

constexpr const char* kGlobal = "<key>global_color</key><string>#112233</string>";
constexpr const char* kDyed = "#112233ff";

class SameNames : public Hosted {
 protected:
  void startApplication() {
    settings(kGlobal);
    start("com.example.app");
  }
  static void loadOther() { host::loadLibrary(VARNIX_SAME_NAMES); }
  static Class others(const char* symbol) {
    return *static_cast<Class*>(host::librarySymbol(VARNIX_SAME_NAMES, symbol));
  }
  static int numberOf(Class cls) {
    id object = send<id>(send<id>(cls, "alloc"_sel), "init"_sel);
    const int number = send<int>(object, "number"_sel);
    objc_release(object);
    return number;
  }
  static void expectBothWork() {
    EXPECT_EQ(hex(make<UIView>("UIView")->tintColor()), kDyed);
    EXPECT_EQ(numberOf(others("same_manager")), 7);
    EXPECT_EQ(numberOf(others("same_prefsManager")), 8);
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
  Class first = *static_cast<Class*>(host::librarySymbol(copy, "same_manager"));
  EXPECT_EQ(objc_getClass("VNXManager"), first);
  EXPECT_NE(first, others("same_manager"));
  EXPECT_EQ(numberOf(first), 7);
  EXPECT_EQ(numberOf(others("same_manager")), 7);
  EXPECT_EQ(numberOf(others("same_prefsManager")), 8);
  expectTold("VNXManager", copy, VARNIX_SAME_NAMES);
  expectTold("KTPrefsManager", copy, VARNIX_SAME_NAMES);
}

TEST_F(SameNames, LoadedAfterOursAreNot) {
  startApplication();
  load();
  loadOther();
  EXPECT_NE(objc_getClass("VNXManager"), others("same_manager"));
  EXPECT_NE(objc_getClass("KTPrefsManager"), others("same_prefsManager"));
  EXPECT_STREQ(class_getName(objc_getClass("VNXManager")), "VNXManager");
  expectBothWork();
  expectTold("VNXManager", VARNIX_LIBRARY, VARNIX_SAME_NAMES);
  expectTold("KTPrefsManager", VARNIX_LIBRARY, VARNIX_SAME_NAMES);
}

}  // namespace
