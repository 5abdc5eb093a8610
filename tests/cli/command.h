// The varnix command as a real process, for tests.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "support/hosted.h"

namespace test {

using Words = std::vector<std::string>;
using Json = nlohmann::json;

/// How long the slowest build of ours may take for anything.
inline constexpr std::chrono::seconds kPatience{60};

/// The command that is tried: the one that was built, or $VARNIX_TRIED_COMMAND, an installed one
/// say.
std::string commandFile();

/// The library that this command loads.
std::string libraryOfCommand();

/// A command that is running. Its input stays open until closed.
class Command {
 public:
  explicit Command(Words words);
  ~Command();
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  void write(const std::string& text);
  void closeInput();
  /// Nobody reads its standard output any more.
  void closeOutput();
  void signal(int number) const { kill(process_, number); }
  bool isRunning() const { return process_ > 0 && waitpid(process_, nullptr, WNOHANG) == 0; }

  /// Reads until standard output or error holds the text.
  bool waitFor(const std::string& text);

  /// Closes the input, reads everything and returns the exit status; minus the signal's number
  /// where one ended it.
  int finish();
  int wait();

  std::string out;
  std::string error;

 private:
  /// False once both ends are closed.
  bool readSome();

  pid_t process_ = -1;
  int input_ = -1;
  std::array<int, 2> descriptors_{};
  std::array<bool, 2> isClosed_{};
};

struct Outcome {
  int status;
  std::string out;
  std::string error;
};

/// Runs the command to its end, its input closed.
Outcome varnix(const Words& words);

/// A container root of the test's own, and commands that work in it.
class CommandTest : public testing::Test {
 protected:
  CommandTest() { setenv("VARNIX_ROOT", folder.path().c_str(), 1); }

  std::string settingsPath() const;
  void writeSettings(const std::string& bytes) const;
  void settings(const std::string& entries) const;
  /// What `varnix inspect --json` answers for that process.
  static Json inspect(Words words);
  static Json inspectApplication() { return inspect({"--bundle", "com.example.app"}); }

  Folder folder;
};

/// The surface's answer; "absent" where the process has no such surface.
Json answer(const Json& report, const std::string& className, const std::string& property,
            const std::string& situation, const char* when = "after");

}  // namespace test
