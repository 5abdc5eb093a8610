#if defined(__aarch64__)

#include "abi/methods.h"

#include <cstdio>
#include <cstdlib>

#include "abi/adapters.h"
#include "abi/boundary.h"
#include "abi/bridge.h"
#include "abi/variadic.h"
#include "macho/error.h"
#include "objc/block.h"
#include "objc/hook.h"
#include "objc/metadata.h"

// In functions.S, which hands the registers x0 to x7 and the address of the stack arguments over.
extern "C" void varnix_msgSend();
extern "C" void varnix_msgSendSuper();
extern "C" void* varnix_prepareMessage(void** registers, void* stack);
extern "C" void* varnix_prepareSuperMessage(void** registers);

namespace varnix::device {

namespace {

/// A method that nobody can call rightly is no reason to call it wrongly.
CallSignature signatureOf(const char* types, const char* name) {
  try {
    return readSignature(types == nullptr ? "" : types);
  } catch (const Error& error) {
    std::fprintf(stderr, "emulation: %s: %s\n", name, error.what());
    std::abort();
  }
}

IMP bridged(IMP implementation, const char* types, const char* name, Direction direction) {
  return reinterpret_cast<IMP>(
      bridge(signatureOf(types, name), direction, reinterpret_cast<void*>(implementation)));
}

/// Head of a block, with what its descriptor is in each of the two forms.
struct BlockHead {
  const void* isa;
  int flags;
  int reserved;
  void* invoke;
  const void* descriptor;
};

/// A block whose arguments the stand-in will not extend gets a way in that does. Once bridged it is
/// no function of the library's.
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

/// Where the message goes on: `messenger` itself, or something in between.
void* prepare(void** registers, Class cls, void* messenger) {
  auto selector = static_cast<SEL>(registers[1]);
  objc_method* method = class_getInstanceMethod(cls, selector);
  if (method == nullptr) return messenger;
  const CallSignature call = signatureOf(method_getTypeEncoding(method), sel_getName(selector));
  for (size_t i = 2; i < call.blocks.size(); ++i) {
    if (call.blocks[i]) adaptBlock(registers[i]);
  }
  return bridge(call, Direction::toLinux, messenger);
}

void adaptList(void* list) {
  if (list == nullptr) return;
  auto* header = static_cast<objc::ListHeader*>(list);
  auto* entry = reinterpret_cast<objc::MethodEntry<IMP>*>(header + 1);
  for (std::uint32_t i = 0; i < header->count; ++i, ++entry)
    entry->implementation =
        bridged(entry->implementation, entry->types, entry->name, Direction::toDevice);
}

// The functions that hand implementations over. Their results are whole registers, as the device's
// callers expect.

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

void hookMessage(Class cls, SEL selector, IMP replacement, IMP* saved) {
  auto hook = reinterpret_cast<decltype(&MSHookMessageEx)>(linuxSymbol("MSHookMessageEx"));
  objc_method* method = class_getInstanceMethod(cls, selector);
  if (method == nullptr) return hook(cls, selector, replacement, saved);
  const char* types = method_getTypeEncoding(method);
  const char* name = sel_getName(selector);
  hook(cls, selector, bridged(replacement, types, name, Direction::toDevice), saved);
  if (saved != nullptr) *saved = bridged(*saved, types, name, Direction::toLinux);
}

}  // namespace

void* methodFunction(std::string_view name) {
  if (name == "objc_msgSend") return reinterpret_cast<void*>(&varnix_msgSend);
  if (name == "objc_msgSendSuper") return reinterpret_cast<void*>(&varnix_msgSendSuper);
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

void* varnix_prepareMessage(void** registers, void* stack) {
  void* messenger = reinterpret_cast<void*>(&objc_msgSend);
  if (registers[0] == nullptr) return messenger;
  const VariadicMessage variadic = variadicMessage(sel_getName(static_cast<SEL>(registers[1])));
  if (variadic.function == nullptr)
    return prepare(registers, object_getClass(registers[0]), messenger);
  registers[variadic.named] = stack;
  return variadic.function;
}

void* varnix_prepareSuperMessage(void** registers) {
  auto* target = static_cast<objc_super*>(registers[0]);
  return prepare(registers, target->superclass, reinterpret_cast<void*>(&objc_msgSendSuper));
}

#endif
