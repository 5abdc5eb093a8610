#include "studio/browser.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "common/errors.h"

namespace varnix::cli {

namespace {

/// A new one, with the mode 700; empty if there can be none.
std::string privateFolderIn(const std::filesystem::path& base) {
  std::string path = (base / "varnix-studio-XXXXXX").string();
  return mkdtemp(path.data()) == nullptr ? std::string() : path;
}

std::string privateFolder() {
  const char* runtime = getenv("XDG_RUNTIME_DIR");
  struct stat status = {};
  if (runtime != nullptr && runtime[0] == '/' && stat(runtime, &status) == 0 &&
      status.st_uid == geteuid()) {
    if (std::string path = privateFolderIn(runtime); !path.empty()) return path;
  }
  std::error_code error;
  const auto base = std::filesystem::temp_directory_path(error);
  std::string path = privateFolderIn(error ? "/tmp" : base);
  if (path.empty()) throw Failure("cannot make a private folder", std::strerror(errno));
  return path;
}

bool writeNew(const std::string& path, std::string_view text) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (file < 0) return false;
  const bool isWritten = fchmod(file, S_IRUSR | S_IWUSR) == 0 &&
                         write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  return close(file) == 0 && isWritten;
}

}  // namespace

AddressFile::AddressFile(const std::string& address) : folder_(privateFolder()) {
  const std::string page =
      "<!doctype html>\n<meta charset=\"utf-8\">\n<meta name=\"referrer\" "
      "content=\"no-referrer\">\n"
      "<title>Varnix studio</title>\n<meta http-equiv=\"refresh\" content=\"0; url=" +
      address + "\">\n<a href=\"" + address + "\">The studio</a>\n";
  if (writeNew(path(), page)) return;
  const std::string why = std::strerror(errno);
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
  throw Failure("cannot write", path() + ": " + why);
}

AddressFile::~AddressFile() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::string AddressFile::path() const { return folder_ + "/studio.html"; }

bool hasDesktop() { return getenv("DISPLAY") != nullptr || getenv("WAYLAND_DISPLAY") != nullptr; }

void openFile(const std::string& file) {
  std::string program = "xdg-open", argument = file;
  char* words[] = {program.data(), argument.data(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
  pid_t process = 0;
  posix_spawnp(&process, program.c_str(), &actions, nullptr, words, environ);
  posix_spawn_file_actions_destroy(&actions);
}

}  // namespace varnix::cli
