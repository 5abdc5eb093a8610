// varnix pane at a terminal: lines are edited, completed and called back.
#include <poll.h>
#include <pty.h>

#include "cli/pane_command.h"

namespace {

/// The command with a terminal for all its streams.
class Typist {
 public:
  Typist(const std::string& terminalName, const test::Words& words) {
    std::string file = test::commandFile();
    std::vector<char*> arguments{file.data()};
    std::vector<std::string> copies = words;
    for (std::string& word : copies) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    process_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
    if (process_ != 0) return;
    setenv("TERM", terminalName.c_str(), 1);
    setenv("NO_COLOR", "1", 1);
    execv(file.c_str(), arguments.data());
    _exit(127);
  }
  ~Typist() { close(terminal_); }
  Typist(const Typist&) = delete;
  Typist& operator=(const Typist&) = delete;

  void type(const std::string& text) const {
    EXPECT_EQ(write(terminal_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }

  /// Reads until the text has come since the last call.
  bool waitFor(const std::string& text) {
    const auto end = std::chrono::steady_clock::now() + test::kPatience;
    while (true) {
      const std::size_t found = shown_.find(text, from_);
      if (found != std::string::npos) {
        from_ = found + text.size();
        return true;
      }
      if (std::chrono::steady_clock::now() > end || !readSome()) return false;
    }
  }

  int finish() {
    while (readSome()) {
    }
    int status = 0;
    waitpid(process_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

  const std::string& shown() const { return shown_; }

 private:
  bool readSome() {
    pollfd ready{terminal_, POLLIN, 0};
    if (poll(&ready, 1, 1000) == 0) return true;
    char block[4096];
    const ssize_t length = read(terminal_, block, sizeof block);
    if (length <= 0) return false;
    shown_.append(block, static_cast<std::size_t>(length));
    return true;
  }

  int terminal_ = -1;
  pid_t process_ = -1;
  std::string shown_;
  std::size_t from_ = 0;
};

class PaneTerminal : public test::PaneCommandTest {};

TEST_F(PaneTerminal, CompletesCommandsRowsAndValues) {
  Typist typist("xterm", {"pane"});
  ASSERT_TRUE(typist.waitFor("pane> ")) << typist.shown();
  typist.type("se\tEna\tof\t\n");
  EXPECT_TRUE(typist.waitFor("1  Enabled                    off")) << typist.shown();
  ASSERT_TRUE(typist.waitFor("pane> "));
  typist.type("open Keyb\t\n");
  EXPECT_TRUE(typist.waitFor("Settings > Varnix > Keyboard")) << typist.shown();
  typist.type("quit\n");
  EXPECT_EQ(typist.finish(), 0);
  EXPECT_EQ(test::varnix({"settings", "get", "enabled"}).out, "false\n");
}

TEST_F(PaneTerminal, CallsLinesBack) {
  Typist typist("xterm", {"pane"});
  ASSERT_TRUE(typist.waitFor("pane> "));
  typist.type("set Enabled off\n");
  ASSERT_TRUE(typist.waitFor("1  Enabled                    off")) << typist.shown();
  ASSERT_TRUE(typist.waitFor("pane> "));
  // The line before, without its last three letters.
  typist.type("\x1b[A\b\b\bon\n");
  EXPECT_TRUE(typist.waitFor("1  Enabled                    on")) << typist.shown();
  typist.type("quit\n");
  EXPECT_EQ(typist.finish(), 0);
}

TEST_F(PaneTerminal, AMistakeEndsNothing) {
  Typist typist("xterm", {"pane"});
  ASSERT_TRUE(typist.waitFor("pane> "));
  typist.type("opne Keyboard\n");
  EXPECT_TRUE(typist.waitFor("no such command: opne Keyboard (did you mean open?)"))
      << typist.shown();
  typist.type("help\nquit\n");
  EXPECT_TRUE(typist.waitFor("open ROW")) << typist.shown();
  EXPECT_EQ(typist.finish(), 0);
}

TEST_F(PaneTerminal, OfferNothingThatIsNotThere) {
  Typist typist("xterm", {"pane"});
  ASSERT_TRUE(typist.waitFor("pane> "));
  // No file of this folder, and no disabled row.
  typist.type("open CMak\t\n");
  EXPECT_TRUE(typist.waitFor("no such row: CMak")) << typist.shown();
  ASSERT_TRUE(typist.waitFor("pane> "));
  typist.type("press Paste Settings\n");
  EXPECT_TRUE(typist.waitFor("press 0  OK")) << typist.shown();
  ASSERT_TRUE(typist.waitFor("pane> "));
  // The only button.
  typist.type("press \t\n");
  ASSERT_TRUE(typist.waitFor("pane> "));
  typist.type("set Enabled off\nquit\n");
  EXPECT_TRUE(typist.waitFor("1  Enabled                    off")) << typist.shown();
  EXPECT_EQ(typist.finish(), 0);
}

TEST_F(PaneTerminal, TellsWhatOthersChangedBeforeItAsks) {
  Typist typist("xterm", {"pane"});
  ASSERT_TRUE(typist.waitFor("pane> "));
  EXPECT_EQ(test::varnix({"settings", "set", "keyboard_color_type", "1"}).status, 0);
  typist.type("\n");
  EXPECT_TRUE(typist.waitFor("* 10  Keyboard                   Off >")) << typist.shown();
  EXPECT_TRUE(typist.waitFor("pane> "));
  typist.type("quit\n");
  EXPECT_EQ(typist.finish(), 0);
}

TEST_F(PaneTerminal, ReadsPlainLinesAtADumbOne) {
  Typist typist("dumb", {"pane"});
  ASSERT_TRUE(typist.waitFor("pane> "));
  typist.type("set Enabled off\nquit\n");
  EXPECT_TRUE(typist.waitFor("1  Enabled                    off")) << typist.shown();
  EXPECT_EQ(typist.finish(), 0);
  EXPECT_EQ(typist.shown().find('\x1b'), std::string::npos);
}

}  // namespace
