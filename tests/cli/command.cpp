#include "cli/command.h"

#include <poll.h>

namespace test {

std::string commandFile() {
  const char* other = std::getenv("VARNIX_TRIED_COMMAND");
  return other != nullptr ? other : VARNIX_CLI;
}

std::string libraryOfCommand() {
  if (std::getenv("VARNIX_TRIED_COMMAND") == nullptr) return VARNIX_LIBRARY;
  return (std::filesystem::canonical(commandFile()).parent_path() / "libvarnix.so").string();
}

Command::Command(Words words) {
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
    // The process that runs the tests may ignore these signals.
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

Command::~Command() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  closeInput();
  for (int descriptor : descriptors_) {
    if (descriptor >= 0) close(descriptor);
  }
}

void Command::write(const std::string& text) {
  ASSERT_EQ(::write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

void Command::closeInput() {
  if (input_ >= 0) close(std::exchange(input_, -1));
}

void Command::closeOutput() {
  close(std::exchange(descriptors_[0], -1));
  isClosed_[0] = true;
}

bool Command::waitFor(const std::string& text) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (out.find(text) == out.npos && error.find(text) == error.npos) {
    if (std::chrono::steady_clock::now() > deadline || !readSome()) return false;
  }
  return true;
}

int Command::finish() {
  closeInput();
  return wait();
}

int Command::wait() {
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

bool Command::readSome() {
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

Outcome varnix(const Words& words) {
  Command command(words);
  const int status = command.finish();
  return {status, command.out, command.error};
}

std::string CommandTest::settingsPath() const {
  return folder.path() + "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
}

void CommandTest::writeSettings(const std::string& bytes) const {
  std::filesystem::create_directories(std::filesystem::path(settingsPath()).parent_path());
  std::ofstream(settingsPath(), std::ios::binary | std::ios::trunc) << bytes;
}

void CommandTest::settings(const std::string& entries) const {
  writeSettings("<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
}

Json CommandTest::inspect(Words words) {
  words.insert(words.begin(), {"inspect", "--json"});
  const Outcome outcome = varnix(words);
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  return outcome.status == 0 ? Json::parse(outcome.out) : Json();
}

Json answer(const Json& report, const std::string& className, const std::string& property,
            const std::string& situation, const char* when) {
  for (const Json& surface : report["surfaces"]) {
    if (surface["class"] == className && surface["property"] == property &&
        surface["case"] == situation) {
      return surface[when];
    }
  }
  return "absent";
}

}  // namespace test
