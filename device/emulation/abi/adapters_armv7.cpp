// 32-bit Arm: arguments and results travel alike on both, but for those of 64 bits, which nothing
// that crosses here has. What differs is the stack's alignment, and r9: it is scratch to the
// device's code, so that all that calls it is compiled to do without it.
#if defined(__arm__)

#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <sys/mman.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>
#include <stdexcept>

#include "abi/adapters.h"
#include "abi/boundary.h"
#include "objc/hook.h"
#include "objc/runtime.h"

// In functions_arm.S.
extern "C" void varnix_leaveLibrary();

namespace varnix::device {

namespace {

/// Code that calls the function with an even stack. Equal ones are made once; they stay for ever.
void* wayOut(void* function) {
  static auto* mutex = new std::mutex;
  static auto* made = new std::map<void*, void*>;
  static std::uint32_t* next = nullptr;
  static std::uint32_t* end = nullptr;
  const std::scoped_lock guard(*mutex);
  void*& place = (*made)[function];
  if (place != nullptr) return place;
  if (next == end) {
    constexpr std::size_t kPiece = 1 << 16;
    void* memory = mmap(nullptr, kPiece, PROT_READ | PROT_WRITE | PROT_EXEC,
                        MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::runtime_error("no memory for code");
    next = static_cast<std::uint32_t*>(memory);
    end = next + kPiece / sizeof(std::uint32_t);
  }
  const std::uint32_t code[] = {
      0xe59fc000,  // ldr ip, [pc]: the word behind the next instruction
      0xe59ff000,  // ldr pc, [pc]: the one behind that
      reinterpret_cast<std::uintptr_t>(function),
      reinterpret_cast<std::uintptr_t>(&varnix_leaveLibrary),
  };
  std::memcpy(next, code, sizeof code);
  place = next;
  next += std::size(code);
  __builtin___clear_cache(static_cast<char*>(place), reinterpret_cast<char*>(next));
  return place;
}

bool isFunction(void* address) {
  Dl_info info{};
  const ElfW(Sym)* symbol = nullptr;
  return dladdr1(address, &info, const_cast<void**>(reinterpret_cast<const void**>(&symbol)),
                 RTLD_DL_SYMENT) != 0 &&
         symbol != nullptr && ELF32_ST_TYPE(symbol->st_info) == STT_FUNC;
}

IMP implementationOf(objc_method* method) {
  return reinterpret_cast<IMP>(
      method == nullptr ? nullptr
                        : wayOut(reinterpret_cast<void*>(method_getImplementation(method))));
}

void hookMessage(Class cls, SEL selector, IMP replacement, IMP* saved) {
  auto hook = reinterpret_cast<decltype(&MSHookMessageEx)>(linuxSymbol("MSHookMessageEx"));
  const bool isThere = class_getInstanceMethod(cls, selector) != nullptr;
  hook(cls, selector, replacement, saved);
  if (isThere && saved != nullptr)
    *saved = reinterpret_cast<IMP>(wayOut(reinterpret_cast<void*>(*saved)));
}

}  // namespace

void* adapterFor(std::string_view name) {
  if (name == "method_getImplementation") return wayOut(reinterpret_cast<void*>(&implementationOf));
  if (name == "MSHookMessageEx") return wayOut(reinterpret_cast<void*>(&hookMessage));
  void* symbol = linuxSymbol(name);
  return symbol != nullptr && isFunction(symbol) ? wayOut(symbol) : nullptr;
}

void adaptMethods(std::span<uintptr_t>, std::span<uintptr_t>) {}

}  // namespace varnix::device

#endif
