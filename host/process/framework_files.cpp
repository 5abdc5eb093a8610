// What a hosted library's dlopen() reaches: the device's files alone, which lie in the container.
#include <dlfcn.h>

#include <filesystem>

#include "export.h"
#include "process/container.h"

// The library is linked so that its calls of dlopen() come here: a path of the device must never
// name a file of this machine.
extern "C" HOST_EXPORT void* __wrap_dlopen(const char* path, int mode);

void* __wrap_dlopen(const char* path, int mode) {
  const std::string file = host::hostPath(path == nullptr ? "" : path);
  std::error_code ignored;
  if (file.empty() || !std::filesystem::is_regular_file(file, ignored)) return nullptr;
  return dlopen(file.c_str(), (mode & RTLD_NOW) != 0 ? RTLD_NOW : RTLD_LAZY);
}
