#include "studio/asker.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>
#include <utility>

#include "Foundation/property_list.h"
#include "common/errors.h"
#include "common/hosted_child.h"
#include "common/interruption.h"
#include "common/json.h"
#include "gallery/materials/screens_module.h"
#include "pick/ask.h"
#include "pick/output.h"
#include "settings/file.h"

namespace varnix::cli {

namespace {

bool sendAll(int socket, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t sent = send(socket, bytes, size, MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) return false;
    bytes += sent;
    size -= static_cast<std::size_t>(sent);
  }
  return true;
}

bool receiveAll(int socket, char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t got = recv(socket, bytes, size, 0);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    bytes += got;
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

bool sendText(int socket, const std::string& text) {
  const std::uint64_t size = text.size();
  char head[sizeof size];
  std::memcpy(head, &size, sizeof size);
  return sendAll(socket, head, sizeof head) && sendAll(socket, text.data(), text.size());
}

/// Nothing if the other end is gone.
std::optional<std::string> receiveText(int socket) {
  std::uint64_t size = 0;
  char head[sizeof size];
  if (!receiveAll(socket, head, sizeof head)) return {};
  std::memcpy(&size, head, sizeof size);
  std::string text(size, '\0');
  if (!receiveAll(socket, text.data(), text.size())) return {};
  return text;
}

Json questionJson(const ProcessQuestion& question) {
  Json screens = Json::array();
  for (const auto* screen : question.screens) screens.push_back(screen->id);
  Json wallpapers = Json::object();
  for (const auto& [name, color] : question.wallpapers)
    wallpapers[name] = {color.red, color.green, color.blue};
  Json files = Json::object();
  for (const auto& [path, file] : question.process.files) files[path] = file.string();
  return {{"bundle", *question.process.bundle},
          {"kind", static_cast<int>(question.process.kind)},
          {"open", question.process.open ? Json(*question.process.open) : Json()},
          {"icons", question.process.icons},
          {"root", question.process.root},
          {"files", files},
          {"withLibrary", question.withLibrary},
          {"artwork", question.artwork},
          {"screens", screens},
          {"wallpapers", wallpapers}};
}

ProcessQuestion questionFrom(const Json& json) {
  ProcessQuestion question;
  question.process.bundle = json["bundle"].get<std::string>();
  question.process.kind = static_cast<host::ProcessKind>(json["kind"].get<int>());
  if (!json["open"].is_null()) question.process.open = json["open"].get<std::string>();
  question.process.icons = json["icons"].get<std::map<std::string, std::string>>();
  question.process.root = json["root"].get<std::string>();
  for (const auto& [path, file] : json["files"].items())
    question.process.files[path] = file.get<std::string>();
  question.withLibrary = json["withLibrary"].get<bool>();
  question.artwork = json["artwork"].get<std::string>();
  question.screens = screensNamed(json["screens"].get<std::vector<std::string>>());
  for (const auto& [name, parts] : json["wallpapers"].items())
    question.wallpapers[name] = {parts[0], parts[1], parts[2]};
  question.asksSurfaces = false;
  return question;
}

/// The candidates to choose from, besides the five colours with names.
constexpr std::size_t kRunnersUp = 8;
constexpr std::chrono::seconds kPickingLimit{30};

std::string pickedText(const std::string& file) {
  HostedChild child(
      [&] { return pickedJson(pick::ask({.files = {file}, .runnersUp = kRunnersUp})); });
  return child.wait(std::chrono::steady_clock::now() + kPickingLimit);
}

/// What comes before the text that is sent back.
constexpr char kAnswer = '+', kFailure = '-';

std::string answered(const std::string& text) {
  try {
    const Json question = Json::parse(text);
    return kAnswer + (question.contains("pick") ? pickedText(question["pick"].get<std::string>())
                                                : askedText(questionFrom(question)));
  } catch (const std::exception& error) {
    return kFailure + std::string(error.what());
  }
}

[[noreturn]] void answerAll(int socket) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  leaveInterruptionsToParent();
  while (const auto text = receiveText(socket)) {
    if (!sendText(socket, answered(*text))) break;
  }
  _exit(0);
}

}  // namespace

Asker::Asker() {
  const std::string file = container_.root() + kSettingsPath;
  std::filesystem::create_directories(std::filesystem::path(file).parent_path());
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
    throw Failure("cannot start a process", std::strerror(errno));
  std::cout.flush();
  process_ = fork();
  if (process_ == 0) {
    close(ends[0]);
    answerAll(ends[1]);
  }
  close(ends[1]);
  socket_ = ends[0];
  if (process_ < 0) throw Failure("cannot start a process", std::strerror(errno));
}

Asker::~Asker() {
  if (socket_ >= 0) close(socket_);
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

ProcessAnswer Asker::ask(ProcessQuestion question, const std::string& settings) {
  const std::string file = container_.root() + kSettingsPath;
  if (!host::writeFile(file, settings, false)) throw Failure("cannot write", file);
  question.process.root = container_.root();
  return parsedAnswer(answerTo(questionJson(question)));
}

Json Asker::pick(const std::string& file) {
  const Json picked = Json::parse(answerTo({{"pick", file}})).at(0);
  if (picked.contains("error")) throw std::runtime_error(picked["error"].get<std::string>());
  return picked;
}

std::string Asker::answerTo(const Json& question) {
  std::optional<std::string> text;
  if (sendText(socket_, dump(question))) text = receiveText(socket_);
  if (!text) throw Failure("a process ended", "the studio has to be started again");
  const bool isAnswer = text->starts_with(kAnswer);
  text->erase(0, 1);
  if (!isAnswer) throw std::runtime_error(*text);
  return std::move(*text);
}

}  // namespace varnix::cli
