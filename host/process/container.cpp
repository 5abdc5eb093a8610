#include "process/container.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace host {

namespace {

std::string& root() {
  static std::string path;
  return path;
}

std::string& installed() {
  static std::string path;
  return path;
}

/// The path below the folder, from its slash on; nothing for one that is not below it.
std::optional<std::string> below(const std::string& folder, std::string_view path) {
  if (folder.empty() || !path.starts_with(folder)) return {};
  path.remove_prefix(folder == "/" ? 0 : folder.size());
  if (!path.starts_with('/')) return {};
  return std::string(path);
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

/// Empty if the user has no home.
std::filesystem::path defaultRoot() {
  // A relative $XDG_DATA_HOME is invalid, and ignored.
  const std::filesystem::path data = environment("XDG_DATA_HOME");
  if (data.is_absolute()) return data / "varnix";
  const std::string home = environment("HOME");
  if (home.empty()) return {};
  return std::filesystem::path(home) / ".local" / "share" / "varnix";
}

}  // namespace

void setContainerRoot(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  root() = std::move(path);
}

const std::string& containerRoot() { return root(); }

void setInstalledFolder(std::string folder) { installed() = std::move(folder); }

const std::string& installedFolder() { return installed(); }

namespace {

std::string pathBelow(const std::string& folder, std::string_view devicePath) {
  // Without a root, the device's path would name a file of this machine. A zero byte would cut the
  // path off.
  if (folder.empty() || !devicePath.starts_with('/')) return {};
  if (devicePath.find('\0') != std::string_view::npos) return {};
  std::vector<std::string_view> components;
  while (!devicePath.empty()) {
    const std::size_t end = std::min(devicePath.find('/'), devicePath.size());
    const std::string_view component = devicePath.substr(0, end);
    devicePath.remove_prefix(std::min(end + 1, devicePath.size()));
    if (component.empty() || component == ".") continue;
    if (component != "..") {
      components.push_back(component);
    } else if (!components.empty()) {
      components.pop_back();
    }
  }
  std::string path = folder == "/" ? std::string() : folder;
  for (std::string_view component : components) path.append("/").append(component);
  return path.empty() ? "/" : path;
}

}  // namespace

std::string hostPath(std::string_view devicePath) { return pathBelow(root(), devicePath); }

std::string readablePath(std::string_view devicePath) {
  std::string own = hostPath(devicePath);
  std::error_code ignored;
  if (own.empty() || std::filesystem::exists(own, ignored)) return own;
  std::string package = pathBelow(installed(), devicePath);
  return std::filesystem::exists(package, ignored) ? package : own;
}

std::string devicePath(std::string_view path) {
  for (const std::string& folder : {installed(), root()}) {
    if (auto found = below(folder, path)) return *found;
  }
  return {};
}

std::string resolveContainerRoot(std::string_view option) {
  std::filesystem::path path = option;
  if (path.empty()) path = environment("VARNIX_ROOT");
  if (path.empty()) path = defaultRoot();
  if (path.empty())
    throw std::runtime_error("no container root: neither VARNIX_ROOT nor HOME is set");
  std::error_code error;
  path = std::filesystem::absolute(path, error).lexically_normal();
  if (!error) std::filesystem::create_directories(path, error);
  if (!error && !std::filesystem::is_directory(path, error) && !error) {
    error = std::make_error_code(std::errc::not_a_directory);
  }
  if (error) {
    throw std::runtime_error("cannot make the container root: " + path.string() + ": " +
                             error.message());
  }
  std::string result = path.string();
  while (result.size() > 1 && result.back() == '/') result.pop_back();
  return result;
}

}  // namespace host
