// What the package puts where, as dpkg lists it and as the platform reads it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdlib>

#include "device/toolbox.h"
#include "macho/bytes.h"
#include "macho/files.h"

namespace {

using namespace device_test;
using testing::ElementsAre;
using testing::HasSubstr;
namespace device = varnix::device;

const std::string kPackage =
    VARNIX_DEVICE_BUILD "/com.quillmarsh.varnix2_" VARNIX_VERSION "_iphoneos-arm.deb";
const std::string kBundle = "/Library/PreferenceBundles/VarnixPrefs.bundle";
const std::string kBuilt =
    VARNIX_DEVICE_TOOLS "/installed/Library/PreferenceBundles/VarnixPrefs.bundle";

class DevicePackage : public testing::Test {
 protected:
  DevicePackage() { printed("dpkg-deb -x " + kPackage + " " + (folder / "")); }

  std::string at(const std::string& path) const { return folder / path.substr(1); }

  Folder folder;
};

std::string field(const std::string& name) {
  std::string value = printed("dpkg-deb -f " + kPackage + " " + name);
  while (value.ends_with('\n')) value.pop_back();
  return value;
}

/// A property list as "key=value" of its strings and booleans, with the keys of those around it.
std::vector<std::string> entriesOf(plist_t dictionary, const std::string& prefix = {}) {
  std::vector<std::string> entries;
  plist_dict_iter at = nullptr;
  plist_dict_new_iter(dictionary, &at);
  for (;;) {
    char* key = nullptr;
    plist_t value = nullptr;
    plist_dict_next_item(dictionary, at, &key, &value);
    if (value == nullptr) break;
    const std::string name = prefix + key;
    std::free(key);
    uint8_t isTrue = 0;
    switch (plist_get_node_type(value)) {
      case PLIST_DICT:
        for (std::string& entry : entriesOf(value, name + ".")) entries.push_back(std::move(entry));
        break;
      case PLIST_BOOLEAN:
        plist_get_bool_val(value, &isTrue);
        entries.push_back(name + (isTrue != 0 ? "=true" : "=false"));
        break;
      default:
        entries.push_back(name + "=" + plist_get_string_ptr(value, nullptr));
    }
  }
  std::free(at);
  return entries;
}

std::vector<std::string> propertyList(const std::string& path) {
  const Bytes bytes = device::readFile(path);
  plist_t root = nullptr;
  plist_from_xml(reinterpret_cast<const char*>(bytes.data()), static_cast<uint32_t>(bytes.size()),
                 &root);
  if (root == nullptr) return {"no property list"};
  std::vector<std::string> entries = entriesOf(root);
  plist_free(root);
  return entries;
}

TEST_F(DevicePackage, HoldsTheLibraryAndThePane) {
  std::vector<std::string> files;
  for (const auto& match : findAll(printed("dpkg-deb -c " + kPackage),
                                   "(\\S{10}) (\\S+) +[0-9]+ \\S+ \\S+ \\.(\\S*)\n")) {
    EXPECT_EQ(match[2], "root/root") << match[3];
    if (match[1] == "drwxr-xr-x" || match[3].find(".lproj/") != std::string::npos) continue;
    files.push_back(match[1] + " " + match[3]);
  }
  EXPECT_THAT(
      files,
      ElementsAre("-rwxr-xr-x /Library/MobileSubstrate/DynamicLibraries/Varnix.dylib",
                  "-rw-r--r-- /Library/MobileSubstrate/DynamicLibraries/Varnix.plist",
                  "-rw-r--r-- " + kBundle + "/Info.plist", "-rwxr-xr-x " + kBundle + "/VarnixPrefs",
                  "-rw-r--r-- " + kBundle + "/icon.png", "-rw-r--r-- " + kBundle + "/icon@2x.png",
                  "-rw-r--r-- " + kBundle + "/icon@3x.png",
                  "-rw-r--r-- /Library/PreferenceLoader/Preferences/VarnixPrefs.plist"));
}

TEST_F(DevicePackage, NeedsTheLoaderOfEntries) {
  EXPECT_EQ(field("Depends"),
            "mobilesubstrate, org.thebigboss.libcolorpicker, applist, preferenceloader, "
            "firmware (>= 9.3)");
  EXPECT_EQ(field("Package"), "com.quillmarsh.varnix2");
  EXPECT_EQ(field("Version"), VARNIX_VERSION);
}

TEST_F(DevicePackage, TheEntryLeadsToTheBundlesFirstPage) {
  EXPECT_THAT(propertyList(at("/Library/PreferenceLoader/Preferences/VarnixPrefs.plist")),
              ElementsAre("entry.cell=PSLinkCell", "entry.label=Varnix", "entry.icon=icon.png",
                          "entry.bundle=VarnixPrefs", "entry.isController=true",
                          "entry.detail=VNXFrontPage"));
  const ReadBack pane(device::readFile(at(kBundle + "/VarnixPrefs")));
  EXPECT_THAT(pane.objdump("--macho --arch=all --exports-trie"),
              HasSubstr("_OBJC_CLASS_$_VNXFrontPage\n"));
}

TEST_F(DevicePackage, TheBundleSaysWhatItIs) {
  EXPECT_THAT(propertyList(at(kBundle + "/Info.plist")),
              ElementsAre("CFBundleDevelopmentRegion=en", "CFBundleExecutable=VarnixPrefs",
                          "CFBundleIdentifier=com.quillmarsh.varnix2.prefs",
                          "CFBundleInfoDictionaryVersion=6.0", "CFBundlePackageType=BNDL",
                          "CFBundleShortVersionString=" VARNIX_VERSION,
                          "CFBundleVersion=" VARNIX_VERSION, "NSPrincipalClass=VNXFrontPage"));
}

TEST_F(DevicePackage, IconsAreOfTheScreensSizes) {
  for (const auto& [name, side] :
       std::map<std::string, uint32_t>{{"icon", 29}, {"icon@2x", 58}, {"icon@3x", 87}}) {
    const Bytes bytes = device::readFile(at(kBundle + "/" + name + ".png"));
    const device::Reader picture(bytes);
    EXPECT_EQ(picture.big32(0), 0x89504e47u) << name;
    EXPECT_EQ(picture.big32(16), side) << name;
    EXPECT_EQ(picture.big32(20), side) << name;
  }
}

/// Each file below a folder but the executable, with its digest.
std::string contentsOf(const std::string& path) {
  return printed("cd " + path +
                 " && find . -type f ! -name VarnixPrefs | LC_ALL=C sort | xargs sha256sum");
}

TEST_F(DevicePackage, TheBuildForThisSystemHasTheSameFiles) {
  EXPECT_EQ(contentsOf(at(kBundle)), contentsOf(kBuilt));
}

TEST_F(DevicePackage, ALanguageThatIsGoneIsGoneFromTheBundle) {
  const std::string gone = at(kBundle + "/xx.lproj");
  printed("mkdir " + gone + " && touch " + gone + "/Varnix.strings");
  const std::string layout = VARNIX_DEVICE "/../pane/layout ";
  printed(layout + at("/Library"));
  EXPECT_FALSE(std::filesystem::exists(gone));
  EXPECT_EQ(contentsOf(at(kBundle)), contentsOf(kBuilt));
  EXPECT_NE(run(layout).status, 0);
}

}  // namespace
