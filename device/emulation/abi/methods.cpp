#include "abi/methods.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

#include "abi/adapters.h"
#include "abi/boundary.h"
#include "abi/native.h"
#include "abi/variadic.h"
#include "macho/error.h"
#include "objc/block.h"
#include "objc/hook.h"
#include "objc/metadata.h"
#include "runtime/runtime.h"

// In functions.S and functions_arm.S. They pass the words that hold arguments, registers first, and
// the place where those on the stack begin. On 32-bit Arm the stack's words follow the registers'.
extern "C" void varnix_msgSend();
extern "C" void varnix_msgSendSuper();
extern "C" void* varnix_prepareMessage(void** words, void* stack);
extern "C" void* varnix_prepareSuperMessage(void** words);
#if defined(__arm__)
extern "C" void varnix_msgSend_stret();
extern "C" void varnix_msgSendSuper_stret();
extern "C" void* varnix_prepareStretMessage(void** words);
extern "C" void* varnix_prepareSuperStretMessage(void** words);
#endif

namespace varnix::device {

namespace {

/// Aborts on a method whose types cannot be read, rather than call it wrongly.
NativeSignature signatureOf(const char* types, const char* name) {
  try {
    return readNativeSignature(types == nullptr ? "" : types);
  } catch (const Error& error) {
    std::fprintf(stderr, "emulation: %s: %s\n", name, error.what());
    std::abort();
  }
}

IMP bridged(IMP implementation, const char* types, const char* name, Direction direction) {
  return reinterpret_cast<IMP>(
      bridge(signatureOf(types, name), direction, reinterpret_cast<void*>(implementation)));
}

/// Head of a block. The two forms of its descriptor differ.
struct BlockHead {
  const void* isa;
  int flags;
  int reserved;
  void* invoke;
  const void* descriptor;
};

/// A block of the library gets a way in that extends its arguments, as the stand-in does not. After
/// that its function is no longer the library's, so this happens once.
void adaptBlock(void* given) {
  auto* block = static_cast<BlockHead*>(given);
  if (block == nullptr || (block->flags & objc::kBlockHasSignature) == 0) return;
  if (!isOfLibrary(block->invoke)) return;
  const char* types =
      (block->flags & objc::kBlockHasCopyDispose) != 0
          ? static_cast<const objc::BlockDescriptor*>(block->descriptor)->signature
          : static_cast<const objc::PlainBlockDescriptor*>(block->descriptor)->signature;
  block->invoke = bridge(signatureOf(types, "a block"), Direction::toDevice, block->invoke);
}

/// Where a message to an object of that class continues: the messenger itself, or a bridge to it.
template <class Messenger>
void* prepare(void** words, Class cls, void* selector, Messenger* messenger) {
  auto* target = reinterpret_cast<void*>(messenger);
  auto* name = static_cast<SEL>(selector);
  objc_method* method = cls == nullptr ? nullptr : class_getInstanceMethod(cls, name);
  if (method == nullptr) return bridge({}, Direction::toLinux, target);
  const NativeSignature call = signatureOf(method_getTypeEncoding(method), sel_getName(name));
  for (size_t i = 0; i < call.blocks.size(); ++i) {
    if (call.blocks[i]) adaptBlock(words[i]);
  }
  return bridge(call, Direction::toLinux, target);
}

Class classOf(void* receiver) {
  return receiver == nullptr ? nullptr : object_getClass(static_cast<id>(receiver));
}

Class superclassOf(void* target) { return static_cast<objc_super*>(target)->superclass; }

void adaptList(void* list) {
  if (list == nullptr) return;
  auto* header = static_cast<objc::ListHeader*>(list);
  auto* entry = reinterpret_cast<objc::MethodEntry<IMP>*>(header + 1);
  for (std::uint32_t i = 0; i < header->count; ++i, ++entry)
    entry->implementation =
        bridged(entry->implementation, entry->types, entry->name, Direction::toDevice);
}

// Functions that take and return implementations. Their results fill whole registers, as the
// device's callers expect.

std::uintptr_t addMethod(Class cls, SEL selector, IMP implementation, const char* types) {
  return class_addMethod(cls, selector,
                         bridged(implementation, types, sel_getName(selector), Direction::toDevice),
                         types)
             ? 1
             : 0;
}

IMP implementationOf(objc_method* method) {
  if (method == nullptr) return nullptr;
  return bridged(method_getImplementation(method), method_getTypeEncoding(method),
                 sel_getName(method_getName(method)), Direction::toLinux);
}

/// Whether the executable has a hooking framework of its own instead of the stand-in's.
bool hasOtherFramework(void* function) {
  Dl_info framework{};
  Dl_info host{};
  return dladdr(function, &framework) == 0 || dladdr(&_objc_empty_cache, &host) == 0 ||
         framework.dli_fbase != host.dli_fbase;
}

void hookMessage(Class cls, SEL selector, IMP replacement, IMP* saved) {
  void* function = linuxSymbol("MSHookMessageEx");
  auto hook = reinterpret_cast<decltype(&MSHookMessageEx)>(function);
  objc_method* method = class_getInstanceMethod(cls, selector);
  if (method == nullptr) return hook(cls, selector, replacement, saved);
  const char* types = method_getTypeEncoding(method);
  const char* name = sel_getName(selector);
  const IMP live = bridged(replacement, types, name, Direction::toDevice);
  const auto adapt = [&](IMP kept) { return bridged(kept, types, name, Direction::toLinux); };
  // The library must never see an implementation that it cannot call, not even for a moment.
  if (!hasOtherFramework(function))
    return host::runtime::hookMessage(cls, selector, live, saved, adapt);
  hook(cls, selector, live, saved);
  if (saved != nullptr) *saved = adapt(*saved);
}

}  // namespace

void* messenger(std::string_view name) {
  if (name == "objc_msgSend") return reinterpret_cast<void*>(&varnix_msgSend);
  if (name == "objc_msgSendSuper") return reinterpret_cast<void*>(&varnix_msgSendSuper);
#if defined(__arm__)
  if (name == "objc_msgSend_stret") return reinterpret_cast<void*>(&varnix_msgSend_stret);
  if (name == "objc_msgSendSuper_stret") return reinterpret_cast<void*>(&varnix_msgSendSuper_stret);
#endif
  return nullptr;
}

void* methodFunction(std::string_view name) {
  if (name == "class_addMethod") return reinterpret_cast<void*>(&addMethod);
  if (name == "method_getImplementation") return reinterpret_cast<void*>(&implementationOf);
  if (name == "MSHookMessageEx") return reinterpret_cast<void*>(&hookMessage);
  return nullptr;
}

void adaptMethods(std::span<uintptr_t> classes, std::span<uintptr_t> categories) {
  for (const uintptr_t each : classes) {
    auto* cls = reinterpret_cast<Class>(each);
    adaptList(static_cast<objc::ClassRo*>(cls->data)->methods);
    adaptList(static_cast<objc::ClassRo*>(cls->isa->data)->methods);
  }
  for (const uintptr_t each : categories) {
    auto* category = reinterpret_cast<objc::CategoryData*>(each);
    adaptList(category->instanceMethods);
    adaptList(category->classMethods);
  }
}

}  // namespace varnix::device

using namespace varnix::device;

void* varnix_prepareMessage(void** words, void* stack) {
  if (words[0] != nullptr) {
    if (void* next = variadicMessage(sel_getName(static_cast<SEL>(words[1])), words, stack))
      return next;
  }
  return prepare(words, classOf(words[0]), words[1], &objc_msgSend);
}

void* varnix_prepareSuperMessage(void** words) {
  return prepare(words, superclassOf(words[0]), words[1], &objc_msgSendSuper);
}

#if defined(__arm__)
// The address of the result comes first.
void* varnix_prepareStretMessage(void** words) {
  return prepare(words, classOf(words[1]), words[2], &objc_msgSend_stret);
}

void* varnix_prepareSuperStretMessage(void** words) {
  return prepare(words, superclassOf(words[1]), words[2], &objc_msgSendSuper_stret);
}
#endif
