#include "abi/implementations.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>

#include "abi/adapters.h"
#include "abi/boundary.h"
#include "abi/named_function.h"
#include "macho/error.h"
#include "objc/block.h"
#include "objc/hook.h"
#include "runtime/runtime.h"

namespace varnix::device {

namespace {

/// What was made for one side, and the other side's implementation. Both live for ever.
class Crossings {
 public:
  /// Nil if it was not made here.
  IMP originalOf(IMP made) {
    const std::scoped_lock guard(mutex_);
    const auto found = originals_.find(made);
    return found == originals_.end() ? nullptr : found->second;
  }
  void add(IMP made, IMP original) {
    const std::scoped_lock guard(mutex_);
    originals_.emplace(made, original);
  }

 private:
  std::mutex mutex_;
  std::map<IMP, IMP> originals_;
};

Crossings& crossings() {
  static auto* all = new Crossings;
  return *all;
}

/// Head of a block. The two forms of its descriptor differ.
struct BlockHead {
  const void* isa;
  int flags;
  int reserved;
  void* invoke;
  const void* descriptor;
};

/// Nil for a block that does not say.
const char* typesOf(const BlockHead& block) {
  if ((block.flags & objc::kBlockHasSignature) == 0) return nullptr;
  return (block.flags & objc::kBlockHasCopyDispose) != 0
             ? static_cast<const objc::BlockDescriptor*>(block.descriptor)->signature
             : static_cast<const objc::PlainBlockDescriptor*>(block.descriptor)->signature;
}

// Functions that take and return implementations. Their results fill whole registers, as the
// device's callers expect.

IMP fromDevice(IMP implementation, const char* types, SEL selector) {
  return crossed(implementation, types, sel_getName(selector), Direction::toDevice);
}

IMP toDevice(IMP implementation, objc_method* method) {
  return crossed(implementation, method_getTypeEncoding(method),
                 sel_getName(method_getName(method)), Direction::toLinux);
}

std::uintptr_t addMethod(Class cls, SEL selector, IMP implementation, const char* types) {
  return class_addMethod(cls, selector, fromDevice(implementation, types, selector), types) ? 1 : 0;
}

IMP replaceMethod(Class cls, SEL selector, IMP implementation, const char* types) {
  // A method that is there keeps its types.
  objc_method* method = class_getInstanceMethod(cls, selector);
  const char* actual = method == nullptr ? types : method_getTypeEncoding(method);
  const IMP old =
      class_replaceMethod(cls, selector, fromDevice(implementation, actual, selector), types);
  return crossed(old, actual, sel_getName(selector), Direction::toLinux);
}

IMP implementationOf(objc_method* method) {
  return method == nullptr ? nullptr : toDevice(method_getImplementation(method), method);
}

IMP setImplementation(objc_method* method, IMP implementation) {
  if (method == nullptr) return nullptr;
  const IMP live =
      fromDevice(implementation, method_getTypeEncoding(method), method_getName(method));
  return toDevice(method_setImplementation(method, live), method);
}

IMP implementationInClass(Class cls, SEL selector) {
  const IMP found = class_getMethodImplementation(cls, selector);
  objc_method* method = class_getInstanceMethod(cls, selector);
  if (method != nullptr) return toDevice(found, method);
  // The library knows the function for messages that nobody has a method for as an import.
  return reinterpret_cast<void*>(found) == linuxSymbol("_objc_msgForward")
             ? reinterpret_cast<IMP>(importedSymbol("__objc_msgForward"))
             : found;
}

/// The functions for blocks, which come with the run-time's other ones.
template <class Function>
Function* runtimeFunction(const char* name) {
  return reinterpret_cast<Function*>(linuxSymbol(name));
}

IMP implementationWithBlock(BlockHead* block) {
  auto* make = runtimeFunction<IMP(void*)>("imp_implementationWithBlock");
  adaptBlock(block);
  // A block's own place and the receiver are where a method has the receiver and the selector.
  return crossed(make(block), typesOf(*block), "a block", Direction::toLinux);
}

IMP ours(IMP implementation) {
  const IMP original = crossings().originalOf(implementation);
  return original == nullptr ? implementation : original;
}

void* blockOf(IMP implementation) {
  return runtimeFunction<void*(IMP)>("imp_getBlock")(ours(implementation));
}

std::uintptr_t removeBlock(IMP implementation) {
  return runtimeFunction<bool(IMP)>("imp_removeBlock")(ours(implementation)) ? 1 : 0;
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
  const IMP live = fromDevice(replacement, method_getTypeEncoding(method), selector);
  const auto adapt = [method](IMP kept) { return toDevice(kept, method); };
  // The library must never see an implementation that it cannot call, not even for a moment.
  if (!hasOtherFramework(function))
    return host::runtime::hookMessage(cls, selector, live, saved, adapt);
  hook(cls, selector, live, saved);
  if (saved != nullptr) *saved = adapt(*saved);
}

// Messages that return implementations.

IMP methodForSelector(id receiver, SEL command, SEL selector) {
  auto entry = reinterpret_cast<IMP (*)(id, SEL, SEL)>(&objc_msgSend);
  const IMP found = entry(receiver, command, selector);
  objc_method* method = class_getInstanceMethod(object_getClass(receiver), selector);
  return method == nullptr ? found : toDevice(found, method);
}

IMP instanceMethodForSelector(Class receiver, SEL command, SEL selector) {
  auto entry = reinterpret_cast<IMP (*)(Class, SEL, SEL)>(&objc_msgSend);
  const IMP found = entry(receiver, command, selector);
  objc_method* method = class_getInstanceMethod(receiver, selector);
  return method == nullptr ? found : toDevice(found, method);
}

}  // namespace

bool isDevices(IMP implementation) {
  return isOfLibrary(reinterpret_cast<const void*>(implementation));
}

NativeSignature signatureOf(const char* types, const char* name, bool isDevices) {
  try {
    return readNativeSignature(types == nullptr ? "" : types);
  } catch (const Error& error) {
    // Between the device's own functions nothing has to change.
    if (isDevices) return {};
    std::fprintf(stderr, "emulation: %s: %s\n", name, error.what());
    std::abort();
  }
}

IMP crossed(IMP implementation, const char* types, const char* name, Direction direction) {
  if (IMP original = crossings().originalOf(implementation)) return original;
  if (direction == Direction::toLinux && isDevices(implementation)) return implementation;
  const auto made =
      reinterpret_cast<IMP>(bridge(signatureOf(types, name, isDevices(implementation)), direction,
                                   reinterpret_cast<void*>(implementation)));
  if (made != implementation) crossings().add(made, implementation);
  return made;
}

// After this, its function is no longer the library's, so it happens once.
void adaptBlock(void* given) {
  auto* block = static_cast<BlockHead*>(given);
  if (block == nullptr || typesOf(*block) == nullptr || !isOfLibrary(block->invoke)) return;
  block->invoke =
      bridge(signatureOf(typesOf(*block), "a block", true), Direction::toDevice, block->invoke);
}

void* methodFunction(std::string_view name) {
  static const NamedFunction functions[] = {
      {"MSHookMessageEx", &hookMessage},
      {"class_addMethod", &addMethod},
      {"class_getMethodImplementation", &implementationInClass},
      {"class_getMethodImplementation_stret", &implementationInClass},
      {"class_replaceMethod", &replaceMethod},
      {"imp_getBlock", &blockOf},
      {"imp_implementationWithBlock", &implementationWithBlock},
      {"imp_removeBlock", &removeBlock},
      {"method_getImplementation", &implementationOf},
      {"method_setImplementation", &setImplementation},
  };
  return findFunction(functions, name);
}

void* implementationMessage(std::string_view selector) {
  static const NamedFunction messages[] = {
      {"instanceMethodForSelector:", &instanceMethodForSelector},
      {"methodForSelector:", &methodForSelector},
  };
  return bridge({}, Direction::toLinux, findFunction(messages, selector));
}

}  // namespace varnix::device
