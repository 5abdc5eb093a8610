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

/// How long anything may take in our slowest build.
inline constexpr std::chrono::seconds kPatience{60};

/// The command to test: the built one, or $VARNIX_TRIED_COMMAND, for example an installed one.
std::string commandFile();

/// The library that this command loads.
std::string libraryOfCommand();

/// A running command. Its input stays open until closed.
class Command {
 public:
  explicit Command(Words words);
  ~Command();
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  void write(const std::string& text);
  void closeInput();
  /// From now on nobody reads its standard output.
  void closeOutput();
  void signal(int number) const { kill(process_, number); }
  bool isRunning() const { return process_ > 0 && waitpid(process_, nullptr, WNOHANG) == 0; }

  /// Reads until standard output or error contains the text.
  bool waitFor(const std::string& text);

  /// Closes the input, reads everything and returns the exit status; if a signal ended the command,
  /// minus its number.
  int finish();
  int wait();

  std::string out;
  std::string error;

 private:
  /// False once both streams are closed.
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

/// Runs the command to its end, with its input closed.
Outcome varnix(const Words& words);

/// A container root for the test, and commands that use it.
class CommandTest : public testing::Test {
 protected:
  CommandTest() { setenv("VARNIX_ROOT", folder.path().c_str(), 1); }

  std::string settingsPath() const;
  void writeSettings(const std::string& bytes) const;
  void settings(const std::string& entries) const;
  /// The output of `varnix inspect --json` for that process.
  static Json inspect(Words words);
  static Json inspectApplication() { return inspect({"--bundle", "com.example.app"}); }

  Folder folder;
};

/// The surface's answer; "absent" if the process does not have that surface.
Json answer(const Json& report, const std::string& className, const std::string& property,
            const std::string& situation, const char* when = "after");

}  // namespace test
