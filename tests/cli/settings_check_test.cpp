// varnix settings check, and the warnings of commands that read settings.
#include <sys/stat.h>

#include "cli/bad_settings.h"
#include "cli/command.h"

using test::Json;
using test::varnix;
using test::Words;

namespace {

constexpr char kColorForms[] = "#RRGGBB, RRGGBB or #RGB, optionally with :alpha from 0 to 1";

class SettingsCheck : public test::CommandTest {
 protected:
  /// The findings for a settings file with those entries.
  std::string findings(const std::string& entries) {
    settings(entries);
    const auto outcome = varnix({"settings", "check"});
    EXPECT_EQ(outcome.status, outcome.out.empty() ? 0 : 1) << entries;
    EXPECT_EQ(outcome.error, "") << entries;
    return outcome.out;
  }
  void expectClean(const std::string& entries) { EXPECT_EQ(findings(entries), "") << entries; }
  void expectFile(const std::string& bytes, const std::string& wrong) {
    writeSettings(bytes);
    const auto outcome = varnix({"settings", "check", settingsPath()});
    EXPECT_EQ(outcome.status, 1) << wrong;
    EXPECT_EQ(outcome.out, wrong + "; every setting has its default\n");
    const auto inspected = varnix({"inspect", "--bundle", "a"});
    EXPECT_EQ(inspected.status, 0);
    EXPECT_EQ(inspected.error, "varnix: " + settingsPath() + ": " + outcome.out);
  }
};

std::string entry(const std::string& key, const std::string& value) {
  return "<key>" + key + "</key>" + value;
}

TEST_F(SettingsCheck, NothingIsWrong) {
  const auto absent = varnix({"settings", "check"});
  EXPECT_EQ(absent.status, 0);
  EXPECT_EQ(absent.out + absent.error, "");
  expectClean("");
  for (const auto& sample : std::filesystem::recursive_directory_iterator(VARNIX_SAMPLES)) {
    if (sample.path().extension() != ".plist" || sample.path().stem() == "mistaken") continue;
    const auto outcome = varnix({"settings", "check", sample.path()});
    EXPECT_EQ(outcome.status, 0) << sample.path();
    EXPECT_EQ(outcome.out + outcome.error, "") << sample.path();
  }
  writeSettings(std::string(test::kBinarySettings));
  EXPECT_EQ(varnix({"settings", "check"}).status, 0);
}

TEST_F(SettingsCheck, WhatIsReadAsItWasMeant) {
  for (const char* value : {"<true/>", "<false/>", "<integer>0</integer>", "<integer>1</integer>",
                            "<string>true</string>", "<string>NO</string>", "<string>1</string>"}) {
    expectClean(entry("enabled", value) + entry("com.example.app_enabled", value));
  }
  for (const char* value :
       {"<integer>7</integer>", "<integer>-1</integer>", "<real>2</real>", "<string>2</string>"}) {
    expectClean(entry("cc_color_type", value) + entry("a.b_global_color_type", value));
  }
  for (const char* value : {"#123456", "123456", "#fA0", "#123456:0.5", "fff000:1", "#123:.5",
                            "#123456:0.00000000000000000000000000000000000000000000000001"}) {
    expectClean(entry("cc_color", "<string>" + std::string(value) + "</string>"));
  }
}

TEST_F(SettingsCheck, UnknownKeys) {
  EXPECT_EQ(findings(entry("enabeld", "<true/>") + entry("a.b_enabeld", "<true/>") +
                     entry("colour", "<true/>") + entry("x&#x85;", "<true/>")),
            "a.b_enabeld: no such setting (did you mean a.b_enabled?); it is ignored\n"
            "colour: no such setting; it is ignored\n"
            "enabeld: no such setting (did you mean enabled?); it is ignored\n"
            "x\\x85: no such setting; it is ignored\n");
}

TEST_F(SettingsCheck, ValuesOfAnotherKind) {
  EXPECT_EQ(
      findings(entry("enabled", "<string>maybe</string>") +
               entry("use_album_art", "<integer>2</integer>") + entry("cc_color_type", "<true/>") +
               entry("nc_color_type", "<real>1.5</real>") +
               entry("sms_color_type", "<string>two</string>") +
               entry("volume_color_type", "<dict/>") + entry("folder_color", "<array/>")),
      "cc_color_type: true is not a whole number; it counts as 1\n"
      "enabled: \"maybe\" is not true or false; it counts as false\n"
      "folder_color: a list is not " +
          std::string(kColorForms) +
          "; it counts as #FFFFFF\n"
          "nc_color_type: 1.5 is not a whole number; it counts as 1\n"
          "sms_color_type: \"two\" is not a whole number; it counts as 0\n"
          "use_album_art: 2 is not true or false; it counts as true\n"
          "volume_color_type: a dictionary is not a whole number; it counts as 0\n");
}

TEST_F(SettingsCheck, ApplicationsValues) {
  EXPECT_EQ(
      findings(entry("a.b_enabled", "<data>AQID</data>") +
               entry("a.b_scope_enabled", "<string>perhaps</string>") +
               entry("a.b_cc_color_type", "<array/>") +
               entry("a.b_cc_color", "<string>red</string>") +
               entry("a.b_use_album_art", "<dict/>") +
               entry("cached_icon_color_a.b", "<data>AQID</data>") +
               entry("cached_icon_color_c.d", "<string>#123456</string>")),
      "a.b_cc_color: \"red\" is not " + std::string(kColorForms) +
          "; it counts as #FFFFFF\n"
          "a.b_cc_color_type: a list is not a whole number; cc_color_type counts in its place\n"
          "a.b_enabled: data is not true or false; it counts as absent\n"
          "a.b_scope_enabled: \"perhaps\" is not true or false; it counts as false\n"
          "a.b_use_album_art: a dictionary is not true or false; use_album_art counts in its "
          "place\n"
          "cached_icon_color_a.b: data is not the archive that the library writes; the icon's "
          "colour "
          "is looked for anew\n"
          "cached_icon_color_c.d: \"#123456\" is not the archive that the library writes; the "
          "icon's "
          "colour is looked for anew\n");
}

TEST_F(SettingsCheck, WhatTheLibraryStoresIsFine) {
  settings(entry("global_color_type", "<integer>1</integer>"));
  const Json report = inspect({"--bundle", "com.example.mail", "--icon",
                               "com.example.mail=" VARNIX_SAMPLES "/icons/com.example.mail.png"});
  EXPECT_NE(report["iconColor"], nullptr);
  EXPECT_NE(varnix({"settings", "list"}).out.find("cached_icon_color_com.example.mail"),
            std::string::npos);
  EXPECT_EQ(varnix({"settings", "check"}).out, "");
}

TEST_F(SettingsCheck, ColoursThatFallBackDoSo) {
  const std::string forms = kColorForms;
  EXPECT_EQ(findings(entry("global_color", "<string>#12</string>") +
                     entry("cc_color", "<string>#123456:3</string>") +
                     entry("cc_color_type", "<integer>2</integer>") +
                     entry("keyboard_color", "<string>white</string>") +
                     entry("keyboard_color_type", "<real>2.5</real>") +
                     entry("a.b_scope_enabled", "<true/>") +
                     entry("a.b_volume_color_type", "<integer>2</integer>") +
                     entry("a.b_volume_color", "<integer>3</integer>") +
                     entry("volume_color", "<string>#010203</string>")),
            "a.b_volume_color: 3 is not " + forms +
                "; it counts as #FFFFFF\n"
                "cc_color: \"#123456:3\" is not " +
                forms +
                "; its alpha counts as 1\n"
                "global_color: \"#12\" is not " +
                forms +
                "; it counts as #de3027\n"
                "keyboard_color: \"white\" is not " +
                forms +
                "; it counts as #FFFFFF\n"
                "keyboard_color_type: 2.5 is not a whole number; it counts as 2\n");
  const Json report = inspect({"--bundle", "a.b"});
  EXPECT_EQ(report["dye"], "#de3027ff");
  EXPECT_EQ(report["elements"]["cc"], Json({{"type", 2}, {"color", "#123456ff"}}));
  EXPECT_EQ(report["elements"]["keyboard"], Json({{"type", 2}, {"color", "#ffffffff"}}));
  EXPECT_EQ(report["elements"]["volume"], Json({{"type", 2}, {"color", "#ffffffff"}}));
}

TEST_F(SettingsCheck, FilesThatHoldNoSettings) {
  const std::string broken = "not a property list, or cut short";
  expectFile("", "empty");
  expectFile("enabled = true\n", broken);
  expectFile(std::string(test::kXmlSettings.substr(0, 200)), broken);
  expectFile(std::string(test::kBinarySettings.substr(0, 60)), broken);
  expectFile("<plist version=\"1.0\"><array/></plist>", "a list is not a dictionary");
  expectFile(std::string((16 << 20) + 1, ' '), "larger than 16 MiB");
}

TEST_F(SettingsCheck, WhatIsNoFile) {
  const auto absent = varnix({"settings", "check", folder.path() + "/none"});
  EXPECT_EQ(absent.status, 1);
  EXPECT_EQ(absent.error, "varnix: cannot read the settings file: " + folder.path() +
                              "/none: No such file or directory\n");
  const auto both = varnix({"settings", "check", "--root", folder.path(), "x"});
  EXPECT_EQ(both.status, 2);
  EXPECT_EQ(both.error, "varnix: options that exclude each other: FILE and --root\n");
  std::filesystem::create_directories(settingsPath());
  const auto inContainer = varnix({"settings", "check"});
  EXPECT_EQ(inContainer.status, 1);
  EXPECT_EQ(inContainer.out, "cannot be read; every setting has its default\n");
}

TEST_F(SettingsCheck, TheFirstTwentyOfManyAreWarnedOf) {
  std::string entries;
  for (int i = 100; i < 400; ++i) entries += entry("k" + std::to_string(i), "<true/>");
  const std::string found = findings(entries);
  EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), 300);
  const std::string error = varnix({"inspect", "--bundle", "a"}).error;
  EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 21);
  EXPECT_TRUE(error.ends_with("k119: no such setting; it is ignored\nvarnix: " + settingsPath() +
                              ": 280 more, which varnix settings check lists\n"))
      << error;
}

