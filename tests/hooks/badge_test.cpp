// Badges: the platform's background in the dye, made again at every checkout.
#include <array>
#include <cstring>

#include "support/bitmaps.h"
#include "support/pictures.h"
#include "support/springboard.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

constexpr const char* kAccessoryImage = "SBIconAccessoryImage";

const std::string kGlobal = stringEntry("global_color", "#336699");

UIColor* noColor(NSObject*, SEL) { return nullptr; }

CGImageRef bitmapOf(UIImage* image) { return send<CGImageRef>(image, "CGImage"_sel); }
Bytes pixelsOf(UIImage* image) { return drawn(bitmapOf(image)); }

UIImage* checkout() {
  return send<UIImage*>(objc_getClass("SBIconBadgeView"), "_checkoutBackgroundImage"_sel);
}

std::array<CGFloat, 4> insets(UIImage* image, bool cap) {
  const auto i = cap ? send<UIEdgeInsets>(image, "capInsets"_sel)
                     : send<UIEdgeInsets>(image, "alignmentRectInsets"_sel);
  return {i.top, i.left, i.bottom, i.right};
}

/// Equal except for the colours.
void expectSameShape(UIImage* image, UIImage* expected) {
  EXPECT_EQ(insets(image, true), insets(expected, true));
  EXPECT_EQ(insets(image, false), insets(expected, false));
  EXPECT_EQ(send<CGFloat>(image, "scale"_sel), send<CGFloat>(expected, "scale"_sel));
  EXPECT_EQ(send<NSInteger>(image, "renderingMode"_sel),
            send<NSInteger>(expected, "renderingMode"_sel));
  EXPECT_TRUE(send<bool>(image, "_isResizable"_sel));
  EXPECT_EQ(CGImageGetWidth(bitmapOf(image)), CGImageGetWidth(bitmapOf(expected)));
  EXPECT_EQ(CGImageGetHeight(bitmapOf(image)), CGImageGetHeight(bitmapOf(expected)));
}

UIImage* platformBadge = nullptr;
UIImage* answerBadge(Class, SEL) { return platformBadge; }

class Badge : public test::SpringBoard {
 protected:
  /// SpringBoard with the platform's own background, which is fetched before the library is loaded.
  void badges(const std::string& entries) {
    settings(entries);
    startSpringBoard();
    platformBadge = checkout();
    ASSERT_NE(platformBadge, nullptr);
    load();
  }
  /// From here on the platform's background is whatever platformBadge is then. Call this before
  /// load().
  static void replaceBadge() {
    class_replaceMethod(objc_getMetaClass("SBIconBadgeView"), "_checkoutBackgroundImage"_sel,
                        reinterpret_cast<IMP>(&answerBadge), "@@:");
  }
};

TEST_F(Badge, IsThePlatformsInTheDye) {
  badges(stringEntry("global_color", "#ff0080"));
  UIImage* badge = checkout();
  EXPECT_STREQ(class_getName(object_getClass(badge)), kAccessoryImage);
  expectSameShape(badge, platformBadge);
  EXPECT_EQ(insets(badge, true), (std::array<CGFloat, 4>{11.5, 11.5, 11.5, 11.5}));
  const Bytes before = pixelsOf(platformBadge);
  const Bytes after = pixelsOf(badge);
  ASSERT_EQ(after.size(), 48U * 48 * 4);
  int soft = 0;
  for (std::size_t i = 0; i < after.size(); i += 4) {
    const int alpha = before[i + 3];
    if (alpha != 0 && alpha != 255) ++soft;
    ASSERT_EQ(after[i + 3], alpha) << i;
    ASSERT_EQ(after[i], alpha);
    ASSERT_EQ(after[i + 1], 0);
    ASSERT_NEAR(after[i + 2], alpha * 128 / 255.0, 1);
  }
  EXPECT_GT(soft, 0);
  EXPECT_EQ(pixelsOf(platformBadge), before);
  EXPECT_EQ(before[(24 * 48 + 24) * 4 + 1], 0x3b) << "a template, which keeps its own";
}

TEST_F(Badge, IsANewObjectOfEqualAppearanceEachTime) {
  badges(kGlobal);
  UIImage* first = checkout();
  UIImage* second = checkout();
  EXPECT_NE(first, second);
  EXPECT_NE(bitmapOf(first), bitmapOf(second));
  EXPECT_EQ(pixelsOf(first), pixelsOf(second));
  expectSameShape(first, second);
}

TEST_F(Badge, IsNotKept) {
  badges(kGlobal);
  Recorded<"dealloc", void()>::install(objc_getClass(kAccessoryImage));
  {
    objc::AutoreleasePool pool;
    ASSERT_NE(checkout(), nullptr);
    EXPECT_EQ(calls(), Lines());
  }
  EXPECT_EQ(calls(), Lines{"dealloc"});
}

TEST_F(Badge, FollowsTheDyeWhateverIsOff) {
  std::string entries = kGlobal;
  for (const char* element : {"statusbar", "folder", "cc", "nc", "sms", "keyboard", "volume"})
    entries += integerEntry(std::string(element) + "_color_type", 1);
  badges(entries);
  EXPECT_EQ(hex(send<UIColor*>(checkout(), "_coveredColor"_sel)), "#336699ff");
  settingsNow(stringEntry("global_color", "#804020") + stringEntry("folder_color", "#00ff00") +
              integerEntry("folder_color_type", 2));
  EXPECT_EQ(hex(send<UIColor*>(checkout(), "_coveredColor"_sel)), "#804020ff");
}

