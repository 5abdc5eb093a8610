#include "process/process.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "process/absence.h"
#include "process/container.h"
#include "process/image_loader.h"
#include "process/unbound_copy.h"
#include "runtime/runtime.h"

namespace host {

namespace {

struct State {
  bool started = false;
  ProcessOptions options;
};

State& state() {
  static auto* process = new State;
  return *process;
}

void* load(const std::filesystem::path& path, int scope) {
  if (void* loaded = dlopen(path.c_str(), RTLD_NOW | scope)) return loaded;
  const char* words = dlerror();
  throw std::runtime_error(words == nullptr ? "cannot load: " + path.string() : words);
}

/// Libraries that were loaded as copies, by their original paths.
std::map<std::filesystem::path, void*>& copies() {
  static auto* handles = new std::map<std::filesystem::path, void*>;
  return *handles;
}

/// Loads a library of this system, without the functions that the process lacks.
void loadHere(const std::filesystem::path& file) {
  if (copies().contains(file)) return;
  const std::filesystem::path found = withoutFunctions(file, absentFunctions());
  void* loaded = load(found, RTLD_LOCAL);
  if (found != file) copies()[file] = loaded;
}

/// A bundle's binary has no extension to tell by: the first four bytes do, in one of the two orders
/// or in the form of several architectures.
bool isDeviceFile(const std::filesystem::path& path) {
  if (path.extension() == ".dylib") return true;
  constexpr std::uint32_t kOfOne = 0xfeedface;
  constexpr std::uint32_t kOfOne64 = 0xfeedfacf;
  constexpr std::uint32_t kOfSeveral = 0xbebafeca;
  std::uint32_t magic = 0;
  std::ifstream(path, std::ios::binary).read(reinterpret_cast<char*>(&magic), sizeof magic);
  return magic == kOfOne || magic == kOfOne64 || magic == kOfSeveral;
}

/// In loading order: a framework finds the classes of those before it.
struct Framework {
  const char* file;
  bool inApplications, inSpringBoard;
  const char* bundle = nullptr;  ///< the only application that has it; null if all have it
  const char* library =
      nullptr;  ///< the package's library, by whose name a process can be started without it
};

constexpr Framework kFrameworks[] = {
    {"UIKit.so", true, true},
    {"SpringBoard.so", false, true},
    {"Preferences.so", true, false, "com.apple.Preferences"},
    {"AppList.so", true, true, nullptr, "libapplist"},
    {"ColorPicker.so", true, true, nullptr, "libcolorpicker"},
    {"ChatKit.so", true, false, "com.apple.MobileSMS"},
    {"Instagram.so", true, false, "com.burbn.instagram"},
    {"Twitter.so", true, false, "com.atebits.Tweetie2"},
    {"Accounts.so", true, false, "com.apple.Preferences"},
    {"Social.so", true, false, "com.apple.Preferences"},
};

bool has(const ProcessOptions& options, const Framework& framework) {
  const bool isSpringBoard = options.kind == ProcessKind::springboard;
  const bool isApplication = options.kind == ProcessKind::application;
  const auto& without = options.withoutLibraries;
  return ((isSpringBoard && framework.inSpringBoard) ||
          (isApplication && framework.inApplications)) &&
         (framework.bundle == nullptr || options.bundle == framework.bundle) &&
         (framework.library == nullptr ||
          std::ranges::find(without, framework.library) == without.end());
}

/// Every phone has this folder, so code that saves settings does not make it. A root that was
/// removed is not made again, and one that cannot be written does not stop the process.
void makeSettingsFolder() {
  std::error_code ignored;
  if (!std::filesystem::is_directory(containerRoot(), ignored)) return;
  std::filesystem::create_directories(hostPath("/var/mobile/Library/Preferences"), ignored);
}

}  // namespace

std::filesystem::path ownFolder() {
  Dl_info info{};
  if (dladdr(&_objc_empty_cache, &info) == 0 || info.dli_fname == nullptr) {
    throw std::runtime_error("the host library does not find itself");
  }
  return std::filesystem::absolute(info.dli_fname).parent_path();
}

void startProcess(const ProcessOptions& options) {
  if (state().started) throw std::logic_error("this process is already a hosted one");
  state().started = true;
  state().options = options;
  setContainerRoot(options.root);
  setInstalledFolder(options.installed ? *options.installed : (ownFolder() / "installed").string());
  makeSettingsFolder();
  // Reports a wrong word in the environment now, not at the first hook.
  runtime::setHooking(options.hooking ? *options.hooking : runtime::hooking());
  const std::filesystem::path frameworks = ownFolder() / "Frameworks";
  // Frameworks link each other's classes by symbol.
  for (const Framework& framework : kFrameworks) {
    if (has(options, framework)) load(frameworks / framework.file, RTLD_GLOBAL);
  }
  for (const std::string& name : options.without) leaveOut(name);
}

const ProcessOptions& processOptions() { return state().options; }

void loadLibrary(const std::string& path) {
  // A bare name means a file in the current folder, not one on the loader's search path.
  const std::filesystem::path file = std::filesystem::absolute(path);
  std::error_code ignored;
  // The system's loader would wait until somebody writes into a pipe.
  if (std::filesystem::is_other(file, ignored))
    throw std::runtime_error(file.string() + ": not a file");
  if (imageLoader() != nullptr && isDeviceFile(file)) return imageLoader()->load(file);
  loadHere(file);
}

void* librarySymbol(const std::string& path, const char* name) {
  const std::filesystem::path file = std::filesystem::absolute(path);
  if (imageLoader() != nullptr && isDeviceFile(file)) return imageLoader()->symbol(file, name);
  if (const auto copy = copies().find(file); copy != copies().end())
    return dlsym(copy->second, name);
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (library == nullptr) return nullptr;
  void* symbol = dlsym(library, name);
  dlclose(library);
  return symbol;
}

std::string fileOfAddress(const void* address) {
  if (imageLoader() != nullptr) {
    if (std::string path = imageLoader()->pathOf(address); !path.empty()) return path;
  }
  Dl_info info{};
  link_map* map = nullptr;
  if (dladdr1(address, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) == 0) return {};
  // A handle of the loader is its map.
  for (const auto& [file, handle] : copies()) {
    if (handle == map) return file.string();
  }
  return info.dli_fname == nullptr ? "" : std::filesystem::absolute(info.dli_fname).string();
}

std::string defaultLibraryPath() {
  return (ownFolder() / (imageLoader() == nullptr ? "libvarnix.so" : "Varnix.dylib")).string();
}

}  // namespace host
