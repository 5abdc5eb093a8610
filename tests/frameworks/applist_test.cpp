// The application list's icons, requested as the library does.
#include "platform/AppList.h"

#include <array>

#include "objc/autorelease_pool.h"
#include "objc/owned.h"
#include "support/hosted.h"
#include "support/image_files.h"

namespace {

class AppList : public test::Hosted {
 protected:
  std::string write(const std::string& name, const std::string& bytes) const {
    const std::filesystem::path path = folder.path() + "/" + name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  static UIImage* icon(NSObject* identifier, NSUInteger size = ALApplicationIconSizeLarge) {
    return send<UIImage*>(ALApplicationList::sharedApplicationList(),
                          "iconOfSize:forDisplayIdentifier:"_sel, size, identifier);
  }
  static UIImage* icon(const std::string& identifier) {
    return icon(test::string(identifier.c_str()));
  }
};

CGImageRef bitmap(UIImage* image) { return send<CGImageRef>(image, "CGImage"_sel); }

/// The red, green, blue and alpha of one pixel, premultiplied, of the image stretched to 16 x 16.
std::array<int, 4> pixel(UIImage* image, int x, int y) {
  std::array<std::uint8_t, std::size_t{16} * 16 * 4> bytes{};
  const objc::Owned<CGColorSpaceRef, CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
  const objc::Owned<CGContextRef, CGContextRelease> context(
      CGBitmapContextCreate(bytes.data(), 16, 16, 8, 64, space,
                            kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big));
  CGContextDrawImage(context, {{0, 0}, {16, 16}}, bitmap(image));
  std::array<int, 4> result{};
  for (std::size_t i = 0; i < 4; ++i)
    result[i] = bytes[static_cast<std::size_t>(y * 64 + x * 4) + i];
  return result;
}

TEST_F(AppList, ThereIsOneList) {
  start("com.example.app");
  auto* list = ALApplicationList::sharedApplicationList();
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list, ALApplicationList::sharedApplicationList());
}

TEST_F(AppList, SpringBoardHasItToo) {
  start("com.apple.springboard", host::ProcessKind::springboard);
  EXPECT_NE(ALApplicationList::sharedApplicationList(), nullptr);
}

TEST_F(AppList, ADaemonHasNoList) {
  start("com.apple.daemon", host::ProcessKind::daemon);
  EXPECT_EQ(ALApplicationList::sharedApplicationList(), nullptr);
}

TEST_F(AppList, IconsLieInTheContainer) {
  write("Applications/com.example.app.png", test::plainPng(20, 10, 200, 30));
  start("com.example.app");
  objc::AutoreleasePool pool;
  UIImage* image = icon("com.example.app");
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(CGImageGetWidth(bitmap(image)), 118U);
  EXPECT_EQ(CGImageGetHeight(bitmap(image)), 118U);
  EXPECT_EQ(pixel(image, 8, 8), (std::array<int, 4>{10, 200, 30, 255}));
  EXPECT_EQ(icon("com.example.app"), image);  // kept once it has come
  EXPECT_EQ(CGImageGetWidth(bitmap(icon(test::string("com.example.app"), 29))), 58U);
  EXPECT_EQ(icon("com.example.other"), nullptr);
}

TEST_F(AppList, AChosenFileComesFirst) {
  write("Applications/com.example.app.png", test::plainPng(20, 255, 0, 0));
  icons["com.example.app"] = write("blue", test::plainPng(20, 0, 0, 255));
  icons["with/slash"] = icons["com.example.app"];
  start("com.example.app");
  objc::AutoreleasePool pool;
  ASSERT_NE(icon("com.example.app"), nullptr);
  EXPECT_EQ(pixel(icon("com.example.app"), 3, 3), (std::array<int, 4>{0, 0, 255, 255}));
  EXPECT_EQ(icon("with/slash"), nullptr);
}

TEST_F(AppList, CornersStayTransparent) {
  icons["com.example.music"] = VARNIX_SAMPLES "/icons/com.example.music.png";
  start("com.example.app");
  objc::AutoreleasePool pool;
  UIImage* image = icon("com.example.music");
  ASSERT_NE(image, nullptr);
  EXPECT_LT(pixel(image, 0, 0)[3], 128);
  EXPECT_EQ(pixel(image, 8, 1)[3], 255);
  // Upright: the gradient runs from pink to red.
  EXPECT_GT(pixel(image, 3, 1)[1], pixel(image, 3, 14)[1] + 30);
}

TEST_F(AppList, EverySampleIsAnIcon) {
  int count = 0;
  for (const auto& file : std::filesystem::directory_iterator(VARNIX_SAMPLES "/icons")) {
    if (file.path().extension() == ".png") icons[file.path().stem()] = file.path();
  }
  start("com.example.app");
  objc::AutoreleasePool pool;
  for (const auto& [identifier, file] : icons) {
    EXPECT_NE(icon(identifier), nullptr) << identifier;
    ++count;
  }
  EXPECT_EQ(count, 8);
}

TEST_F(AppList, WhatIsNoIconIsNil) {
  const std::string sound = test::plainPng(20, 1, 2, 3);
  write("Applications/truncated.png", sound.substr(0, sound.size() / 2));
  write("Applications/empty.png", "");
  write("Applications/text.png", "not an image");
  write("Applications/folder.png/x", "");
  write("outside.png", sound);
  write("Applications/..png", sound);
  write("Applications/.png", sound);
  icons["missing"] = folder.path() + "/missing.png";
  icons["device"] = "/dev/zero";
  icons[""] = write("sound.png", sound);
  start("com.example.app");
  objc::AutoreleasePool pool;
  for (const char* identifier : {"truncated", "empty", "text", "folder", "missing", "device", "",
                                 "../outside", "/", "a/b", "unknown"}) {
    EXPECT_EQ(icon(identifier), nullptr) << identifier;
  }
  EXPECT_EQ(icon(std::string(100'000, 'x')), nullptr);
  EXPECT_EQ(icon(static_cast<NSObject*>(nullptr)), nullptr);
  EXPECT_EQ(icon(NSNumber::numberWithDouble(3)), nullptr);
  EXPECT_EQ(icon(NSMutableArray::array()), nullptr);
  EXPECT_EQ(icon(NSData::dataWithBytes(sound.data(), sound.size())), nullptr);
}

TEST_F(AppList, SizesThatAreNone) {
  write("Applications/a.png", test::plainPng(20, 1, 2, 3));
  start("com.example.app");
  objc::AutoreleasePool pool;
  auto* identifier = test::string("a");
  EXPECT_EQ(icon(identifier, 0), nullptr);
  EXPECT_EQ(icon(identifier, 1025), nullptr);
  EXPECT_EQ(icon(identifier, ~NSUInteger{0}), nullptr);
  EXPECT_NE(icon(identifier, 1), nullptr);
  EXPECT_NE(icon(identifier, 1024), nullptr);
}

TEST_F(AppList, WithoutImagesThereAreNoIcons) {
  write("Applications/a.png", test::plainPng(20, 1, 2, 3));
  start("com.example.app", host::ProcessKind::application, {}, {"UIImage"});
  EXPECT_EQ(icon("a"), nullptr);
}

TEST_F(AppList, NothingIsLeftOfAnIcon) {
  write("Applications/a.png", test::plainPng(20, 1, 2, 3));
  start("com.example.app");
  for (int i = 0; i < 50; ++i) {
    objc::AutoreleasePool pool;
    EXPECT_NE(icon("a"), nullptr);
  }
  // The thread's stack of contexts has not changed.
  EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nullptr);
}

}  // namespace
