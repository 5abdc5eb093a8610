// Messages about names that are wrong, hostile or nearly right.
#include "cli/terminal.h"

using test::varnix;
using test::Words;

namespace {

/// As in names from outside, and as shown: an escape sequence, a control character of two bytes,
/// one of seven bits and a byte that is not UTF-8.
constexpr char kHostile[] = "a\x1b[31m\xc2\x9b\x7f\xff";
constexpr char kShown[] = "a\\x1b[31m\\x9b\\x7f\\xff";

class Messages : public test::CommandTest {
 protected:
  static void expect(const Words& words, int status, const std::string& message) {
    const auto outcome = varnix(words);
    EXPECT_EQ(outcome.status, status) << message;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: " + message + "\n");
  }
  std::string write(const std::string& name, const std::string& bytes) const {
    std::string path = folder.path() + "/" + name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
};

TEST_F(Messages, ControlCharactersAreShown) {
  const std::string hostile = kHostile;
  const std::string shown = kShown;
  expect({hostile}, 2, "unexpected argument: " + shown);
  expect({"settings", "get", hostile + "\n\t"}, 1, "not set: " + shown + "\\n\\t");
  expect({"settings", "set", hostile, "1"}, 2, "no such setting: " + shown);
  expect({"pick", hostile}, 1, "cannot pick from " + shown + ": No such file or directory");
  const auto missing = varnix({"run", "--no-bundle", "--without", "a\x1b"});
  EXPECT_EQ(missing.error, "varnix: to be left out, but not here yet: a\\x1b\n");
  const std::string script = write("script", hostile + "\n");
  expect({"run", "--bundle", "a", "--script", script}, 1,
         script + " line 1: no such command: " + shown);
}

TEST_F(Messages, WhatIsNoControlCharacterStays) {
  expect({"settings", "get", "\xc3\xa4 \xe2\x82\xac \xf0\x9f\x8e\xa8 \xc2\xa0\\"}, 1,
         "not set: \xc3\xa4 \xe2\x82\xac \xf0\x9f\x8e\xa8 \xc2\xa0\\");
  // Cut within a character.
  expect({"settings", "get", "\xe2\x82"}, 1, "not set: \\xe2\\x82");
}

TEST_F(Messages, ControlCharactersOfStoredSettingsAreShown) {
  settings("<key>k\xc2\x9b</key><string>v\xc2\x9b\x7f</string>");
  EXPECT_EQ(varnix({"settings", "list"}).out, "\"k\\x9b\" = \"v\\x9b\\x7f\"\n");
  // Programs get all bytes unchanged.
  EXPECT_EQ(varnix({"settings", "get", "k\xc2\x9b"}).out, "v\xc2\x9b\x7f\n");
  EXPECT_EQ(test::shownAtTerminal({"settings", "get", "k\xc2\x9b"}), "v\\x9b\\x7f\r\n");
  settings("<key>global_color</key><string>#fff\xc2\x9b</string>");
  const auto pane = varnix({"pane", "--example"});
  EXPECT_NE(pane.out.find("#fff\\x9b"), pane.out.npos) << pane.out;
  EXPECT_EQ(pane.out.find("\xc2\x9b"), pane.out.npos) << pane.out;
}

TEST_F(Messages, ControlCharactersOfAnIdentifierAreShown) {
  const auto outcome = varnix({"inspect", "--bundle", kHostile, "--no-library"});
  EXPECT_TRUE(outcome.out.starts_with("a\\x1b[31m\\x9b\\x7f")) << outcome.out;
}

TEST_F(Messages, SaysWhatMayHaveBeenMeant) {
  expect({"inspct", "--bundle", "a"}, 2, "unexpected argument: inspct (did you mean inspect?)");
  expect({"settings", "lsit"}, 2, "unexpected argument: lsit (did you mean list?)");
  expect({"help", "setings"}, 2, "no such command: setings (did you mean settings?)");
  expect({"inspect", "--bundle", "a", "--setings", "x"}, 2,
         "unexpected argument: --setings (did you mean --settings?)");
  expect({"inspect", "--bundel=a"}, 2, "unexpected argument: --bundel=a (did you mean --bundle?)");
  expect({"inspect", "-bundle", "a"}, 2, "unexpected argument: -bundle (did you mean --bundle?)");
  expect({"inspect", "--bundle", "a", "--only", "uiswich"}, 2,
         "nothing is asked of this class: uiswich (did you mean UISwitch?)");
  expect({"inspect", "--bundle", "a", "--kind", "deamon"}, 2,
         "no such kind of process: deamon (did you mean daemon?)");
  expect({"inspect", "--bundle", "a", "--hooking", "snapsot"}, 2,
         "no such way of hooking: snapsot (did you mean snapshot?)");
  expect({"inspect", "--bundle", "a", "--color", "alwys"}, 2,
         "no such choice of --color: alwys (did you mean always?)");
  expect({"completion", "bsh"}, 2, "no completion for this shell: bsh (did you mean bash?)");
}

TEST_F(Messages, SaysWhichSettingMayHaveBeenMeant) {
  const auto near = [](const std::string& key, const std::string& meant) {
    expect({"settings", "set", key, "1"}, 2,
           "no such setting: " + key + " (did you mean " + meant + "?)");
  };
  near("enabeld", "enabled");
  near("Global_Colour", "global_color");
  near("com.example.app_enabeld", "com.example.app_enabled");
  near("com.example_a.b_scope_enabld", "com.example_a.b_scope_enabled");
  near("com.example.app_cc_colr_type", "com.example.app_cc_color_type");
  near("cached_icon_colour_com.example.app", "cached_icon_color_com.example.app");
  expect({"settings", "get", "enabeld"}, 1, "not set: enabeld (did you mean enabled?)");
  expect({"settings", "get", "enabled"}, 1, "not set: enabled");
  const std::string endless(5000, '_');
  expect({"settings", "set", endless, "1"}, 2, "no such setting: " + endless);
}

TEST_F(Messages, SaysWhichLineMayHaveBeenMeant) {
  const Words run = {"run", "--bundle", "a", "--script"};
  const auto near = [&](const std::string& line, const std::string& message) {
    const std::string script = write("script", line + "\n");
    Words words = run;
    words.push_back(script);
    expect(words, 1, script + " line 1: " + message);
  };
  near("pirnt", "no such command: pirnt (did you mean print?)");
  near("set enabeld true", "no such setting: enabeld (did you mean enabled?)");
  near("unset enabeld", "not set: enabeld (did you mean enabled?)");
}

TEST_F(Messages, WarnsOfClassesThatAreNotThere) {
  const auto missing = varnix(
      {"run", "--bundle", "a", "--without", "UISwich", "-[UIVeiw tintColor]", "NothingOfTheKind"});
  EXPECT_EQ(missing.status, 0);
  EXPECT_EQ(missing.error,
            "varnix: to be left out, but not here yet: UISwich (did you mean UISwitch?)\n"
            "varnix: to be left out, but not here yet: -[UIVeiw tintColor] (did you mean UIView?)\n"
            "varnix: to be left out, but not here yet: NothingOfTheKind\n");
  const auto observed = varnix({"run", "--bundle", "a", "--messages", "UISwich"});
  EXPECT_EQ(observed.status, 0);
  EXPECT_EQ(observed.error, "varnix: no such class yet: UISwich (did you mean UISwitch?)\n");
}

TEST_F(Messages, RefusesWhatNoProcessCanDoWithout) {
  for (const char* name :
       {"NSObject", "NSString", "NSNumber", "CGImage", "-[NSObject dealloc]", "NSObject.isa"}) {
    expect({"run", "--bundle", "a", "--without", name}, 1,
           std::string("no process can do without it: ") + name);
    expect({"inspect", "--bundle", "com.apple.springboard", "--without", name}, 1,
           std::string("a hosted process failed: no process can do without it: ") + name);
  }
}

TEST_F(Messages, AnEmptyNameIsNoRoot) {
  for (const Words& words : {Words{"settings", "list"}, Words{"settings", "set", "enabled", "1"},
                             Words{"pane"}, Words{"preview", "--out", folder.path() + "/out"},
                             Words{"run", "--bundle", "a"}, Words{"inspect", "--bundle", "a"}}) {
    Words with = words;
    with.insert(with.end(), {"--root", ""});
    expect(with, 2, "not a folder: --root \"\"");
  }
  for (const char* option : {"--settings", "--script", "--load"}) {
    expect({"run", "--bundle", "a", option, ""}, 2, "not a file: " + std::string(option) + " \"\"");
  }
}

TEST_F(Messages, WhoReadsNeedsARootThatIsThere) {
  const std::string root = folder.path() + "/none";
  for (const Words& words :
       {Words{"settings", "list"}, Words{"settings", "get", "enabled"},
        Words{"settings", "unset", "enabled"}, Words{"preview", "--out", folder.path() + "/out"},
        Words{"inspect", "--bundle", "a"}}) {
    Words with = words;
    with.insert(with.end(), {"--root", root});
    expect(with, 1, "no such container root: " + root);
    EXPECT_FALSE(std::filesystem::exists(root));
  }
  EXPECT_EQ(varnix({"settings", "set", "--root", root, "enabled", "false"}).status, 0);
  EXPECT_EQ(varnix({"settings", "list", "--root", root}).out, "enabled = false\n");
}

TEST_F(Messages, ADumbTerminalGetsNoColors) {
  unsetenv("NO_COLOR");
  const Words words = {"inspect", "--no-bundle"};
  setenv("TERM", "xterm", 1);
  EXPECT_NE(test::shownAtTerminal(words).find('\x1b'), std::string::npos);
  setenv("TERM", "dumb", 1);
  EXPECT_EQ(test::shownAtTerminal(words).find('\x1b'), std::string::npos);
  const Words drawn = {"preview", "--only", "volume", "--out", folder.path() + "/out"};
  EXPECT_EQ(test::shownAtTerminal(drawn).find("Drawing"), std::string::npos);
  setenv("TERM", "xterm", 1);
  EXPECT_NE(test::shownAtTerminal(drawn).find("\rDrawing"), std::string::npos);
}

TEST_F(Messages, AByteOrderMarkIsNoPartOfAScript) {
  const auto outcome = varnix({"run", "--bundle", "a", "--script",
                               write("script", "\xef\xbb\xbf# first\nset cc_color_type 1\n")});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 1\n");
  // Anywhere else it is not a byte order mark.
  const std::string second = write("second", "wait\n\xef\xbb\xbfwait\n");
  expect({"run", "--bundle", "a", "--script", second}, 1,
         second + " line 2: no such command: \xef\xbb\xbfwait");
}

TEST_F(Messages, AByteOrderMarkIsNoPartOfSettings) {
  writeSettings(
      "\xef\xbb\xbf<plist version=\"1.0\"><dict><key>global_color</key>"
      "<string>#123456</string></dict></plist>");
  EXPECT_EQ(varnix({"settings", "list"}).out, "global_color = \"#123456\"\n");
  EXPECT_EQ(inspectApplication()["dye"], "#123456ff");
}

}  // namespace
