// The varnix command as a real process, for tests.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
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
inline std::string commandFile() {
  const char* other = std::getenv("VARNIX_TRIED_COMMAND");
  return other != nullptr ? other : VARNIX_CLI;
}

/// The library that this command loads.
inline std::string libraryOfCommand() {
  if (std::getenv("VARNIX_TRIED_COMMAND") == nullptr) return VARNIX_LIBRARY;
  return (std::filesystem::canonical(commandFile()).parent_path() / "libvarnix.so").string();
}

/// A command that is running. Its input stays open until closed.
class Command {
 public:
  explicit Command(Words words) {
    std::array<std::array<int, 2>, 3> pipes{};
    for (auto& ends : pipes) {
      if (pipe2(ends.data(), O_CLOEXEC) != 0) std::abort();
    }
    const std::string file = commandFile();
    words.insert(words.begin(), file);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    process_ = fork();
    if (process_ == 0) {
      // What runs the tests may ignore them.
      for (int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) std::signal(number, SIG_DFL);
      dup2(pipes[0][0], 0);
      dup2(pipes[1][1], 1);
      dup2(pipes[2][1], 2);
      execv(file.c_str(), arguments.data());
      _exit(127);
    }
    close(pipes[0][0]);
    close(pipes[1][1]);
    close(pipes[2][1]);
    input_ = pipes[0][1];
    descriptors_ = {pipes[1][0], pipes[2][0]};
  }
  ~Command() {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
    closeInput();
    for (int descriptor : descriptors_) {
      if (descriptor >= 0) close(descriptor);
    }
  }
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  void write(const std::string& text) {
    ASSERT_EQ(::write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void closeInput() {
    if (input_ >= 0) close(std::exchange(input_, -1));
  }
  /// Nobody reads its standard output any more.
  void closeOutput() {
    close(std::exchange(descriptors_[0], -1));
    isClosed_[0] = true;
  }
  void signal(int number) const { kill(process_, number); }
  bool isRunning() const { return process_ > 0 && waitpid(process_, nullptr, WNOHANG) == 0; }

  /// Reads until standard output or error holds the text.
  bool waitFor(const std::string& text) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (out.find(text) == out.npos && error.find(text) == error.npos) {
      if (std::chrono::steady_clock::now() > deadline || !readSome()) return false;
    }
    return true;
  }

  /// Closes the input, reads everything and returns the exit status; minus the signal's number
  /// where one ended it.
  int finish() {
    closeInput();
    return wait();
  }
  int wait() {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (readSome()) {
      if (std::chrono::steady_clock::now() > deadline) {
        ADD_FAILURE() << "the command does not end";
        kill(process_, SIGKILL);
      }
    }
    int status = 0;
    waitpid(std::exchange(process_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

  std::string out;
  std::string error;

 private:
  /// False once both ends are closed.
  bool readSome() {
    std::array<pollfd, 2> ready{{{descriptors_[0], POLLIN, 0}, {descriptors_[1], POLLIN, 0}}};
    if (isClosed_[0]) ready[0].fd = -1;
    if (isClosed_[1]) ready[1].fd = -1;
    if (isClosed_[0] && isClosed_[1]) return false;
    poll(ready.data(), ready.size(), 1000);
    for (std::size_t i = 0; i < 2; ++i) {
      if (ready[i].revents == 0) continue;
      char block[65536];
      const ssize_t length = read(descriptors_[i], block, sizeof block);
      if (length <= 0) isClosed_[i] = true;
      else (i == 0 ? out : error).append(block, static_cast<std::size_t>(length));
    }
    return true;
  }

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
inline Outcome varnix(const Words& words) {
  Command command(words);
  const int status = command.finish();
  return {status, command.out, command.error};
}

/// A container root of the test's own, and commands that work in it.
class CommandTest : public testing::Test {
 protected:
  CommandTest() { setenv("VARNIX_ROOT", folder.path().c_str(), 1); }

  std::string settingsPath() const {
    return folder.path() + "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
  }
  void writeSettings(const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(settingsPath()).parent_path());
    std::ofstream(settingsPath(), std::ios::binary | std::ios::trunc) << bytes;
  }
  void settings(const std::string& entries) const {
    writeSettings("<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
  }
  /// What `varnix inspect --json` answers for that process.
  static Json inspect(Words words) {
    words.insert(words.begin(), {"inspect", "--json"});
    const Outcome outcome = varnix(words);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    return outcome.status == 0 ? Json::parse(outcome.out) : Json();
  }
  static Json inspectApplication() { return inspect({"--bundle", "com.example.app"}); }

  Folder folder;
};

/// The surface's answer; "absent" where the process has no such surface.
inline Json answer(const Json& report, const std::string& className, const std::string& property,
                   const std::string& situation, const char* when = "after") {
  for (const Json& surface : report["surfaces"]) {
    if (surface["class"] == className && surface["property"] == property &&
        surface["case"] == situation) {
      return surface[when];
    }
  }
  return "absent";
}

}  // namespace test
