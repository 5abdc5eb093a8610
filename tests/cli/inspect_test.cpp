// varnix inspect, as a process: the JSON's shape and what the surfaces answer.
#include "cli/command.h"

using test::answer;
using test::Json;
using test::varnix;
using test::Words;

namespace {

constexpr char kDefaultDye[] = "#de3027ff";

class Inspect : public test::CommandTest {};

std::vector<std::string> keysOf(const Json& object) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : object.items()) keys.push_back(key);
  return keys;
}

TEST_F(Inspect, TheReportHasItsShape) {
  const Json report = inspectApplication();
  EXPECT_EQ(keysOf(report),
            (std::vector<std::string>{"bundle", "dye", "elements", "iconColor", "installed", "kind",
                                      "log", "skipped", "surfaces"}));
  EXPECT_EQ(report["bundle"], "com.example.app");
  EXPECT_EQ(report["kind"], "application");
  EXPECT_EQ(report["dye"], kDefaultDye);
  EXPECT_EQ(report["iconColor"], nullptr);
  EXPECT_EQ(report["log"], Json::array());
  ASSERT_EQ(report["installed"].size(), 21U);
  EXPECT_EQ(
      report["installed"][0],
      Json({{"op", "add"}, {"class", "UIColor"}, {"selector", "isVarnixColor"}, {"types", "B@:"}}));
  EXPECT_EQ(report["installed"][14], Json({{"op", "hook"},
                                           {"class", "UIView"},
                                           {"selector", "tintColor"},
                                           {"method", "instance"}}));
  ASSERT_EQ(keysOf(report["elements"]), (std::vector<std::string>{"cc", "folder", "keyboard", "nc",
                                                                  "sms", "statusbar", "volume"}));
  for (const Json& element : report["elements"]) {
    EXPECT_EQ(element, Json({{"type", 0}, {"color", kDefaultDye}}));
  }
  ASSERT_FALSE(report["surfaces"].empty());
  for (const Json& surface : report["surfaces"]) {
    EXPECT_EQ(keysOf(surface),
              (std::vector<std::string>{"after", "before", "case", "class", "property"}));
  }
}

TEST_F(Inspect, WhatWasPassedOverIsListedWithTheReason) {
  const auto ask = [](const test::Words& more) {
    test::Words words = {"inspect", "--bundle", "com.apple.springboard", "--without",
                         "SBHUDView._backdropView"};
    words.insert(words.end(), more.begin(), more.end());
    return varnix(words);
  };
  EXPECT_EQ(Json::parse(ask({"--json"}).out)["skipped"],
            Json({{{"method", "-[SBHUDView layoutSubviews]"},
                   {"reason", "no SBHUDView._backdropView"}}}));
  EXPECT_NE(ask({}).out.find("\n21 methods replaced, 17 added\n"
                             "passed over: -[SBHUDView layoutSubviews]: no "
                             "SBHUDView._backdropView\n"),
            std::string::npos);
  EXPECT_EQ(inspectApplication()["skipped"], Json::array());
}

TEST_F(Inspect, AnApplicationIsDyed) {
  settings(
      "<key>global_color</key><string>#1e88e5</string>"
      "<key>statusbar_color_type</key><integer>2</integer>"
      "<key>statusbar_color</key><string>#102030</string>");
  const Json report = inspectApplication();
  const std::string dye = "#1e88e5ff";
  const std::string red = "#ff0000ff";
  const std::string blue = "#0000ffff";
  const std::string system = "#007affff";
  auto expect = [&](const char* cls, const char* property, const char* situation,
                    const Json& before, const Json& after) {
    EXPECT_EQ(answer(report, cls, property, situation, "before"), before) << cls << property;
    EXPECT_EQ(answer(report, cls, property, situation, "after"), after) << cls << property;
  };
  expect("UIStatusBarNewUIStyleAttributes", "foregroundColor", "status bar", "#000000ff",
         "#102030ff");
  expect("UIView", "tintColor", "view", system, dye);
  expect("UIView", "_interactionTintColor", "set to red", red, dye);
  expect("UILabel", "tintColor", "label", system, dye);
  expect("UIButton", "tintColor", "button", system, dye);
  expect("UINavigationBar", "tintColor", "navigation bar", system, dye);
  expect("UITabBar", "tintColor", "tab bar", system, dye);
  for (const char* cls : {"UISegmentedControl", "UISegment"}) {
    expect(cls, "tintColor", "segmented control", system, dye);
    expect(cls, "tintColor", "segmented control, set to blue", blue, dye);
    expect(cls, "_interactionTintColor", "segmented control, set to blue", blue, blue);
  }
  expect("UISwitch", "onTintColor", "after layout, set to red", red, dye);
  expect("UIKeyboard", "backgroundColor", "keyboard", nullptr, dye);
  expect("UIKeyboard", "opaque", "keyboard", true, false);
  expect("UIKBRenderConfig", "lightKeyboard", "keyboard", true, false);
  EXPECT_EQ(report["elements"]["statusbar"], Json({{"type", 2}, {"color", "#102030ff"}}));
}

