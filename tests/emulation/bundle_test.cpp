// The settings pane's bundle for the device, which has neither a name nor a neighbour.
#include "support/hosted.h"

namespace {

std::string executable() {
  return host::ownFolder() / "installed/Library/PreferenceBundles/VarnixPrefs.bundle/VarnixPrefs";
}

class DeviceBundle : public test::Hosted {};

TEST_F(DeviceBundle, BringsTheLibraryThatItLinks) {
  start("com.apple.Preferences");
  ASSERT_EQ(objc_getClass("KTPrefsManager"), nullptr);
  host::loadLibrary(executable());
  Class page = objc_getClass("VNXFrontPage");
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(host::fileOfAddress(page), executable());
  EXPECT_EQ(host::librarySymbol(executable(), "OBJC_CLASS_$_VNXFrontPage"), page);
  EXPECT_STREQ(class_getName(class_getSuperclass(class_getSuperclass(page))), "PSListController");
  Class store = objc_getClass("KTPrefsManager");
  ASSERT_NE(store, nullptr);
  EXPECT_EQ(host::fileOfAddress(store), host::defaultLibraryPath());
}

TEST_F(DeviceBundle, TakesTheLibraryThatIsLoaded) {
  start("com.apple.Preferences");
  const std::string elsewhere = folder.path() + "/Other.dylib";
  std::filesystem::copy_file(host::defaultLibraryPath(), elsewhere);
  host::loadLibrary(elsewhere);
  Class store = objc_getClass("KTPrefsManager");
  host::loadLibrary(executable());
  EXPECT_EQ(objc_getClass("KTPrefsManager"), store);
  EXPECT_EQ(host::fileOfAddress(store), elsewhere);
  EXPECT_EQ(host::librarySymbol(host::defaultLibraryPath(), "OBJC_CLASS_$_KTPrefsManager"),
            nullptr);
}

TEST_F(DeviceBundle, IsRefusedWhereThereAreNoPages) {
  start("com.example.app");
  try {
    host::loadLibrary(executable());
    FAIL() << "it was loaded";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()).rfind(executable() + ": ", 0), 0U) << error.what();
    EXPECT_NE(std::string(error.what()).find("_OBJC_CLASS_$_PSListController"), std::string::npos)
        << error.what();
  }
  EXPECT_EQ(objc_getClass("VNXFrontPage"), nullptr);
}

TEST_F(DeviceBundle, AMachOFileWithoutSliceIsRefused) {
  start("com.apple.Preferences");
  const std::string path = folder.path() + "/Odd";
  std::ofstream(path, std::ios::binary) << std::string("\xca\xfe\xba\xbe\0\0\0\0", 8);
  EXPECT_THROW(host::loadLibrary(path), std::runtime_error);
  EXPECT_EQ(host::librarySymbol(path, "anything"), nullptr);
}

}  // namespace