TEST_F(Badge, FollowsNeitherIconNorAlbum) {
  installNowPlaying();
  badges(boolEntry("use_album_art", true));
  settingsNow(kGlobal + boolEntry("use_album_art", true) + integerEntry("global_color_type", 1) +
              cachedIconColor("com.example.open", "#8000ffff"));
  setTrack(plainPicture(0x64, 0x64, 0xc8), true);
  open("com.example.open"_ns);
  EXPECT_EQ(hex(send<UIColor*>(checkout(), "_coveredColor"_sel)), "#336699ff");
}

TEST_F(Badge, AsksThePlatformFirstAndTheDyeOnce) {
  settings(kGlobal);
  startSpringBoard();
  Recorded<"_checkoutBackgroundImage", NSObject*()>::install(objc_getMetaClass("SBIconBadgeView"));
  load();
  Class managerClass = objc_getClass("VNXManager");
  Recorded<"dye", UIColor*()>::install(managerClass);
  Recorded<"folderEnabled", NSInteger()>::install(managerClass);
  Recorded<"folderDye", UIColor*()>::install(managerClass);
  for (int i = 0; i < 2; ++i) {
    calls().clear();
    ASSERT_NE(checkout(), nullptr);
    EXPECT_EQ(calls(), (Lines{"_checkoutBackgroundImage", "dye"}));
  }
}

TEST_F(Badge, KeepsInsetsScaleAndRenderingMode) {
  settings(kGlobal);
  startSpringBoard();
  replaceBadge();
  load();
  UIImage* plain = picture(6, 3, [](std::size_t x, std::size_t) {
    return Pixel{0, static_cast<std::uint8_t>(x), 0, static_cast<std::uint8_t>(x * 51)};
  });
  auto* image = send<UIImage*>(objc_getClass("UIImage"), "imageWithCGImage:scale:orientation:"_sel,
                               bitmapOf(plain), CGFloat{3}, NSInteger{0});
  image = send<UIImage*>(image, "imageWithAlignmentRectInsets:"_sel, UIEdgeInsets{1, 2, 3, 4});
  image = send<UIImage*>(image, "imageWithRenderingMode:"_sel, NSInteger{2});
  // No caps count as caps too: the copy stretches as well.
  for (const UIEdgeInsets& caps : {UIEdgeInsets{}, UIEdgeInsets{0.25, 0.5, 0.75, 1}}) {
    auto* badge = send<UIImage*>(image, "resizableImageWithCapInsets:"_sel, caps);
    platformBadge = caps.right == 0 ? image : badge;
    UIImage* result = checkout();
    EXPECT_STREQ(class_getName(object_getClass(result)), kAccessoryImage);
    expectSameShape(result, platformBadge);
    EXPECT_EQ(insets(result, true)[3], caps.right);
    EXPECT_EQ(insets(result, false), (std::array<CGFloat, 4>{1, 2, 3, 4}));
  }
}

TEST_F(Badge, IsTransparentWithoutADye) {
  badges(kGlobal);
  class_replaceMethod(objc_getClass("VNXManager"), "dye"_sel, reinterpret_cast<IMP>(&noColor),
                      "@@:");
  UIImage* badge = checkout();
  expectSameShape(badge, platformBadge);
  EXPECT_EQ(pixelsOf(badge), Bytes(48 * 48 * 4));
}

TEST_F(Badge, IsEmptyWhereThePlatformHasNone) {
  settings(kGlobal);
  startSpringBoard();
  replaceBadge();
  load();
  UIImage* badge = checkout();
  ASSERT_NE(badge, nullptr);
  EXPECT_EQ(bitmapOf(badge), nullptr);
}

TEST_F(Badge, StaysThePlatformsWithoutItsClass) {
  settings(kGlobal);
  startSpringBoard({kAccessoryImage});
  UIImage* before = checkout();
  load();
  ASSERT_NE(before, nullptr);
  EXPECT_EQ(checkout(), before);
  EXPECT_EQ(passedOver(), Lines{"+[SBIconBadgeView _checkoutBackgroundImage]: "
                                "no -[SBIconAccessoryImage initWithImage:]"});
}

TEST_F(Badge, CarriesTheKeyOfTheOneThatItReplaces) {
  badges(kGlobal);
  auto keyOf = [](UIImage* image) {
    return send(static_cast<SBIconAccessoryImage*>(image), SBIconAccessoryImage::countedMapKey);
  };
  ASSERT_NE(keyOf(platformBadge), nullptr);
  EXPECT_EQ(keyOf(checkout()), keyOf(platformBadge));
}

TEST_F(Badge, HasNoKeyWhereTheReplacedOneKnowsNone) {
  settings(kGlobal);
  startSpringBoard();
  platformBadge = checkout();
  platformBadge = UIImage::imageWithCGImage(bitmapOf(platformBadge));
  replaceBadge();
  load();
  auto* badge = static_cast<SBIconAccessoryImage*>(checkout());
  ASSERT_NE(badge, nullptr);
  EXPECT_EQ(send(badge, SBIconAccessoryImage::countedMapKey), nullptr);
}

}  // namespace