TEST_F(Inspect, SpringBoardSparesSegmentsAndTheStatusBar) {
  const Json report = inspect({"--bundle", "com.apple.springboard"});
  EXPECT_EQ(report["kind"], "springboard");
  EXPECT_EQ(answer(report, "UIView", "tintColor", "view"), kDefaultDye);
  EXPECT_EQ(answer(report, "UIView", "_interactionTintColor", "set to red"), "#ff0000ff");
  EXPECT_EQ(answer(report, "UISegment", "tintColor", "segmented control, set to blue"),
            "#0000ffff");
  EXPECT_EQ(answer(report, "UIStatusBarNewUIStyleAttributes", "foregroundColor", "status bar"),
            "#000000ff");
}

TEST_F(Inspect, TheOpenApplicationsTypesCountInSpringBoard) {
  settings(
      "<key>com.example.app_scope_enabled</key><true/>"
      "<key>com.example.app_cc_color_type</key><integer>1</integer>");
  const Json open = inspect({"--bundle", "com.apple.springboard", "--open", "com.example.app"});
  EXPECT_EQ(open["elements"]["cc"], Json({{"type", 1}, {"color", nullptr}}));
  const Json home = inspect({"--bundle", "com.apple.springboard"});
  EXPECT_EQ(home["elements"]["cc"], Json({{"type", 0}, {"color", kDefaultDye}}));
}

TEST_F(Inspect, AProcessThatStaysUndyedStillAnswers) {
  settings("<key>enabled</key><false/><key>global_color</key><string>#1e88e5</string>");
  const Json report = inspectApplication();
  EXPECT_EQ(report["installed"].size(), 4U);
  EXPECT_EQ(report["dye"], "#1e88e5ff");
  EXPECT_EQ(report["elements"]["sms"], Json({{"type", 0}, {"color", "#1e88e5ff"}}));
  for (const Json& surface : report["surfaces"]) EXPECT_EQ(surface["before"], surface["after"]);
}

