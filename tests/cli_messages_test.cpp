// What the command says of names that are wrong, hostile or nearly right.
#include "cli/terminal.h"

using test::varnix;
using test::Words;

namespace {

/// As it stands in names from outside, and as it is shown: an escape sequence, a control character
/// of two bytes, one of seven bits and a byte that is no UTF-8.
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
  // Programs get every byte.
  EXPECT_EQ(varnix({"settings", "get", "k\xc2\x9b"}).out, "v\xc2\x9b\x7f\n");
  EXPECT_EQ(test::shownAtTerminal({"settings", "get", "k\xc2\x9b"}), "v\\x9b\\x7f\r\n");
  settings("<key>global_color</key><string>#fff\xc2\x9b</string>");
  const auto pane = varnix({"pane"});
  EXPECT_NE(pane.out.find("#fff\\x9b"), pane.out.npos) << pane.out;
  EXPECT_EQ(pane.out.find("\xc2\x9b"), pane.out.npos) << pane.out;
}

TEST_F(Messages, ControlCharactersOfAnIdentifierAreShown) {
  const auto outcome = varnix({"inspect", "--bundle", kHostile, "--no-library"});
  EXPECT_TRUE(outcome.out.starts_with("a\\x1b[31m\\x9b\\x7f")) << outcome.out;
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
  // Elsewhere it is no mark.
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
