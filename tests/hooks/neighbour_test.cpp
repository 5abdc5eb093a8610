// Another extension that replaces the same methods as ours, loaded before or after it, for each way
// of hooking.
#include "support/hosted.h"

namespace {

using namespace test;
using host::runtime::Hooking;

constexpr const char* kGlobal = "<key>global_color</key><string>#112233</string>";
constexpr const char* kDyed = "#112233ff";
constexpr const char* kPlatforms = "#007affff";

/// A view's tint, and how often the question passed through the neighbour's replacements.
struct Asked {
  std::string color;
  int viewTints;
  int sliderTints;
  bool operator==(const Asked&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Asked& asked) {
  return out << asked.color << " by " << asked.viewTints << " and " << asked.sliderTints;
}

class Neighbours : public Hosted {
 protected:
  void startWith(std::optional<Hooking> how) {
    settings(kGlobal);
    hooking = how;
    start("com.example.app");
  }
  void oursThenTheirs(std::optional<Hooking> how = {}) {
    startWith(how);
    load();
    host::loadLibrary(VARNIX_NEIGHBOUR);
  }
  void theirsThenOurs(std::optional<Hooking> how = {}) {
    startWith(how);
    host::loadLibrary(VARNIX_NEIGHBOUR);
    load();
  }
  static int& counter(const char* name) {
    return *static_cast<int*>(host::librarySymbol(VARNIX_NEIGHBOUR, name));
  }
  static Asked tintOf(const char* className) {
    int& viewTints = counter("neighbour_viewTints");
    int& sliderTints = counter("neighbour_sliderTints");
    viewTints = sliderTints = 0;
    const std::string color = hex(send(make<UIView>(className), UIView::tintColor));
    return {color, viewTints, sliderTints};
  }
  static int layoutsSeenOf(const char* className) {
    int& layouts = counter("neighbour_viewLayouts");
    layouts = 0;
    send<void>(make<UIView>(className), "layoutSubviews"_sel);
    return layouts;
  }
};

// These hold for each way of hooking: the suite runs with all of them.

TEST_F(Neighbours, LoadedAfterOursTheySaveOurReplacement) {
  oursThenTheirs();
  EXPECT_EQ(tintOf("UIView"), (Asked{kDyed, 1, 0}));
}

TEST_F(Neighbours, LoadedBeforeOursTheyAreAskedOnlyWhereOursPassesOn) {
  theirsThenOurs();
  EXPECT_EQ(tintOf("UIView"), (Asked{kDyed, 0, 0}));
}

TEST_F(Neighbours, LoadedBeforeOursTheySeeTheLayoutOfSwitches) {
  theirsThenOurs();
  EXPECT_EQ(layoutsSeenOf("UISwitch"), 1);
}

TEST_F(Neighbours, SwitchesAreDyedWhateverIsBesideOurs) {
  theirsThenOurs();
  auto* view = make<UIView>("UISwitch");
  send<void>(view, "layoutSubviews"_sel);
  EXPECT_EQ(hex(send<UIColor*>(view, "onTintColor"_sel)), kDyed);
}

// These are about one way of hooking.

TEST_F(Neighbours, LoadedAfterOursAnInheritedMethodGoesToOursAndToTheirsInTheSuperclass) {
  oursThenTheirs(Hooking::dynamic);
  EXPECT_EQ(tintOf("UISlider"), (Asked{kDyed, 1, 1}));
}

// The neighbour replaces UIView's before UISlider's.
TEST_F(Neighbours, LoadedAfterOursASnapshotHoldsWhatTheSuperclassHadByThen) {
  oursThenTheirs(Hooking::snapshot);
  EXPECT_EQ(tintOf("UISlider"), (Asked{kDyed, 1, 1}));
}

TEST_F(Neighbours, LoadedBeforeOursAnInheritedMethodStillFindsOursInTheSuperclass) {
  theirsThenOurs(Hooking::dynamic);
  EXPECT_EQ(tintOf("UISlider"), (Asked{kDyed, 0, 1}));
}

TEST_F(Neighbours, LoadedBeforeOursASnapshotOfAnInheritedMethodPassesOursOver) {
  theirsThenOurs(Hooking::snapshot);
  EXPECT_EQ(tintOf("UISlider"), (Asked{kPlatforms, 1, 1}));
}

TEST_F(Neighbours, LoadedBeforeOursALateSnapshotPassesOursOverToo) {
  theirsThenOurs(Hooking::late);
  EXPECT_EQ(tintOf("UISlider"), (Asked{kPlatforms, 1, 1}));
}

// Ours replaces the layout of UISwitch, which inherits it from UIView.
TEST_F(Neighbours, LoadedAfterOursTheySeeTheLayoutOfSwitchesOnlyWhereOursLooksThemUp) {
  oursThenTheirs(Hooking::dynamic);
  EXPECT_EQ(layoutsSeenOf("UISwitch"), 1);
  EXPECT_EQ(layoutsSeenOf("UISlider"), 1);
}

TEST_F(Neighbours, LoadedAfterOursTheyMissTheLayoutOfSwitchesWhereOursKeptASnapshot) {
  oursThenTheirs(Hooking::snapshot);
  EXPECT_EQ(layoutsSeenOf("UISwitch"), 0);
  EXPECT_EQ(layoutsSeenOf("UISlider"), 1);
}

TEST_F(Neighbours, LoadedAfterOursTheyMissTheLayoutOfSwitchesWhereOursKeptALateSnapshot) {
  oursThenTheirs(Hooking::late);
  EXPECT_EQ(layoutsSeenOf("UISwitch"), 0);
}

TEST_F(Neighbours, AWrongWordInTheEnvironmentStartsNoProcess) {
  setenv("VARNIX_HOOKING", "sometimes", 1);
  try {
    start("com.example.app");
    FAIL() << "it started";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "VARNIX_HOOKING: not a way of hooking: sometimes");
  }
}

}  // namespace
