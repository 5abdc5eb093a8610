#include "common/module.h"

#include <dlfcn.h>

#include <string>

#include "common/errors.h"
#include "process/process.h"

namespace varnix::cli {

void* moduleFunction(const char* file, const char* name, const char* meaning) {
  void* module = dlopen((host::ownFolder() / file).c_str(), RTLD_NOW | RTLD_LOCAL);
  void* function = module == nullptr ? nullptr : dlsym(module, name);
  if (function == nullptr) throw Failure(std::string("cannot load ") + meaning, dlerror());
  return function;
}

}  // namespace varnix::cli
