// Measures the picking of colours. The code that picks adds classes and categories to the process's
// frameworks, so it is a module that is loaded after them.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>

#include "process/process.h"

namespace {

/// A container that stays empty.
std::string emptyContainer() {
  auto root = (std::filesystem::temp_directory_path() / "varnix-bench-XXXXXX").string();
  if (mkdtemp(root.data()) == nullptr) throw std::filesystem::filesystem_error(root, {});
  return root;
}

int measure(int count, char** arguments) {
  const std::string root = emptyContainer();
  host::ProcessOptions options;
  options.bundle = "com.example.app";
  options.root = root;
  host::startProcess(options);
  void* module = dlopen(VARNIX_PICTURE_BENCH, RTLD_NOW);
  if (module == nullptr) {
    std::fprintf(stderr, "varnix-picture-bench: %s\n", dlerror());
    return 1;
  }
  const auto run = reinterpret_cast<int (*)(int, char**)>(dlsym(module, "measurePictures"));
  const int status = run == nullptr ? 1 : run(count, arguments);
  std::filesystem::remove_all(root);
  return status;
}

}  // namespace

int main(int count, char** arguments) {
  // Keeps what Mesa compiled from run to run, as a phone does.
  setenv("MESA_SHADER_CACHE_DIR", VARNIX_SHADER_CACHE, 0);
  try {
    return measure(count, arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "varnix-picture-bench: %s\n", error.what());
    return 1;
  }
}
