// Extensions that an Objective-C compiler wrote, beside ours: they replace the same methods, before
// ours or after it, for each way of hooking.
#include "support/compiled_library.h"
#include "support/hosted.h"

namespace {

using namespace test;
using host::runtime::Hooking;

constexpr const char* kGlobal = "<key>global_color</key><string>#112233</string>";
constexpr const char* kDyed = "#112233ff";
constexpr const char* kPlatforms = "#007affff";

enum class Order { oursFirst, oursLast };

struct Pair {
  const char* extension;
  Order order;
  Hooking hooking;
};

std::string nameOf(const testing::TestParamInfo<Pair>& info) {
  constexpr const char* kHooking[] = {"dynamic", "snapshot", "late"};
  return std::string(info.param.extension) +
         (info.param.order == Order::oursFirst ? "After_" : "Before_") +
         kHooking[static_cast<int>(info.param.hooking)];
}

class Beside : public Hosted, public testing::WithParamInterface<Pair> {
 protected:
  void SetUp() override {
    settings(kGlobal);
    hooking = GetParam().hooking;
    start("com.example.app");
    if (isOursFirst()) load();
    host::loadLibrary(file());
    if (!isOursFirst()) load();
  }
  static bool isOursFirst() { return GetParam().order == Order::oursFirst; }
  static bool looksUp() { return GetParam().hooking == Hooking::dynamic; }
  static int counted(const char* counter) {
    return *static_cast<int*>(host::librarySymbol(file(), counter));
  }

 private:
  static std::string file() {
    return compiledLibrary(std::string("beside_") + GetParam().extension);
  }
};

TEST_P(Beside, ViewsAreDyed) {
  EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), kDyed);
  // Ours answers by itself, whatever was there before.
  EXPECT_EQ(counted("besideTints"), isOursFirst() ? 1 : 0);
}

// The slider inherits its tint. An earlier snapshot does not hear of ours.
TEST_P(Beside, SlidersAreDyedUnlessASnapshotIsOlderThanOurs) {
  const bool isPassedOver = !isOursFirst() && !looksUp();
  EXPECT_EQ(hex(send(make<UIView>("UISlider"), UIView::tintColor)),
            isPassedOver ? kPlatforms : kDyed);
  EXPECT_EQ(counted("besideSliderTints"), 1);
  EXPECT_EQ(counted("besideTints"), isOursFirst() || isPassedOver ? 1 : 0);
}

TEST_P(Beside, SwitchesAreDyedAndBothHearOfTheirLayout) {
  auto* view = make<UIView>("UISwitch");
  send<void>(view, "layoutSubviews"_sel);
  EXPECT_EQ(hex(send<UIColor*>(view, "onTintColor"_sel)), kDyed);
  // Ours keeps a snapshot of what the views' layout was before theirs.
  EXPECT_EQ(counted("besideLayouts"), isOursFirst() && !looksUp() ? 0 : 1);
  EXPECT_EQ(counted("besideOnTints"), 1);
}

TEST_P(Beside, TheirExceptionsEndInTheirHandlers) {
  auto* view = make<UIView>("UISwitch");
  for (int i = 0; i < 3; ++i)
    send<void>(view, "setOnTintColor:"_sel, static_cast<UIColor*>(nullptr));
  EXPECT_EQ(counted("besideCaught"), 3);
  EXPECT_EQ(hex(send<UIColor*>(view, "onTintColor"_sel)), kDyed);
}

TEST_P(Beside, OtherViewsKeepTheirLayout) {
  auto* view = make<UIView>("UISlider");
  send<void>(view, "layoutSubviews"_sel);
  send<void>(view, "layoutSubviews"_sel);
  EXPECT_EQ(counted("besideLayouts"), 2);
}

std::vector<Pair> allPairs() {
  std::vector<Pair> pairs;
  for (const char* extension : {"arc", "manual"})
    for (const Order order : {Order::oursFirst, Order::oursLast})
      for (const Hooking hooking : {Hooking::dynamic, Hooking::snapshot, Hooking::late})
        pairs.push_back({extension, order, hooking});
  return pairs;
}

INSTANTIATE_TEST_SUITE_P(All, Beside, testing::ValuesIn(allPairs()), &nameOf);

}  // namespace
