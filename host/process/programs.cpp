#include "process/programs.h"

#include <spawn.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <mutex>

#include "process/container.h"
#include "process/process.h"

namespace host {

namespace {

/// Whether an existing file is below the root, after following links.
bool liesInRoot(const std::string& file) {
  std::error_code error;
  const auto root = std::filesystem::canonical(containerRoot(), error);
  if (error) return false;
  const auto real = std::filesystem::canonical(file, error);
  if (error) return false;
  const std::string below = std::filesystem::relative(real, root, error).string();
  return !error && below != ".." && !below.starts_with("../");
}

std::mutex startedLock;

std::vector<StartedProgram>& started() {
  static auto* list = new std::vector<StartedProgram>;
  return *list;
}

void note(char* const arguments[], bool hasStarted) {
  std::string words;
  for (; arguments != nullptr && *arguments != nullptr; ++arguments)
    words.append(words.empty() ? "" : " ").append(*arguments);
  const std::lock_guard lock(startedLock);
  started().push_back({std::move(words), hasStarted});
}

int start(int* child, const char* path, const void* fileActions, const void* attributes,
          char* const arguments[], char* const environment[]) {
  const std::string file = programFile(path == nullptr ? "" : path);
  if (file.empty()) return ENOENT;
  // Checked here, because under emulation a parent does not learn that its child could not start.
  if (access(file.c_str(), X_OK) != 0) return errno;
  char* const none[] = {nullptr};
  return posix_spawn(child, file.c_str(),
                     static_cast<const posix_spawn_file_actions_t*>(fileActions),
                     static_cast<const posix_spawnattr_t*>(attributes), arguments,
                     environment == nullptr ? none : environment);
}

}  // namespace

std::string programFile(std::string_view devicePath) {
  const std::string file = hostPath(devicePath);
  if (file.empty()) return {};
  std::error_code ignored;
  if (std::filesystem::exists(std::filesystem::symlink_status(file, ignored)))
    return liesInRoot(file) && std::filesystem::is_regular_file(file, ignored) ? file
                                                                               : std::string();
  return devicePath == "/bin/sh" ? "/bin/sh" : std::string();
}

std::vector<StartedProgram> startedPrograms() {
  const std::lock_guard lock(startedLock);
  return started();
}

std::vector<std::string> childEnvironment() {
  std::vector<std::string> strings;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text = *entry;
    if (!text.starts_with("PATH=")) strings.emplace_back(text);
  }
  std::string path = "PATH=";
  for (const char* folder : {"/usr/bin", "/bin", "/usr/sbin", "/sbin"})
    path += hostPath(folder) + ":";
  strings.push_back(path + (ownFolder() / "commands").string());
  return strings;
}

std::vector<char*> pointersTo(std::vector<std::string>& strings) {
  std::vector<char*> pointers;
  pointers.reserve(strings.size() + 1);
  for (std::string& string : strings) pointers.push_back(string.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace host

// Linked in place of posix_spawn() in the library.
extern "C" HOST_EXPORT int __wrap_posix_spawn(int* child, const char* path, const void* fileActions,
                                              const void* attributes, char* const arguments[],
                                              char* const environment[]);

int __wrap_posix_spawn(int* child, const char* path, const void* fileActions,
                       const void* attributes, char* const arguments[], char* const environment[]) {
  const int error = host::start(child, path, fileActions, attributes, arguments, environment);
  host::note(arguments, error == 0);
  return error;
}
