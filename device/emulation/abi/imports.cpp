#include <dlfcn.h>

#include <cstdlib>
#include <string>

#include "abi/adapters.h"
#include "abi/boundary.h"

namespace varnix::device {

namespace {

/// Every import is bound before anything runs, so lazy binding never happens.
void neverCalled() { std::abort(); }

}  // namespace

void* linuxSymbol(std::string_view name) {
  // The executable's own definition comes first, since a test may have one.
  return dlsym(RTLD_DEFAULT, std::string(name).c_str());
}

void* importedSymbol(std::string_view symbol) {
  if (symbol == "dyld_stub_binder") return reinterpret_cast<void*>(&neverCalled);
  if (!symbol.starts_with('_')) return nullptr;
  symbol.remove_prefix(1);
  // These reach only the container's files.
  if (symbol == "dlopen") symbol = "__wrap_dlopen";
  if (symbol == "posix_spawn") symbol = "__wrap_posix_spawn";
  if (void* adapter = adapterFor(symbol)) return adapter;
  return linuxSymbol(symbol);
}

}  // namespace varnix::device
