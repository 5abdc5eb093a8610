// A settings file with references of a keyed archive in place of values: they count as absent, and
// stay in the file.
#include "objc/autorelease_pool.h"
#include "prefs/keys.h"
#include "support/archives.h"

namespace {

using namespace test;

class References : public Hosted {
 protected:
  static std::string dye() { return hex(send<UIColor*>(manager(), "dye"_sel)); }

  objc::AutoreleasePool pool;
};

TEST_F(References, ReadAsAbsent) {
  const std::string reference = "<dict><key>CF$UID</key><integer>1</integer></dict>";
  std::string entries;
  for (const auto& key : varnix::settings::kKeys) {
    for (const char* prefix : {"", "com.example.app_"})
      entries += "<key>" + std::string(prefix) + key.name + "</key>" + reference;
  }
  for (const char* key : {"com.example.app_enabled", "com.example.app_scope_enabled",
                          "cached_icon_color_com.example.app"}) {
    entries += "<key>" + std::string(key) + "</key>" + reference;
  }
  application(entries);
  EXPECT_TRUE(send<bool>(manager(), "tweakEnabled"_sel));
  EXPECT_FALSE(send<bool>(manager(), "appIsDisabled:"_sel, string("com.example.app")));
  EXPECT_EQ(dye(), "#de3027ff");
  EXPECT_EQ(hex(send<UIColor*>(manager(), "ccDye"_sel)), "#de3027ff");
}

TEST_F(References, ReadAsAbsentInBinaryFilesAndStayThere) {
  NSMutableDictionary* stored = NSMutableDictionary::dictionary();
  for (const auto& key : varnix::settings::kKeys)
    send(stored, NSMutableDictionary::setObjectForKey, uid(7), string(key.name));
  writeSettings(bytesOf(binary(stored)));
  start("com.example.app");
  load();
  EXPECT_EQ(dye(), "#de3027ff");
  NSString* path = string("/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist");
  auto* found = NSDictionary::dictionaryWithContentsOfFile(path);
  ASSERT_NE(found, nullptr);
  EXPECT_TRUE(send(found, NSObject::isEqual, stored));
  EXPECT_TRUE(send(found, NSDictionary::writeToFile, path, true));
  EXPECT_TRUE(send(NSDictionary::dictionaryWithContentsOfFile(path), NSObject::isEqual, stored));
}

}  // namespace
