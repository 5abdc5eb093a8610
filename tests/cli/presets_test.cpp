// varnix settings presets and use.
#include <algorithm>
#include <filesystem>
#include <map>

#include "cli/command.h"
#include "prefs/presets.h"

namespace settings = varnix::settings;

namespace {

using Presets = test::CommandTest;

TEST_F(Presets, AreTenAndListedWithTheirColors) {
  const auto outcome = test::varnix({"settings", "presets"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 10);
  EXPECT_TRUE(outcome.out.starts_with("Ember       #de3027\n")) << outcome.out;
  EXPECT_NE(outcome.out.find("\nMint        #12a594  cc #0f766e  nc #0f766e\n"), outcome.out.npos);
  EXPECT_TRUE(
      outcome.out.ends_with("statusbar off  folder off  cc off  nc off  keyboard off  "
                            "volume off\n"));
}

TEST_F(Presets, ReplaceTheColorsAndNothingElse) {
  ASSERT_EQ(test::varnix({"settings", "set", "use_album_art", "true"}).status, 0);
  ASSERT_EQ(test::varnix({"settings", "set", "global_color_type", "1"}).status, 0);
  ASSERT_EQ(test::varnix({"settings", "set", "com.example.mail_cc_color_type", "1"}).status, 0);
  const auto outcome = test::varnix({"settings", "use", "Ocean"});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(test::varnix({"settings", "list"}).out,
            "cc_color = \"#0b3c6f\"\n"
            "cc_color_type = 2\n"
            "com.example.mail_cc_color_type = 1\n"
            "folder_color_type = 0\n"
            "global_color = \"#1971c2\"\n"
            "global_color_type = 0\n"
            "keyboard_color_type = 0\n"
            "nc_color = \"#0b3c6f\"\n"
            "nc_color_type = 2\n"
            "sms_color = \"#228be6\"\n"
            "sms_color_type = 2\n"
            "statusbar_color_type = 0\n"
            "use_album_art = true\n"
            "volume_color_type = 0\n");
}

TEST_F(Presets, OfAnUnknownNameAreRefused) {
  const auto outcome = test::varnix({"settings", "use", "Oceann"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.error.find("Ocean"), outcome.error.npos) << outcome.error;
  EXPECT_FALSE(std::filesystem::exists(settingsPath()));
}

/// Each is used in turn: what one says of an element, the next one says too.
TEST_F(Presets, LeaveNothingOfEachOther) {
  for (const auto& preset : settings::kPresets) {
    ASSERT_EQ(test::varnix({"settings", "use", preset.name}).status, 0) << preset.name;
    std::map<std::string, std::string> expected;
    settings::eachSetting(
        preset, [&](const char* name, const char* suffix, const char* color, int number) {
          expected[std::string(name) + suffix] =
              color != nullptr ? std::string("\"") + color + '"' : std::to_string(number);
        });
    const std::string listed = test::varnix({"settings", "list"}).out;
    for (const auto& [key, value] : expected)
      EXPECT_NE(("\n" + listed).find("\n" + key + " = " + value + "\n"), std::string::npos)
          << preset.name << ' ' << key;
  }
}

}  // namespace
