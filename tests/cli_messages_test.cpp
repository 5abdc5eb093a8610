// What the command says of names that are wrong, hostile or nearly right.
#include "cli/terminal.h"

using test::varnix;
using test::Words;

namespace {

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