TEST_F(SettingsCheck, HostileNamesAndValues) {
  const std::string longest(1 << 20, '_');
  EXPECT_EQ(findings(entry(longest, "<true/>")),
            longest.substr(0, 300) + "...: no such setting; it is ignored\n");
  EXPECT_EQ(findings(entry("enabled", "<string>" + longest + "</string>")),
            "enabled: this text is not true or false; it counts as false\n");
  for (const std::string& kind : test::kKinds) {
    std::string entries;
    for (const char* key : {"enabled", "cc_color", "cc_color_type", "a.b_enabled", "a.b_cc_color",
                            "a.b_scope_enabled", "cached_icon_color_a.b"})
      entries += entry(key, kind);
    settings(entries);
    EXPECT_EQ(varnix({"settings", "check"}).status, 1) << kind;
  }
}

TEST_F(SettingsCheck, WhoReadsSettingsWarns) {
  const std::string file = folder.path() + "/file.plist";
  std::ofstream(file) << "<plist version=\"1.0\"><dict>" + entry("enabeld", "<true/>") +
                             "</dict></plist>";
  const std::string finding = "enabeld: no such setting (did you mean enabled?); it is ignored\n";
  const Words out = {"--out", folder.path() + "/out", "--only", "volume"};
  for (Words words : {Words{"inspect", "--bundle", "a"}, Words{"run", "--bundle", "a"},
                      Words{"preview", out[0], out[1], out[2], out[3]}}) {
    words.insert(words.end(), {"--settings", file});
    const auto outcome = varnix(words);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.error, "varnix: " + file + ": " + finding);
  }
  settings(entry("enabeld", "<true/>"));
  for (Words words : {Words{"inspect", "--bundle", "a"}, Words{"run", "--bundle", "a"},
                      Words{"preview", out[0], out[1], out[2], out[3]}}) {
    words.insert(words.end(), {"--root", folder.path()});
    EXPECT_EQ(varnix(words).error, "varnix: " + settingsPath() + ": " + finding);
  }
  // Without the library nobody reads the settings.
  EXPECT_EQ(varnix({"inspect", "--bundle", "a", "--no-library"}).error, "");
}

}  // namespace
