// The example pane in Objective-C: its store is a subclass of ours, and ours tints it.
#include "support/compiled_library.h"
#include "support/hosted.h"

namespace {

using namespace test;

constexpr NSUInteger kAllEdges = 15, kBottomEdge = 4;

class CompiledPane : public Hosted {
 protected:
  /// The pane's controller, after it has appeared.
  UIViewController* shown(const std::string& entries) {
    settings(entries);
    start("com.apple.Preferences");
    load();
    const std::string file = compiledLibrary("beside_pane");
    host::loadLibrary(file);
    auto* appear = reinterpret_cast<void (*)(UIViewController*, UIColor*)>(
        host::librarySymbol(file, "ExamplePaneWillAppear"));
    auto* pane = make<UIViewController>("UIViewController");
    appear(pane, rgb(0.25, 0.5, 0.75));
    return pane;
  }
  static NSUInteger edgesOf(UIViewController* pane) {
    return send<NSUInteger>(pane, "edgesForExtendedLayout"_sel);
  }
};

TEST_F(CompiledPane, IsTintedWhereOurSettingsSaySo) {
  EXPECT_EQ(edgesOf(shown("<key>enabled</key><true/>")), kBottomEdge);
}

TEST_F(CompiledPane, IsLeftAloneWhereTheyDoNot) {
  EXPECT_EQ(edgesOf(shown("<key>enabled</key><false/>")), kAllEdges);
}

TEST_F(CompiledPane, KeepsAStoreOfItsOwn) {
  shown("<key>enabled</key><true/>");
  Class store = objc_getClass("ExampleStore");
  EXPECT_EQ(class_getSuperclass(store), objc_getClass("KTPrefsManager"));
  auto* shared = send<NSObject*>(store, "sharedStore"_sel);
  EXPECT_EQ(send<NSObject*>(store, "sharedStore"_sel), shared);
  EXPECT_EQ(object_getClass(shared), store);
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(settingsPath()).parent_path() /
                                      "com.example.pane.plist"));
}

}  // namespace
