// varnix run, as a process.
#include <sys/stat.h>

#include <chrono>

#include "cli/command.h"
#include "support/encodings.h"

using test::Command;
using test::varnix;
using test::Words;

namespace {

using Clock = std::chrono::steady_clock;

class Run : public test::CommandTest {
 protected:
  std::string write(const std::string& name, const std::string& bytes) const {
    std::string path = folder.path() + "/" + name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
};

std::ptrdiff_t lines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

TEST_F(Run, TraceShowsEveryChangeInOrder) {
  const auto outcome = varnix({"run", "--bundle", "com.example.app", "--trace"});
  std::string numbers;
  for (const char* name : {"hue", "saturation", "brightness", "alpha"})
    numbers += std::string("add  -[UIColor ") + name + "] " + test::nativeEncoding("d@:") + "\n";
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out,
            "add  -[UIColor isVarnixColor] B@:\n"
            "add  -[UIColor setIsVarnixColor:] v@:B\n"
            "add  -[UIColor isVarnixAlbumColor] B@:\n"
            "add  -[UIColor setIsVarnixAlbumColor:] v@:B\n" +
                numbers +
                "add  +[UIColor yComponentFromColor:] f@:@\n"
                "add  +[UIColor uComponentFromColor:] f@:@\n"
                "add  +[UIColor vComponentFromColor:] f@:@\n"
                "add  +[UIColor YUVSpaceDistanceToColor:fromColor:] f@:@@\n"
                "add  +[UIColor YUVSpaceSquareDistanceToColor:fromColor:] f@:@@\n"
                "hook -[UIStatusBarNewUIStyleAttributes "
                "initWithRequest:backgroundColor:foregroundColor:]\n"
                "hook -[UIView tintColor]\n"
                "hook -[UIView setTintColor:]\n"
                "hook -[UISwitch layoutSubviews]\n"
                "hook -[UISwitch setOnTintColor:]\n"
                "hook -[UISwitch setTintColor:]\n"
                "hook -[UIKeyboard initWithFrame:]\n"
                "hook -[UIKBRenderConfig lightKeyboard]\n");
}

TEST_F(Run, WithoutTheLibraryNothingChanges) {
  const auto outcome = varnix({"run", "--no-bundle", "--no-library", "--trace"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
}

TEST_F(Run, MissingClassesAreLogged) {
  const auto outcome = varnix({"run", "--bundle", "com.example.app", "--without", "UISwitch",
                               "--without", "UIKeyboard", "--without", "NeverThere"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(lines(outcome.error), 5) << outcome.error;
  EXPECT_NE(outcome.error.find("[Varnix2: Tweak:910] ERROR: logos: nil class UISwitch"),
            outcome.error.npos);
  EXPECT_NE(outcome.error.find("[Varnix2: Tweak:910] ERROR: logos: nil class UIKeyboard"),
            outcome.error.npos);
  EXPECT_NE(outcome.error.find("varnix: to be left out, but not here yet: NeverThere\n"),
            outcome.error.npos);
}

TEST_F(Run, AnythingMayBeMissing) {
  const auto trace = [](const test::Words& names) {
    test::Words words = {"run", "--bundle", "com.example.app", "--trace", "--without"};
    words.insert(words.end(), names.begin(), names.end());
    return varnix(words);
  };
  // Several values after one option, as the help says.
  auto outcome = trace({"-[UIView tintColor]", "UIKeyboard", "-[UISwitch setTintColor:]"});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(outcome.out.find("hook -[UIView tintColor]"), outcome.out.npos) << outcome.out;
  EXPECT_EQ(outcome.out.find("hook -[UIKeyboard "), outcome.out.npos) << outcome.out;
  EXPECT_NE(outcome.out.find("hook -[UIView setTintColor:]"), outcome.out.npos) << outcome.out;
  outcome = trace({"NSLog"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(lines(outcome.error), 1) << outcome.error;
  EXPECT_NE(outcome.error.find("NSLog"), outcome.error.npos) << outcome.error;
  outcome = trace({"UISwitch._noSuchVariable"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error, "varnix: the class has no such variable: UISwitch._noSuchVariable\n");
}

/// What the extension reports as our saved implementation: a switch's layout is inherited, and the
/// extension replaces the superclass's.
std::string switchLayout(const test::Words& options) {
  setenv("NEIGHBOUR_PRINTS", "1", 1);
  test::Words words = {"run", "--bundle", "com.example.app", "--load", VARNIX_NEIGHBOUR};
  words.insert(words.end(), options.begin(), options.end());
  const auto outcome = varnix(words);
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  return outcome.out;
}

TEST_F(Run, HooksInTheWayThatWasChosen) {
  unsetenv("VARNIX_HOOKING");
  EXPECT_EQ(switchLayout({}), "layouts of a switch: 1\n");
  EXPECT_EQ(switchLayout({"--hooking", "dynamic"}), "layouts of a switch: 1\n");
  EXPECT_EQ(switchLayout({"--hooking", "snapshot"}), "layouts of a switch: 0\n");
  EXPECT_EQ(switchLayout({"--hooking", "late"}), "layouts of a switch: 0\n");
  setenv("VARNIX_HOOKING", "late", 1);
  EXPECT_EQ(switchLayout({}), "layouts of a switch: 0\n");
  EXPECT_EQ(switchLayout({"--hooking", "dynamic"}), "layouts of a switch: 1\n");
}

TEST_F(Run, AWrongWayOfHookingInTheEnvironmentEndsIt) {
  setenv("VARNIX_HOOKING", "sometimes", 1);
  const auto outcome = varnix({"run", "--bundle", "com.example.app"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error, "varnix: VARNIX_HOOKING: not a way of hooking: sometimes\n");
}

TEST_F(Run, ADaemonHasNoViews) {
  const auto outcome =
      varnix({"run", "--bundle", "com.apple.daemon", "--kind", "daemon", "--trace"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.error, "");
}

TEST_F(Run, SpringBoardNeedsNoPlaceToWrite) {
  const std::string script = write("script", "present control-centre\ntrack " VARNIX_SAMPLES
                                             "/icons/com.example.notes.png\nwait\nprint\n");
  settings("<key>use_album_art</key><true/>");
  const Words words = {"run", "--bundle", "com.apple.springboard", "--script", script};
  // The framework is available although the container has only settings.
  const auto outcome = varnix(words);
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_NE(outcome.out.find("#f9d247ff"), outcome.out.npos) << outcome.out;
  EXPECT_FALSE(std::filesystem::exists(folder.path() + "/System"));
  // The first is a folder where nobody can make a file; the limit allows no file a single byte.
  for (const char* root : {"/proc", folder.path().c_str()}) {
    const std::string command = "trap '' XFSZ; ulimit -f 0; exec " + test::commandFile() +
                                " run --bundle com.apple.springboard --root " + root +
                                " </dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0) << root;
  }
}

TEST_F(Run, PrintsTheMessagesToAClassAlone) {
  const std::string script = write("script", "present control-centre\n");
  const auto outcome = varnix({"run", "--bundle", "com.apple.springboard", "--script", script,
                               "--messages", "SBControlCenterContentContainerView"});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  const std::string name = "[SBControlCenterContentContainerView ";
  std::istringstream lines(outcome.out);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(line.starts_with("send -" + name) || line.starts_with("send +" + name)) << line;
  }
  EXPECT_TRUE(outcome.out.starts_with("send +" + name + "alloc]\n")) << outcome.out;
  EXPECT_NE(outcome.out.find("send -" + name + "controlCenterWillPresent]\n"), outcome.out.npos);
  // A superclass includes its subclasses; a class that does not exist gets no messages.
  const auto ofViews = varnix(
      {"run", "--bundle", "com.apple.springboard", "--script", script, "--messages", "UIView"});
  EXPECT_NE(ofViews.out.find("send -" + name + "controlCenterWillPresent]\n"), ofViews.out.npos);
  EXPECT_EQ(varnix({"run", "--no-bundle", "--messages", "UITeapot"}).out, "");
}

TEST_F(Run, LivesUntilItsInputCloses) {
  Command command({"run", "--bundle", "com.example.app", "--trace"});
  ASSERT_TRUE(command.waitFor("lightKeyboard"));
  command.write("bytes that mean nothing\n");
  usleep(100'000);
  EXPECT_TRUE(command.isRunning());
  EXPECT_EQ(command.finish(), 0);
}

TEST_F(Run, LivesUntilTheTimeIsOver) {
  const auto start = Clock::now();
  Command command({"run", "--bundle", "com.example.app", "--for", "0.4"});
  EXPECT_EQ(command.wait(), 0);  // the input stays open
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(400));
}

TEST_F(Run, WithNobodyAtItsInputOnlyTheTimeCounts) {
  const auto start = Clock::now();
  EXPECT_EQ(std::system((test::commandFile() + " run --bundle a --for 0.4 </dev/null").c_str()), 0);
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(400));
  EXPECT_EQ(std::system((test::commandFile() + " run --bundle a --for 0.1 <&-").c_str()), 0);
  EXPECT_EQ(std::system((test::commandFile() + " run --bundle a </dev/null").c_str()), 0);
}

TEST_F(Run, InputThatClosesEndsItBeforeTheTime) {
  const auto start = Clock::now();
  EXPECT_EQ(varnix({"run", "--bundle", "com.example.app", "--for", "3600"}).status, 0);
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(60));
}

TEST_F(Run, ASignalEndsItAndTakesItsContainerAlong) {
  test::Folder temporary;
  setenv("TMPDIR", temporary.path().c_str(), 1);
  const std::string file = write("s.plist", "<plist><dict/></plist>");
  Command command({"run", "--bundle", "com.example.app", "--settings", file, "--trace"});
  ASSERT_TRUE(command.waitFor("lightKeyboard"));
  EXPECT_FALSE(std::filesystem::is_empty(temporary.path()));
  // This change is printed before the loop runs, when the handlers are already installed.
  command.signal(SIGTERM);
  EXPECT_EQ(command.wait(), 128 + SIGTERM);
  EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
}

/// Commands that are interrupted while they have a temporary container.
class CutOff : public Run {
 protected:
  CutOff() { setenv("TMPDIR", temporary.path().c_str(), 1); }
  bool leavesSomething() const { return !std::filesystem::is_empty(temporary.path()); }

  test::Folder temporary;
  std::string file = write("s.plist", "<plist><dict/></plist>");
};

TEST_F(CutOff, SignalsLeaveNothingOfInspect) {
  for (int number : {SIGINT, SIGTERM, SIGHUP}) {
    Command command({"inspect", "--bundle", "a", "--settings", file, "--script", "-"});
    while (!leavesSomething() && command.isRunning()) usleep(1000);
    command.signal(number);
    EXPECT_EQ(command.wait(), 128 + number);
    EXPECT_EQ(command.error, "");
    EXPECT_FALSE(leavesSomething());
  }
}

TEST_F(CutOff, AReaderWhoGoesAwayLeavesNothing) {
  Command living({"run", "--bundle", "a", "--settings", file, "--messages", "UIView", "--trace"});
  ASSERT_TRUE(living.waitFor("hook -[UIView tintColor]"));
  living.closeOutput();
  Command scripted({"run", "--bundle", "a", "--settings", file, "--script", "-"});
  Command asked({"inspect", "--bundle", "a", "--settings", file, "--script", "-"});
  for (Command* command : {&scripted, &asked}) {
    command->closeOutput();
    command->write("print\nprint\n");
  }
  living.closeInput();
  living.wait();  // it has no more to print, so it may not notice
  EXPECT_EQ(scripted.wait(), 128 + SIGPIPE);
  EXPECT_EQ(asked.finish(), 128 + SIGPIPE);
  EXPECT_EQ(scripted.error + asked.error, "");
  EXPECT_FALSE(leavesSomething());
}

TEST_F(CutOff, PickNeedsNoContainer) {
  setenv("TMPDIR", "/proc", 1);  // where nobody can make a folder
  const auto outcome = varnix({"pick", VARNIX_SAMPLES "/icons/com.example.mail.png"});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
}

TEST_F(Run, ACopyOfTheSettingsIsUsedAndTheFileLeftAlone) {
  test::Folder temporary;
  setenv("TMPDIR", temporary.path().c_str(), 1);
  const std::string bytes = "<plist><dict><key>enabled</key><false/></dict></plist>";
  const std::string file = write("s.plist", bytes);
  const auto outcome =
      varnix({"run", "--bundle", "com.example.app", "--settings", file, "--trace"});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(lines(outcome.out), 4) << outcome.out;  // only the marks
  EXPECT_EQ(test::contentsOf(file), bytes);
  EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
  EXPECT_FALSE(std::filesystem::exists(settingsPath()));
}

TEST_F(Run, SettingsThatCannotBeCopied) {
  auto outcome = varnix({"run", "--no-bundle", "--settings", folder.path() + "/missing"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error, "varnix: cannot read the settings file: " + folder.path() +
                               "/missing: No such file or directory\n");
  outcome = varnix({"run", "--no-bundle", "--settings", folder.path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error,
            "varnix: cannot read the settings file: " + folder.path() + ": is a directory\n");
}

TEST_F(Run, SettingsMayComeThroughAPipe) {
  const std::string command = test::commandFile() + " run --bundle a --trace --settings ";
  const auto traceOf = [](const std::string& shellCommand) {
    FILE* shell = popen(shellCommand.c_str(), "r");
    std::string text;
    for (int c = 0; (c = std::fgetc(shell)) != EOF;) text.push_back(static_cast<char>(c));
    EXPECT_EQ(pclose(shell), 0);
    return text;
  };
  const std::string disabled = "<plist><dict><key>enabled</key><false/></dict></plist>";
  EXPECT_EQ(lines(traceOf("echo '" + disabled + "' | " + command + "/dev/stdin")), 4);
}

TEST_F(CutOff, APipeThatNobodyWritesToIsGivenUp) {
  const std::string pipe = folder.path() + "/pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const char* name : {"run", "inspect", "preview"}) {
    Words words = {name, "--settings", pipe};
    if (std::string(name) != "preview") words.insert(words.end(), {"--bundle", "a"});
    Command command(words);
    while (!leavesSomething() && command.isRunning()) usleep(1000);
    command.signal(SIGTERM);
    EXPECT_EQ(command.wait(), 128 + SIGTERM) << name;
    EXPECT_FALSE(leavesSomething());
  }
  const auto outcome = varnix({"run", "--bundle", "a", "--settings", pipe});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error,
            "varnix: cannot read the settings file: " + pipe + ": it did not end within 5 s\n");
  // The system's loader does not wait for a library either.
  const auto loaded = varnix({"run", "--bundle", "a", "--load", pipe});
  EXPECT_EQ(loaded.status, 1);
  EXPECT_EQ(loaded.error, "varnix: " + pipe + ": not a file\n");
}

TEST_F(Run, Icons) {
  const std::string icon = VARNIX_SAMPLES "/icons/com.example.mail.png";
  const auto outcome = varnix(
      {"run", "--bundle", "a", "--icon", "a=" + icon, "--icon", "b=" + icon, "--icon=a=" + icon});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(outcome.error, "");
}

TEST_F(Run, IconsThatAreNone) {
  for (const char* command : {"run", "inspect"}) {
    for (const std::string& choice : {std::string("a"), std::string("=file"), std::string("a="),
                                      std::string("="), std::string()}) {
      const auto outcome = varnix({command, "--bundle", "a", "--icon", choice});
      EXPECT_EQ(outcome.status, 2);
      EXPECT_EQ(outcome.error, "varnix: not an identifier and a file, ID=FILE: " + choice + "\n");
    }
    for (const std::string& file : {folder.path() + "/missing.png", folder.path(),
                                    std::string("/dev/null"), folder.path() + "/a=b"}) {
      const auto outcome = varnix({command, "--bundle", "a", "--icon", "a=" + file});
      EXPECT_EQ(outcome.status, 1);
      EXPECT_EQ(outcome.error, "varnix: no such icon file: " + file + "\n");
    }
    const std::string file = write("text.png", "no picture");
    const auto outcome = varnix({command, "--bundle", "a", "--icon", "b=" + file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.error.ends_with("not a PNG or JPEG image: " + file + "\n"));
    EXPECT_EQ(lines(outcome.error), 1);
    // A process without images accepts any file.
    EXPECT_EQ(varnix({command, "--bundle", "a", "--kind", "daemon", "--icon", "b=" + file}).status,
              0);
  }
}

TEST_F(Run, AnIconOfWhichAPartIsThereIsAWarning) {
  const std::string whole = test::contentsOf(VARNIX_SAMPLES "/icons/com.example.mail.png");
  const std::string file = write("cut.png", whole.substr(0, whole.size() * 3 / 4));
  // A name that would control a terminal.
  const std::string clearing = write("c\x1b[2Jut.png", whole.substr(0, whole.size() * 3 / 4));
  const std::string shown = folder.path() + "/c\\x1b[2Jut.png";
  for (const char* command : {"run", "inspect"}) {
    for (const auto& [icon, name] : {std::pair(file, file), std::pair(clearing, shown)}) {
      const auto outcome = varnix({command, "--bundle", "a", "--icon", "a=" + icon});
      EXPECT_EQ(outcome.status, 0);
      EXPECT_EQ(
          outcome.error,
          "varnix: " + name + ": the image is truncated or damaged: only a part of it is there\n");
    }
  }
}

TEST_F(Run, AnotherExtensionIsLoadedAfterTheLibrary) {
  // The library itself plays the other extension: loading it again changes nothing.
  const auto once = varnix({"run", "--bundle", "a", "--trace"});
  const auto twice = varnix({"run", "--bundle", "a", "--trace", "--load", test::libraryOfCommand(),
                             "--load", test::libraryOfCommand()});
  EXPECT_EQ(twice.status, 0) << twice.error;
  EXPECT_EQ(twice.out, once.out);
  const auto alone = varnix(
      {"run", "--bundle", "a", "--no-library", "--trace", "--load", test::libraryOfCommand()});
  EXPECT_EQ(alone.out, once.out);
}

TEST_F(Run, AnExtensionThatCannotBeLoaded) {
  const std::string garbage = write("garbage.so", "garbage");
  for (const std::string& file : {folder.path() + "/missing.so", garbage, folder.path()}) {
    const auto outcome = varnix({"run", "--bundle", "a", "--load", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.error.starts_with("varnix: " + file)) << outcome.error;
    EXPECT_EQ(lines(outcome.error), 1);
  }
}

TEST_F(Run, SettingsReachARunningProcess) {
  Command command({"run", "--bundle", "com.example.app", "--load", VARNIX_SHOW_DYE});
  ASSERT_TRUE(command.waitFor("dye #de3027ff\n")) << command.error;
  EXPECT_EQ(varnix({"settings", "set", "global_color", "#1e88e5"}).status, 0);
  EXPECT_TRUE(command.waitFor("dye #1e88e5ff\n")) << command.out;
  EXPECT_EQ(varnix({"settings", "set", "global_color", "#43a047"}).status, 0);
  EXPECT_TRUE(command.waitFor("dye #43a047ff\n")) << command.out;
  EXPECT_EQ(varnix({"settings", "unset", "global_color"}).status, 0);
  EXPECT_EQ(command.finish(), 0);
  EXPECT_TRUE(command.out.ends_with("dye #de3027ff\n")) << command.out;
}

TEST_F(Run, EveryRunningProcessShowsTheNewColour) {
  Command application({"run", "--bundle", "com.example.app", "--load", VARNIX_SHOW_DYE});
  Command springBoard({"run", "--bundle", "com.apple.springboard", "--load", VARNIX_SHOW_DYE});
  ASSERT_TRUE(application.waitFor("dye #de3027ff\n"));
  ASSERT_TRUE(springBoard.waitFor("dye #de3027ff\n"));
  EXPECT_EQ(varnix({"settings", "set", "global_color", "#1e88e5"}).status, 0);
  EXPECT_TRUE(application.waitFor("dye #1e88e5ff\n"));
  EXPECT_TRUE(springBoard.waitFor("dye #1e88e5ff\n"));
  // A process that died disturbs nobody.
  springBoard.signal(SIGKILL);
  EXPECT_EQ(springBoard.wait(), -SIGKILL);
  EXPECT_EQ(varnix({"settings", "set", "global_color", "#43a047"}).status, 0);
  EXPECT_TRUE(application.waitFor("dye #43a047ff\n"));
}

}  // namespace
