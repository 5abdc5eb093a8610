// 32-bit Arm: what the library calls gets an even stack. No imported function has a number of 64
// bits at a word that the two conventions differ in; methods may, and r9 is scratch to the device's
// code, so that all that calls it is compiled to do without it.
#if defined(__arm__)

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include "abi/adapters.h"
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
  if (void* function = methodFunction(name)) return wayOut(function);
  void* symbol = linuxSymbol(name);
  return symbol != nullptr && isFunction(symbol) ? wayOut(symbol) : nullptr;
}

}  // namespace varnix::device

#endif
