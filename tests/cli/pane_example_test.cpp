// varnix pane --example, as a process: settings through the store's bridge, and the buttons of the
// small pane in C.
#include <ctime>

#include "cli/pane_command.h"

using test::Command;
using test::Outcome;
using test::varnix;
using test::Words;

namespace {

class ExamplePane : public test::PaneCommandTest {
 protected:
  ExamplePane() : PaneCommandTest({"pane", "--example"}) {}

  /// What it prints after the list at the beginning.
  std::string says(const std::string& script, const Words& words = {}) const {
    const Outcome outcome = run(script, words);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    const std::string lastRow = "volume HUD's own colour\n";
    const auto end = outcome.out.find(lastRow);
    EXPECT_NE(end, std::string::npos) << outcome.out;
    return outcome.out.substr(end + lastRow.size());
  }
};

TEST_F(ExamplePane, ListsEverySettingWithItsValue) {
  settings(
      "<key>global_color</key><string>#1e88e5</string><key>enabled</key><false/>"
      "<key>cc_color_type</key><string>2</string>");
  const auto outcome = run("");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 18);
  for (const char* line :
       {"enabled               false        the whole system; read when a process starts\n",
        "\nglobal_color          #1e88e5      the dye\n",
        "\ncc_color_type         2            Control Centre\n",
        "\ncc_color              #FFFFFF      Control Centre's own colour\n"}) {
    EXPECT_NE(outcome.out.find(line), std::string::npos) << line;
  }
}

TEST_F(ExamplePane, ShowsSwatchesWhereTheyAreWanted) {
  EXPECT_EQ(run("").out.find('\x1b'), std::string::npos);
  const auto colored = run("", {"--color", "always"}).out;
  EXPECT_NE(colored.find("\x1b[48;2;222;48;39m  \x1b[0m #de3027"), std::string::npos);
}

TEST_F(ExamplePane, AChangeIsWrittenAndListed) {
  const std::string list =
      says("set keyboard_color_type 2\nset keyboard_color #102030:0.5\nlist\n");
  EXPECT_NE(list.find("keyboard_color_type   2 "), std::string::npos);
  EXPECT_NE(list.find("keyboard_color        #102030:0.5"), std::string::npos);
  const Outcome stored = varnix({"settings", "get", "keyboard_color"});
  EXPECT_EQ(stored.out, "#102030:0.5\n");
}

// The bridge from end to end: the pane writes the file and posts, and another process gets the new
// dye.
TEST_F(ExamplePane, AChangeDyesAnotherProcessAnew) {
  Command other({"run", "--bundle", "com.example.app", "--script", "-"});
  other.write("keyboard\nprint\n");
  ASSERT_TRUE(other.waitFor("\"backgroundColor\":\"#de3027ff\""));
  says("set global_color #1e88e5\n");
  other.write("wait\nkeyboard\nprint\n");
  EXPECT_TRUE(other.waitFor("\"backgroundColor\":\"#1e88e5ff\""));
  EXPECT_EQ(other.finish(), 0);
}

TEST_F(ExamplePane, TintsItsNavigationBarWhileItIsShown) {
  EXPECT_EQ(says("appear\ndisappear\n"), "bar       #ff9400ff\nbar       #000000ff\n");
}

TEST_F(ExamplePane, ShowsTheInstalledVersion) {
  program("dpkg",
          "test \"$1 $2\" = '-s com.quillmarsh.varnix2' || exit 1\n"
          "printf 'Package: com.quillmarsh.varnix2\\nVersion: 2.0.0-7\\n'\n");
  const std::time_t now = std::time(nullptr);
  const std::string year = std::to_string(std::gmtime(&now)->tm_year + 1900);
  EXPECT_EQ(says("footer\n"), "\u00a9 Quillmarsh 2015 - " + year + "\n Version: 2.0.0-7\n\n");
}

TEST_F(ExamplePane, SharesWritesAndOpensProfiles) {
  EXPECT_EQ(says("share\nwrite\nprofile\n"),
            "composes  My phone is orange, thanks to Varnix.\n"
            "opened    mailto:varnix@quillmarsh.example\n"
            "opened    https://twitter.com/quillmarsh\n");
  EXPECT_EQ(says("profile\n", {"--client", "twitter", "--client", "tweetings"}),
            "opened    tweetings:///user?screen_name=quillmarsh\n");
}

