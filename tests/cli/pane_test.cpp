// varnix pane, as a process: the pages of the pane that the package installs, row by row.
#include "cli/pane_command.h"

using test::Command;
using test::Outcome;
using test::varnix;
using test::Words;

namespace {

class Pane : public test::PaneCommandTest {};

TEST_F(Pane, OpensTheFirstPageFromTheListOfSettings) {
  const std::string page = says("");
  EXPECT_TRUE(
      page.starts_with("Settings > Varnix\n"
                       "bar   #de3027ff\n"
                       "  1  Enabled                    on\n"
                       "      Takes effect in apps when they next open, and on the Home "
                       "screen when\n"
                       "      SpringBoard restarts. Colours change at once.\n"
                       "\n"
                       "  Colour\n"
                       "  2  Colour From                My Colour >\n"))
      << page;
  for (const char* line :
       {"\n  4  Album Art                  off\n", "\n  Elements\n",
        "\n 10  Keyboard                   Varnix Colour >\n",
        "\n 16  Restart SpringBoard        (button)\n", "\n      \u00a9 Quillmarsh 2015 - "})
    EXPECT_NE(page.find(line), std::string::npos) << line << page;
  EXPECT_EQ(says("", {"--open", ""}), "Settings\n  1  Varnix                     >\n");
}

TEST_F(Pane, ShowsWhatIsStored) {
  settings(
      "<key>enabled</key><false/><key>global_color</key><string>#1e88e5</string>"
      "<key>keyboard_color_type</key><integer>2</integer>"
      "<key>keyboard_color</key><string>#102030</string>");
  const std::string page = says("");
  for (const char* line : {"\nbar   #1e88e5ff\n", "\n  1  Enabled                    off\n",
                           "\n 10  Keyboard                   Own Colour #102030 >\n"})
    EXPECT_NE(page.find(line), std::string::npos) << line << page;
}

TEST_F(Pane, OpensPagesByTitleKeyNumberAndPath) {
  const std::string keyboard = "Settings > Varnix > Keyboard\n";
  for (const char* row : {"Keyboard", "keyboard", "10", "KEYBOARD"}) {
    EXPECT_TRUE(after(std::string("open ") + row + "\n").starts_with(keyboard)) << row;
  }
  EXPECT_TRUE(says("", {"--open", "Varnix/Keyboard"}).starts_with(keyboard));
  EXPECT_TRUE(
      says("", {"--open", "1/10/Colour"}).starts_with("Settings > Varnix > Keyboard > Colour\n"));
  const std::string there = after("open Keyboard\nback\n");
  EXPECT_EQ(there.find("Settings > Varnix\n"), there.rfind("Settings > Varnix\n"));
  EXPECT_TRUE(after("back\nopen Varnix\n").starts_with("Settings\nbar   #000000ff\n  1  Varnix"));
}

TEST_F(Pane, FlipsASwitch) {
  EXPECT_EQ(after("set Enabled off\n"), "  1  Enabled                    off\n");
  EXPECT_EQ(varnix({"settings", "list"}).out, "enabled = false\n");
  EXPECT_EQ(after("set 1 on\nset enabled on\n"), "  1  Enabled                    on\n");
  EXPECT_EQ(varnix({"settings", "list"}).out, "enabled = true\n");
}

TEST_F(Pane, MakesAChoiceByTitleOrValue) {
  EXPECT_EQ(after("set Colour From App Icon\n"), "  2  Colour From                App Icon >\n");
  EXPECT_EQ(varnix({"settings", "get", "global_color_type"}).out, "1\n");
  after("set \"Colour From\" 'my colour'\n");
  EXPECT_EQ(varnix({"settings", "get", "global_color_type"}).out, "0\n");
  after("set global_color_type 1\n");
  EXPECT_EQ(varnix({"settings", "get", "global_color_type"}).out, "1\n");
  EXPECT_TRUE(after("open Colour From\n").starts_with("Settings > Varnix > Colour From\nbar   "));
  const std::string list = after("open global_color_type\npress My Colour\n");
  EXPECT_TRUE(list.ends_with("  1  My Colour                  \u2713\n  2  App Icon\n")) << list;
  EXPECT_EQ(varnix({"settings", "get", "global_color_type"}).out, "0\n");
}

TEST_F(Pane, ChoosesAColourInThePicker) {
  EXPECT_EQ(after("set My Colour #1e88e5\n"),
            "bar   #1e88e5ff\n  3  My Colour                  #1E88E5\n");
  EXPECT_EQ(varnix({"settings", "get", "global_color"}).out, "#1E88E5:1.000000\n");
  // Both writers' changes last.
  after("set Album Art on\nset global_color #fed\nset Enabled off\n");
  EXPECT_EQ(varnix({"settings", "list"}).out,
            "enabled = false\nglobal_color = \"#FFEEDD:1.000000\"\nuse_album_art = true\n");
  const Outcome early = run("open Keyboard\nset Own Colour #123456\n");
  EXPECT_TRUE(early.error.ends_with("line 2: the row is disabled: Own Colour\n")) << early.error;
}

TEST_F(Pane, ShowsSwatchesWhereTheyAreWanted) {
  EXPECT_EQ(says("").find('\x1b'), std::string::npos);
  const std::string shown = says("", {"--color", "always"});
  for (const char* row : {"\nbar   \x1b[48;2;222;48;39m  \x1b[0m #de3027ff\n",
                          "My Colour                  \x1b[48;2;222;48;39m  \x1b[0m #DE3027",
                          "Keyboard                   \x1b[48;2;222;48;39m  \x1b[0m Varnix"})
    EXPECT_NE(shown.find(row), std::string::npos) << row;
}

TEST_F(Pane, SearchesApplications) {
  const std::string found = after("open Apps\nfind MU\n");
  EXPECT_TRUE(
      found.ends_with("Settings > Varnix > Apps\nbar   #de3027ff\nfind  MU\n"
                      "  All Others\n"
                      "  1  Music                      >\n"))
      << found;
  EXPECT_TRUE(after("open Apps\nfind grass\n").ends_with("  1  No Apps Found\n"))
      << after("open Apps\nfind grass\n");
  EXPECT_NE(after("open Apps\nfind grass\nfind\n").find("Twitter"), std::string::npos);
}

TEST_F(Pane, GivesAnApplicationSettingsOfItsOwn) {
  const std::string shown = after(
      "open Apps\nopen Music\nset Own Settings on\nset My Colour #123456\nopen Keyboard\n"
      "set Colour Off\nback\nback\n");
  EXPECT_NE(shown.find("\n  With Their Own Settings\n  1  Music "), std::string::npos) << shown;
  EXPECT_EQ(varnix({"settings", "list"}).out,
            "com.apple.Music_global_color = \"#123456:1.000000\"\n"
            "com.apple.Music_keyboard_color_type = 1\n"
            "com.apple.Music_scope_enabled = true\nenabled = true\n");
}

TEST_F(Pane, ShowsTheOtherPagesOfAChange) {
  const std::string shown = after("open Keyboard\nset keyboard_color_type Own Colour\nback\n");
  EXPECT_NE(shown.find("\n 10  Keyboard                   Own Colour #ffffff >\n"),
            std::string::npos)
      << shown;
}

TEST_F(Pane, AsksBeforeAPresetAndTakesItBackOnce) {
  settings("<key>cc_color_type</key><integer>1</integer>");
  const std::string asked = after("open Presets\npress Ocean\npress Cancel\n");
  EXPECT_NE(asked.find("alert     Use Ocean?: "), std::string::npos) << asked;
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 1\n");
  const std::string used = after("open Presets\npress Ocean\npress Replace\n");
  EXPECT_NE(used.find("Undo Ocean"), std::string::npos) << used;
  EXPECT_NE(used.find("bar   #1971c2ff"), std::string::npos) << used;
  EXPECT_EQ(varnix({"settings", "get", "cc_color"}).out, "#0b3c6f\n");
  const std::string undone = after("press Undo Ocean\n");
  EXPECT_EQ(undone.find("Undo"), std::string::npos) << undone;
  // The store writes its default too.
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 1\nenabled = true\n");
}

TEST_F(Pane, CopiesAndPastesSettings) {
  settings("<key>cc_color_type</key><integer>1</integer>");
  const std::string told = after(
      "press Copy Settings\npress OK\nset Enabled off\n"
      "press Paste Settings\npress Replace\n");
  EXPECT_NE(told.find("  press 0  Cancel\n  press 1  Replace\nSettings > Varnix\nbar   #de3027ff\n"
                      "  1  Enabled                    on\n"),
            std::string::npos)
      << told;
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 1\nenabled = true\n");
  EXPECT_NE(after("press Paste Settings\n").find("alert     "), std::string::npos);
}

TEST_F(Pane, RestartsSpringBoardOnceAsked) {
  EXPECT_NE(after("press Restart SpringBoard\npress Restart\n")
                .find("\ncannot restart SpringBoard: no killall\n"),
            std::string::npos);
  program("killall", "echo \"$0 $*\" >\"$(dirname \"$0\")/told\"\n");
  const std::string restarted = after("press restart\npress Restart\n");
  EXPECT_TRUE(restarted.ends_with("\nrestarts SpringBoard\n")) << restarted;
  const std::string told = folder.path() + "/usr/bin/told";
  for (int i = 0; i < 300 && test::contentsOf(told).find('\n') == std::string::npos; ++i)
    usleep(10'000);
  EXPECT_TRUE(test::contentsOf(told).ends_with("killall -9 SpringBoard\n"))
      << test::contentsOf(told);
}

TEST_F(Pane, WritesOpensProfilesAndShares) {
  EXPECT_EQ(after("press Email Us\npress Follow Us\npress bar\n"),
            "opened    mailto:varnix@quillmarsh.example\n"
            "opened    https://twitter.com/quillmarsh\n"
            "composes  My phone is in my favourite colour, thanks to Varnix.\n");
  EXPECT_EQ(after("press profile\n", {"--client", "tweetings"}),
            "opened    tweetings:///user?screen_name=quillmarsh\n");
}

constexpr char kInvitation[] =
    "alert     Varnix: If you like Varnix, follow us for the latest news.\n"
    "  press 0  No thanks!\n"
    "  press 1  I'd love to!\n";

TEST_F(Pane, InvitesOnceAndFollowsWithTheAccountsOfTheDevice) {
  const auto first = [this](const std::string& script, const Words& words) {
    const test::Folder fresh;
    Words all = words;
    all.insert(all.end(), {"--root", fresh.path()});
    const std::string out = run(script, all).out;
    return out.substr(out.find("alert"));
  };
  EXPECT_EQ(first("press No thanks!\n", {}), kInvitation);
  EXPECT_EQ(
      first("press 1\n", {"--account", "ann"}),
      kInvitation + std::string("request   https://api.twitter.com/1.1/friendships/create.json "
                                "screen_name=quillmarsh follow=FALSE as ann\n"
                                "alert     Done <3: Awesome. Thanks for following me ^-^\n"
                                "  press 0  You're welcome <3\n"));
  EXPECT_EQ(first("press 1\n", {"--account", "ann", "--refuse-access"}), kInvitation);
  EXPECT_EQ(first("press 1\n", {}),
            kInvitation + std::string("opened    https://twitter.com/quillmarsh\n"));
  // Whoever has seen it is not asked again.
  EXPECT_EQ(says("").find("alert"), std::string::npos);
}

TEST_F(Pane, CoversThePageWithAnAlert) {
  const Outcome covered = run("press restart\nset Enabled off\n");
  EXPECT_EQ(covered.status, 1);
  EXPECT_TRUE(
      covered.error.ends_with("line 2: an alert covers the page: press one of its buttons\n"))
      << covered.error;
  EXPECT_EQ(varnix({"settings", "list"}).out, "");
}

TEST_F(Pane, FindsRows) {
  EXPECT_EQ(after("find colour f\n"), "  2  Colour From                My Colour >\n");
  const std::string found = after("find CENTRE\n");
  EXPECT_NE(found.find("  7  Control Centre             Varnix Colour >\n"), std::string::npos);
  EXPECT_EQ(found.find("Keyboard"), std::string::npos);
}

TEST_F(Pane, SpeaksOtherLanguages) {
  const std::string page = says("", {"--language", "de"});
  EXPECT_NE(page.find("\n  4  Albumcover "), std::string::npos) << page;
  EXPECT_NE(
      says("", {"--language", "ja", "--open", "Varnix/Keyboard"}).find("Settings > Varnix > "),
      std::string::npos);
}

TEST_F(Pane, ReadsStandardInputWithoutAPrompt) {
  Command command({"pane"});
  command.write("set Enabled off\nquit\nno command any more\n");
  EXPECT_EQ(command.finish(), 0) << command.error;
  EXPECT_TRUE(command.out.ends_with("  1  Enabled                    off\n")) << command.out;
  EXPECT_EQ(command.out.find("pane>"), std::string::npos);
}

TEST_F(Pane, NamesWhatIsWrongWithItsLine) {
  auto refuses = [this](const std::string& script, const std::string& message) {
    const Outcome outcome = run(script);
    EXPECT_EQ(outcome.status, 1) << script;
    EXPECT_EQ(outcome.error, "varnix: " + folder.path() + "/script line 1: " + message + "\n");
  };
  refuses("paint", "no such command: paint");
  refuses("oepn Keyboard", "no such command: oepn Keyboard (did you mean open?)");
  refuses("set Enabled", "expected set ROW VALUE: set Enabled");
  refuses("set Enabeld off", "no such row: Enabeld (did you mean Enabled?)");
  refuses("set Enabled maybe", "wrong value (wanted: on or off): maybe");
  refuses("set Colour From App Icno",
          "wrong value (wanted: My Colour or App Icon): App Icno (did you mean App Icon?)");
  refuses("set My Colour blue",
          "wrong value (wanted: #RRGGBB, RRGGBB or #RGB, optionally with :alpha from 0 to 1): "
          "blue");
  refuses("set My Colour #123456:0.5",
          "wrong value (wanted: #RRGGBB, the picker has no slider for the alpha): #123456:0.5");
  refuses("set Keyboard on", "the row has no value: Keyboard");
  refuses("open Keybord", "no such row: Keybord (did you mean Keyboard?)");
  refuses("open Enabled", "no page is behind the row: Enabled");
  refuses("open 99", "no such row: 99");
  refuses("press Keyboard", "the row is not a button: Keyboard");
  refuses("press 0", "no such row: 0");
  refuses("find grass", "no row contains: grass");
  refuses("find", "the page has no search field: Varnix");
  const Outcome twice = run("back\nback\n");
  EXPECT_TRUE(twice.error.ends_with("line 2: no page is before this one: Settings\n"))
      << twice.error;
  const Outcome nowhere = run("", {"--open", "Varnix/Keybaord"});
  EXPECT_EQ(nowhere.status, 1);
  EXPECT_EQ(nowhere.error, "varnix: no such row: Keybaord (did you mean Keyboard?)\n");
  const Outcome button = run("press restart\npress Restrat\n");
  EXPECT_TRUE(button.error.ends_with("no such button: Restrat (did you mean Restart?)\n"))
      << button.error;
}

// The other process hears of the change at once.
TEST_F(Pane, AChangeDyesAnotherProcessAnew) {
  Command other({"run", "--bundle", "com.example.app", "--script", "-"});
  other.write("keyboard\nprint\n");
  ASSERT_TRUE(other.waitFor("\"backgroundColor\":\"#de3027ff\""));
  after("open Presets\npress Ocean\npress Replace\n");
  other.write("wait\nkeyboard\nprint\n");
  EXPECT_TRUE(other.waitFor("\"backgroundColor\":\"#1971c2ff\""));
  EXPECT_EQ(other.finish(), 0);
}

TEST_F(Pane, MarksWhatOthersChange) {
  Command pane({"pane"});
  ASSERT_TRUE(pane.waitFor("Quillmarsh"));
  EXPECT_EQ(varnix({"settings", "set", "keyboard_color_type", "1"}).status, 0);
  pane.write("set Enabled off\nquit\n");
  EXPECT_EQ(pane.finish(), 0) << pane.error;
  EXPECT_TRUE(
      pane.out.ends_with("* 10  Keyboard                   Off >\n"
                         "  1  Enabled                    off\n"))
      << pane.out;
  EXPECT_EQ(varnix({"settings", "list"}).out, "enabled = false\nkeyboard_color_type = 1\n");
}

TEST_F(Pane, KeepsWhatWasChangedWithoutAWord) {
  Command pane({"pane"});
  ASSERT_TRUE(pane.waitFor("Quillmarsh"));
  settings("<key>cc_color_type</key><integer>2</integer>");
  pane.write("set Enabled off\nquit\n");
  EXPECT_EQ(pane.finish(), 0) << pane.error;
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 2\nenabled = false\n");
}

TEST_F(Pane, SurvivesASettingsFileThatIsNone) {
  writeSettings("no property list");
  EXPECT_NE(says("").find("\nbar   #de3027ff\n"), std::string::npos);
}

TEST_F(Pane, ReplacesNoFileThatItCannotRead) { expectDamagedSettingsStay("set Enabled off\n"); }

}  // namespace
