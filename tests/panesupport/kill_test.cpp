// Restarting a process by its name.
#include <sys/wait.h>

#include <cerrno>
#include <csignal>

#include "support/pane.h"
#include "varnix/pane.h"

namespace {

using namespace test;

class Kill : public Pane {
 protected:
  void SetUp() override {
    settingsApplication();
    kill = exported<decltype(QKKillProcess)>("QKKillProcess");
    ASSERT_NE(kill, nullptr);
  }
  /// A killall that records how it was called, and then keeps running if asked to.
  void killallWrites(const std::string& after = "") const {
    program("killall", "cd '" + folder.path() +
                           "'\n"
                           "tr '\\0' '\\n' </proc/$$/cmdline >words\n"
                           "tr '\\0' '\\n' </proc/$$/environ >environment\n"
                           "echo end >>words\nmv words arguments\n" +
                           after);
  }
  /// The child's arguments after its own name. The shell comes before them.
  std::string arguments() const {
    const std::string path = folder.path() + "/arguments";
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(path); }));
    std::string text = contentsOf(path);
    const std::size_t script = text.find("killall\n");
    return script == std::string::npos ? text : text.substr(script);
  }
  /// Waits for a child to end without reaping it. Returns its identifier, 0 if there is none.
  static pid_t endedChild() {
    siginfo_t info{};
    return waitid(P_ALL, 0, &info, WEXITED | WNOWAIT) == 0 ? info.si_pid : 0;
  }

  decltype(&QKKillProcess) kill = nullptr;
};

TEST_F(Kill, EndsWithSignalNineUnlessToldOtherwise) {
  killallWrites();
  EXPECT_EQ(kill(nullptr, string("SpringBoard")), 0);
  EXPECT_EQ(arguments(), "killall\n-9\nSpringBoard\nend\n");
}

TEST_F(Kill, TakesASignalsNameOrNumber) {
  killallWrites();
  EXPECT_EQ(kill(string("HUP"), string("SpringBoard")), 0);
  EXPECT_EQ(arguments(), "killall\n-HUP\nSpringBoard\nend\n");
  std::filesystem::remove(folder.path() + "/arguments");
  EXPECT_EQ(kill(string("15"), string("a name; of many words")), 0);
  EXPECT_EQ(arguments(), "killall\n-15\na name; of many words\nend\n");
}

TEST_F(Kill, GivesTheChildItsName) {
  // A real program instead of a script: its error message shows the name that it was given.
  std::filesystem::create_directories(folder.path() + "/usr/bin");
  std::filesystem::copy("/bin/sleep", folder.path() + "/usr/bin/killall");
  testing::internal::CaptureStderr();
  EXPECT_EQ(kill(nullptr, nullptr), 0);
  EXPECT_GT(endedChild(), 0);
  EXPECT_TRUE(testing::internal::GetCapturedStderr().starts_with("killall: "));
}

TEST_F(Kill, GivesTheChildNoEnvironment) {
  ASSERT_EQ(setenv("VARNIX_SEEN", "yes", 1), 0);
  killallWrites();
  EXPECT_EQ(kill(nullptr, string("SpringBoard")), 0);
  arguments();
  EXPECT_EQ(contentsOf(folder.path() + "/environment"), "");
}

TEST_F(Kill, ReturnsAtOnceAndNeverReaps) {
  killallWrites("/bin/sleep 1\nexit 7");
  const auto before = std::chrono::steady_clock::now();
  EXPECT_EQ(kill(nullptr, string("SpringBoard")), 0);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(900));
  const pid_t child = endedChild();
  ASSERT_GT(child, 0);
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, WNOHANG), child);
  EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_F(Kill, AnswersWhyNothingWasStarted) {
  EXPECT_EQ(kill(nullptr, string("SpringBoard")), ENOENT);
  killallWrites();
  std::filesystem::permissions(folder.path() + "/usr/bin/killall",
                               std::filesystem::perms::owner_read);
  EXPECT_EQ(kill(nullptr, string("SpringBoard")), EACCES);
  EXPECT_EQ(endedChild(), 0);
}

TEST_F(Kill, NeverRunsTheMachinesProgram) {
  std::filesystem::create_directories(folder.path() + "/usr/bin");
  std::filesystem::create_symlink("/bin/true", folder.path() + "/usr/bin/killall");
  EXPECT_EQ(kill(nullptr, string("SpringBoard")), ENOENT);
  std::filesystem::remove_all(folder.path() + "/usr");
  std::filesystem::create_directory_symlink("/usr", folder.path() + "/usr");
  EXPECT_EQ(kill(nullptr, string("SpringBoard")), ENOENT);
  EXPECT_EQ(endedChild(), 0);
}

}  // namespace