TEST_F(ExamplePane, RestartsSpringBoardWithTheDevicesProgram) {
  EXPECT_EQ(says("restart\n"), "cannot restart SpringBoard: no killall\n");
  program("killall", "echo \"$0 $*\" >\"$(dirname \"$0\")/told\"\n");
  EXPECT_EQ(says("restart\n"), "restarts SpringBoard\n");
  const std::string told = folder.path() + "/usr/bin/told";
  for (int i = 0; i < 300 && test::contentsOf(told).find('\n') == std::string::npos; ++i)
    usleep(10'000);
  EXPECT_TRUE(test::contentsOf(told).ends_with("killall -9 SpringBoard\n"))
      << test::contentsOf(told);
}

constexpr char kInvitation[] =
    "alert     Varnix: Hey there! Thanks for installing my tweak! If you'd like to follow me on "
    "Twitter for more updates, tweak giveaways and other cool stuff, hit the button below!\n"
    "  press 0  No thanks!\n"
    "  press 1  I'd love to!\n";

std::string request(const std::string& account) {
  return "request   https://api.twitter.com/1.1/friendships/create.json "
         "screen_name=quillmarsh follow=FALSE as " +
         account + "\n";
}

TEST_F(ExamplePane, FollowsWithTheAccountsOfTheDevice) {
  EXPECT_EQ(says("follow\npress 0\n", {"--account", "ann"}), kInvitation);
  EXPECT_EQ(says("follow\npress 1\n", {"--account", "ann"}),
            kInvitation + request("ann") +
                "alert     Done <3: Awesome. Thanks for following me ^-^\n"
                "  press 0  You're welcome <3\n");
  EXPECT_EQ(says("follow\npress 1\npress 2\n", {"--account", "ann", "--account", "bob"}),
            kInvitation +
                std::string("alert     Looks like you have multiple Twitter accounts on this "
                            "device. Which one would you like to use?\n"
                            "  press 0  All!\n  press 1  ann\n  press 2  bob\n") +
                request("bob") +
                "alert     Done <3: Just moving around a few things aaaaaand..... hah! Just "
                "kidding. Thanks for following me. Enjoy the tweak! :)\n"
                "  press 0  Will do!\n");
  EXPECT_EQ(says("follow\npress 1\n"),
            kInvitation + std::string("opened    https://twitter.com/quillmarsh\n"));
  EXPECT_EQ(says("follow\npress 1\n", {"--account", "ann", "--refuse-access"}), kInvitation);
}

TEST_F(ExamplePane, ReadsStandardInputWithoutAPrompt) {
  Command command({"pane", "--example"});
  command.write("set global_color #1e88e5\nlist\nquit\nno command any more\n");
  EXPECT_EQ(command.finish(), 0) << command.error;
  EXPECT_NE(command.out.find("global_color          #1e88e5"), std::string::npos);
  EXPECT_EQ(command.out.find("pane>"), std::string::npos);
}

TEST_F(ExamplePane, NamesWhatIsWrongWithItsLine) {
  auto refuses = [this](const std::string& script, const std::string& message) {
    const Outcome outcome = run(script);
    EXPECT_EQ(outcome.status, 1) << script;
    EXPECT_EQ(outcome.error, "varnix: " + folder.path() + "/script line 1: " + message + "\n");
  };
  refuses("paint", "no such command: paint");
  refuses("set global_color", "expected set KEY VALUE: set global_color");
  refuses("set colour #fff", "no such setting: colour");
  refuses("set global_color blue",
          "wrong value (wanted: #RRGGBB, RRGGBB or #RGB, optionally with :alpha from 0 to 1): "
          "blue");
  refuses("press 0", "no alert is shown: press 0");
  const Outcome button = run("follow\npress 2\n");
  EXPECT_EQ(button.status, 1);
  EXPECT_TRUE(button.error.ends_with("line 2: no such button: 2\n")) << button.error;
}

TEST_F(ExamplePane, HearsOfOtherChangesBeforeItMakesItsOwn) {
  Command pane({"pane", "--example"});
  ASSERT_TRUE(pane.waitFor("volume HUD's own colour\n"));
  EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
  pane.write("set global_color #1e88e5\nquit\n");
  EXPECT_EQ(pane.finish(), 0) << pane.error;
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 2\nglobal_color = \"#1e88e5\"\n");
}

TEST_F(ExamplePane, KeepsWhatWasChangedWithoutAWord) {
  Command pane({"pane", "--example"});
  ASSERT_TRUE(pane.waitFor("volume HUD's own colour\n"));
  settings("<key>cc_color_type</key><integer>2</integer>");
  pane.write("set global_color #1e88e5\nquit\n");
  EXPECT_EQ(pane.finish(), 0) << pane.error;
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 2\nglobal_color = \"#1e88e5\"\n");
}

TEST_F(ExamplePane, ListsWhatOthersChanged) {
  Command pane({"pane", "--example"});
  ASSERT_TRUE(pane.waitFor("volume HUD's own colour\n"));
  EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
  pane.write("list\nquit\n");
  EXPECT_EQ(pane.finish(), 0) << pane.error;
  EXPECT_NE(pane.out.find("\ncc_color_type         2 "), std::string::npos) << pane.out;
}

// An unreadable file counts as missing if it is only read.
TEST_F(ExamplePane, SurvivesASettingsFileThatIsNone) {
  writeSettings("no property list");
  EXPECT_NE(run("").out.find("global_color          #de3027"), std::string::npos);
}

TEST_F(ExamplePane, ReplacesNoFileThatItCannotRead) {
  expectDamagedSettingsStay("set global_color #1e88e5\n");
}

}  // namespace
