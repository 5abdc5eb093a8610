// What dlopen() in a hosted library can reach: only the device's files, which are in the container
// or were named when the process started.
#include <dlfcn.h>

#include <filesystem>

#include "export.h"
#include "process/container.h"
#include "process/process.h"

// Linked in place of dlopen() in the library: a path of the device must never name a file of this
// machine.
extern "C" HOST_EXPORT void* __wrap_dlopen(const char* path, int mode);

void* __wrap_dlopen(const char* path, int mode) {
  const auto& named = host::processOptions().files;
  const auto found = named.find(path == nullptr ? "" : path);
  const std::string file = found != named.end() ? found->second.string()
                                                : host::readablePath(path == nullptr ? "" : path);
  std::error_code ignored;
  if (file.empty() || !std::filesystem::is_regular_file(file, ignored)) return nullptr;
  return dlopen(file.c_str(), (mode & RTLD_NOW) != 0 ? RTLD_NOW : RTLD_LAZY);
}
