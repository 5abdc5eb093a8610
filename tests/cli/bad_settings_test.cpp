// varnix inspect answers in time for every settings file.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

#include "cli/bad_settings.h"
#include "cli/command.h"
#include "objc/autorelease_pool.h"
#include "prefs/keys.h"

using test::Json;

namespace {

constexpr char kDefaultDye[] = "#de3027ff";

class BadSettings : public test::CommandTest {
 protected:
  static void expectDefaults(const Json& report) {
    EXPECT_EQ(report["dye"], kDefaultDye);
    EXPECT_EQ(report["installed"].size(), 21U);
    EXPECT_EQ(report["log"], Json::array());
    for (const Json& element : report["elements"]) {
      EXPECT_EQ(element, Json({{"type", 0}, {"color", kDefaultDye}}));
    }
    EXPECT_EQ(test::answer(report, "UIView", "tintColor", "view"), kDefaultDye);
  }
  /// The file is used in place and as a copy, within ten seconds each.
  void expectDefaultsFor(const std::string& bytes) {
    writeSettings(bytes);
    const auto start = std::chrono::steady_clock::now();
    expectDefaults(inspectApplication());
    expectDefaults(inspect({"--bundle", "com.example.app", "--settings", settingsPath()}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  }
  /// Makes this process and the container nobody's, for good. Returns whether it may still run the
  /// command.
  bool becomeNobody() const {
    constexpr uid_t kNobody = 65534;
    bool succeeds = chown(folder.path().c_str(), kNobody, kNobody) == 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
      succeeds = chown(entry.path().c_str(), kNobody, kNobody) == 0 && succeeds;
    return succeeds && setgid(kNobody) == 0 && setuid(kNobody) == 0 &&
           access(test::commandFile().c_str(), R_OK | X_OK) == 0;
  }
};

TEST_F(BadSettings, Absent) { expectDefaults(inspectApplication()); }

TEST_F(BadSettings, BothFormsAreRead) {
  for (std::string_view bytes : {test::kXmlSettings, test::kBinarySettings}) {
    writeSettings(std::string(bytes));
    const Json report = inspectApplication();
    EXPECT_EQ(report["dye"], "#1e88e5ff");
    EXPECT_EQ(report["elements"]["cc"], Json({{"type", 2}, {"color", "#ffffffff"}}));
  }
}

TEST_F(BadSettings, Empty) { expectDefaultsFor(""); }

TEST_F(BadSettings, NoDictionaryOnTop) {
  expectDefaultsFor("<plist><array><string>enabled</string><false/></array></plist>");
  expectDefaultsFor("<plist><string>enabled</string></plist>");
  expectDefaultsFor("<plist><true/></plist>");
  expectDefaultsFor("bplist00\xa0\x08" + std::string(6, '\0') + "\x01\x01" + std::string(7, '\0') +
                    "\x01" + std::string(15, '\0') + "\x09");
}

TEST_F(BadSettings, CutShort) {
  for (std::size_t length = 0; length < test::kBinarySettings.size(); length += 19) {
    expectDefaultsFor(std::string(test::kBinarySettings.substr(0, length)));
  }
  // Always cuts off more than the last line break, without which the file would be whole.
  for (std::size_t length = 0; length + 20 < test::kXmlSettings.size(); length += 37) {
    expectDefaultsFor(std::string(test::kXmlSettings.substr(0, length)));
  }
}

TEST_F(BadSettings, RandomBytes) {
  for (std::uint32_t seed = 0; seed < 6; ++seed) {
    expectDefaultsFor(test::randomBytes(seed, 10 + seed * 700));
    expectDefaultsFor("bplist00" + test::randomBytes(seed, 200));
    expectDefaultsFor("<plist><dict><key>" + test::randomBytes(seed, 200));
  }
}

TEST_F(BadSettings, ChangedBytes) {
  for (std::uint32_t seed = 0; seed < 12; ++seed) {
    writeSettings(test::mutated(test::kBinarySettings, seed));
    EXPECT_TRUE(inspectApplication()["dye"].is_string()) << seed;
    writeSettings(test::mutated(test::kXmlSettings, seed));
    EXPECT_TRUE(inspectApplication()["dye"].is_string()) << seed;
  }
}

TEST_F(BadSettings, FiftyMegabytes) {
  expectDefaultsFor(test::repeated("garbage\n", 50 << 17));
  expectDefaultsFor("<plist><dict><key>global_color</key><string>" +
                    std::string(std::size_t{50} << 20, '#') + "</string></dict></plist>");
  expectDefaultsFor("bplist00" + std::string(std::size_t{50} << 20, '\xa1'));
}

TEST_F(BadSettings, DeepNesting) {
  for (std::uint32_t depth : {1000U, 200'000U}) {
    expectDefaultsFor(test::nestedXml(depth));
    expectDefaultsFor(test::nestedBinary(depth));
  }
  expectDefaultsFor(test::repeated("<plist><dict>", 200'000));
}

TEST_F(BadSettings, AFolderInItsPlace) {
  std::filesystem::create_directories(settingsPath());
  expectDefaults(inspectApplication());
}

TEST_F(BadSettings, ADeviceOrPipeInItsPlace) {
  writeSettings("");
  std::filesystem::remove(settingsPath());
  ASSERT_EQ(mkfifo(settingsPath().c_str(), 0600), 0);
  expectDefaults(inspectApplication());
  std::filesystem::remove(settingsPath());
  std::filesystem::create_symlink("/dev/zero", settingsPath());
  expectDefaults(inspectApplication());
}

TEST_F(BadSettings, Unreadable) {
  settings("<key>global_color</key><string>#1e88e5</string>");
  std::filesystem::permissions(settingsPath(), std::filesystem::perms::none);
  // Root can read every file.
  if (geteuid() == 0 && !becomeNobody()) GTEST_SKIP() << "only root may run the command here";
  expectDefaults(inspectApplication());
  EXPECT_EQ(test::varnix({"settings", "set", "enabled", "true"}).status, 1);
}

TEST_F(BadSettings, EveryKeyWithEveryKind) {
  for (const std::string& kind : test::kKinds) {
    std::string entries;
    for (const auto& key : varnix::settings::kKeys) {
      entries += "<key>" + std::string(key.name) + "</key>" + kind;
      entries += "<key>com.example.app_" + std::string(key.name) + "</key>" + kind;
    }
    settings(entries + "<key>com.example.app_scope_enabled</key>" + kind);
    for (const char* bundle : {"com.example.app", "com.apple.springboard"}) {
      const Json report = inspect({"--bundle", bundle, "--open", "com.example.app"});
      EXPECT_TRUE(report["elements"]["volume"]["type"].is_number()) << kind;
    }
  }
}

TEST_F(BadSettings, AValueWithoutAReadingCountsAsAbsent) {
  for (const char* kind :
       {"<data>AQID</data>", "<date>2015-01-02T03:04:05Z</date>", "<array/>",
        "<array><string>#123456</string></array>", "<dict><key>a</key><true/></dict>"}) {
    std::string entries;
    for (const auto& key : varnix::settings::kKeys) {
      entries += "<key>" + std::string(key.name) + "</key>" + kind;
    }
    settings(entries + "<key>com.example.app_enabled</key>" + kind);
    expectDefaults(inspectApplication());
    // An application's value of such a kind falls back to the general value.
    settings(
        "<key>cc_color_type</key><integer>2</integer><key>cc_color</key><string>#010203</string>"
        "<key>com.example.app_scope_enabled</key><true/><key>com.example.app_cc_color_type</key>" +
        std::string(kind) + "<key>com.example.app_cc_color</key>" + kind);
    EXPECT_EQ(inspectApplication()["elements"]["cc"], Json({{"type", 2}, {"color", "#010203ff"}}));
  }
}

/// All damage in one process, whose manager reads the file again each time.
class BadSettingsInProcess : public test::Hosted {
 protected:
  std::string dyeOf(const std::string& bytes) {
    objc::AutoreleasePool pool;
    writeSettings(bytes);
    NSObject* manager = test::manager();
    send<NSObject*>(manager, "ccDye"_sel);
    return test::hex(send<UIColor*>(manager, "dye"_sel));
  }
};

TEST_F(BadSettingsInProcess, CutAtEveryByte) {
  start("com.example.app");
  load();
  EXPECT_EQ(dyeOf(std::string(test::kBinarySettings)), "#1e88e5ff");
  for (std::size_t length = 0; length < test::kBinarySettings.size(); ++length) {
    EXPECT_EQ(dyeOf(std::string(test::kBinarySettings.substr(0, length))), kDefaultDye) << length;
  }
  const std::size_t whole = test::kXmlSettings.find("</dict>") + std::string("</dict>").size();
  for (std::size_t length = 0; length < test::kXmlSettings.size(); ++length) {
    const std::string dye = dyeOf(std::string(test::kXmlSettings.substr(0, length)));
    // The parser decides whether the list is complete without its last tag.
    EXPECT_TRUE(dye == kDefaultDye || (length >= whole && dye == "#1e88e5ff")) << length;
  }
}

TEST_F(BadSettingsInProcess, ManyChangedBytes) {
  start("com.example.app");
  load();
  for (std::uint32_t seed = 0; seed < 1000; ++seed) {
    EXPECT_EQ(dyeOf(test::mutated(test::kBinarySettings, seed)).size(), 9U) << seed;
    EXPECT_EQ(dyeOf(test::mutated(test::kXmlSettings, seed)).size(), 9U) << seed;
  }
}

}  // namespace
