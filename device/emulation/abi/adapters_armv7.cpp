// 32-bit Arm: calls out of the library get an aligned stack. No imported function takes a 64-bit
// number in a place where the two conventions differ; methods may. The device's code may overwrite
// r9, so everything that calls it is compiled not to use r9.
#if defined(__arm__)

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include "abi/adapters.h"
#include "abi/implementations.h"
#include "abi/jumping.h"
#include "abi/methods.h"
#include "abi/variadic.h"
#include "abi/way_out.h"

namespace varnix::device {

namespace {

bool isFunction(void* address) {
  Dl_info info{};
  const ElfW(Sym)* symbol = nullptr;
  return dladdr1(address, &info, const_cast<void**>(reinterpret_cast<const void**>(&symbol)),
                 RTLD_DL_SYMENT) != 0 &&
         symbol != nullptr && ELF32_ST_TYPE(symbol->st_info) == STT_FUNC;
}

}  // namespace

void* adapterFor(std::string_view name) {
  if (void* entry = messenger(name)) return entry;
  if (void* entry = variadicFunction(name)) return entry;
  if (void* entry = exceptionFunction(name)) return entry;
  if (void* function = methodFunction(name)) return wayOut(function);
  void* symbol = linuxSymbol(name);
  return symbol != nullptr && isFunction(symbol) ? wayOut(symbol) : nullptr;
}

}  // namespace varnix::device

#endif