TEST_F(Inspect, OfOneClassAlone) {
  const Json report =
      inspect({"--bundle", "com.example.app", "--only", "UISwitch", "--only", "UILabel"});
  ASSERT_EQ(report["surfaces"].size(), 3U);
  EXPECT_EQ(report["surfaces"][0]["class"], "UILabel");
  EXPECT_EQ(report["surfaces"][1]["class"], "UISwitch");
  EXPECT_EQ(report["surfaces"][2]["class"], "UISwitch");
  EXPECT_EQ(answer(report, "UISwitch", "onTintColor", "after layout, set to red", "before"),
            "#ff0000ff");
  EXPECT_EQ(answer(report, "UISwitch", "onTintColor", "after layout, set to red"), kDefaultDye);
  const auto outcome = varnix({"inspect", "--no-bundle", "--only", "UITeapot"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.error, "varnix: nothing is asked of this class: UITeapot\n");
}

TEST_F(Inspect, InItsOwnProcess) {
  const Json forked = inspectApplication();
  Json own = inspect({"--bundle", "com.example.app", "--in-process"});
  ASSERT_EQ(own["surfaces"].size(), forked["surfaces"].size());
  for (std::size_t i = 0; i < own["surfaces"].size(); ++i) {
    Json expected = forked["surfaces"][i];
    expected.erase("before");
    EXPECT_EQ(own["surfaces"][i], expected);
  }
  own["surfaces"] = forked["surfaces"];
  EXPECT_EQ(own, forked);
  const auto table = varnix({"inspect", "--bundle", "a", "--only", "UILabel", "--in-process"});
  EXPECT_NE(table.out.find("surface            case   after\n"
                           "UILabel tintColor  label  #de3027ff\n"),
            table.out.npos)
      << table.out;
}

TEST_F(Inspect, WithoutTheLibrary) {
  const Json report = inspect({"--bundle", "com.example.app", "--no-library"});
  EXPECT_EQ(report["installed"], Json::array());
  EXPECT_EQ(report["dye"], nullptr);
  for (const Json& element : report["elements"]) {
    EXPECT_EQ(element, Json({{"type", nullptr}, {"color", nullptr}}));
  }
  EXPECT_EQ(answer(report, "UIView", "tintColor", "view"), "#007affff");
  for (const Json& surface : report["surfaces"]) EXPECT_EQ(surface["before"], surface["after"]);
}

TEST_F(Inspect, HiddenClassesAreLoggedAndNotListed) {
  const Json report = inspect({"--no-bundle", "--without", "UISwitch"});
  EXPECT_EQ(report["bundle"], nullptr);
  const Json line = {{"level", 3},
                     {"line", "[Varnix2: Tweak:910] ERROR: logos: nil class UISwitch"}};
  EXPECT_EQ(report["log"], Json::array({line, line, line}));
  EXPECT_EQ(answer(report, "UISwitch", "onTintColor", "after layout, set to red"), "absent");
  EXPECT_EQ(answer(report, "UIView", "tintColor", "view"), kDefaultDye);
}

TEST_F(Inspect, AnyClassMayBeHidden) {
  for (const char* name : {"UIView", "UIColor", "UISegment", "UISegmentedControl", "UIKeyboard",
                           "UIApplication", "UIStatusBarNewUIStyleAttributes"}) {
    EXPECT_EQ(inspect({"--bundle", "com.example.app", "--without", name})["kind"], "application")
        << name;
  }
}

TEST_F(Inspect, ADaemonHasNoSurfaces) {
  const Json report = inspect({"--bundle", "com.apple.springboard", "--kind", "daemon"});
  EXPECT_EQ(report["kind"], "daemon");
  EXPECT_EQ(report["installed"], Json::array());
  EXPECT_EQ(report["surfaces"], Json::array());
  EXPECT_EQ(report["log"].size(), 14U);  // one for each method that SpringBoard's classes lack
  EXPECT_EQ(report["elements"]["cc"], Json({{"type", 0}, {"color", nullptr}}));
}

TEST_F(Inspect, SampleSettings) {
  const Json report =
      inspect({"--bundle", "com.example.notes", "--settings", VARNIX_SAMPLES "/settings.plist"});
  EXPECT_EQ(report["dye"], "#43a047ff");
  EXPECT_EQ(answer(report, "UIStatusBarNewUIStyleAttributes", "foregroundColor", "status bar"),
            "#ffb300ff");
}

TEST_F(Inspect, TheIconColourIsThereWhereItWasAskedFor) {
  const Words words = {"--bundle", "com.example.app", "--icon",
                       "com.example.app=" VARNIX_SAMPLES "/icons/com.example.notes.png"};
  EXPECT_EQ(inspect(words)["iconColor"], nullptr);  // no colour type uses it
  settings("<key>global_color_type</key><integer>1</integer>");
  const Json report = inspect(words);
  EXPECT_TRUE(report["iconColor"].is_string());
  EXPECT_EQ(report["iconColor"], report["dye"]);
  Words plain = words;
  plain.insert(plain.begin(), "inspect");
  const std::string dye = report["dye"];
  EXPECT_NE(varnix(plain).out.find("\ndye " + dye + "\nicon colour " + dye + "\n"),
            std::string::npos);
  plain.emplace_back("--no-library");
  EXPECT_EQ(varnix(plain).out.find("icon colour"), std::string::npos);
}

TEST_F(Inspect, OddIdentifiers) {
  for (const std::string& identifier :
       {std::string("100%@ %s %n %d"), std::string("with spaces"),
        std::string("\xF0\x9F\x8E\xA8.caf\xC3\xA9"), std::string(10000, 'x'), std::string()}) {
    settings("<key>" + identifier + "_scope_enabled</key><true/><key>" + identifier +
             "_global_color</key><string>#010203</string>");
    const Json report = inspect({"--bundle", identifier});
    EXPECT_EQ(report["bundle"], identifier);
    EXPECT_EQ(report["dye"], "#010203ff") << identifier.substr(0, 40);
  }
  // The platform cannot make a string of this, so the process has no identifier.
  EXPECT_EQ(inspect({"--bundle", "\xff\xfe"})["dye"], kDefaultDye);
}

TEST_F(Inspect, PlainOutputIsATable) {
  const auto plain = varnix({"inspect", "--bundle", "com.example.app"});
  EXPECT_EQ(plain.status, 0);
  EXPECT_TRUE(plain.out.starts_with(
      "com.example.app (application)\ndye #de3027ff\n8 methods replaced, 13 added\n"))
      << plain.out;
  EXPECT_EQ(plain.out.find('\x1b'), plain.out.npos);
  EXPECT_EQ(plain.out.find("icon colour"), plain.out.npos);
  EXPECT_NE(plain.out.find("UIButton tintColor"), plain.out.npos);
  const auto colored = varnix({"inspect", "--bundle", "com.example.app", "--color", "always"});
  EXPECT_NE(colored.out.find("\x1b[48;2;222;48;39m  \x1b[0m #de3027ff"), colored.out.npos);
}

TEST_F(Inspect, AnExtensionsOutputStaysApart) {
  const auto outcome = varnix({"inspect", "--json", "--bundle", "a", "--load", VARNIX_SHOW_DYE});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(Json::parse(outcome.out)["installed"].size(), 21U);
  EXPECT_NE(outcome.error.find("dye #de3027ff"), outcome.error.npos);
  EXPECT_NE(outcome.error.find("dye #007affff"), outcome.error.npos);
}

TEST_F(Inspect, AProcessThatHangsIsGivenUp) {
  setenv("MISBEHAVE", "hang", 1);
  const auto start = std::chrono::steady_clock::now();
  const auto outcome = varnix({"inspect", "--bundle", "a", "--load", VARNIX_MISBEHAVE});
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error, "varnix: a hosted process did not answer in time: killed\n");
}

TEST_F(Inspect, AnExtensionThatCannotBeLoaded) {
  const auto outcome = varnix({"inspect", "--bundle", "a", "--load", "/missing.so"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_TRUE(outcome.error.starts_with("varnix: a hosted process failed: /missing.so"))
      << outcome.error;
}

}  // namespace
