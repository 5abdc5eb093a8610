#include "abi/methods.h"

#include "abi/boundary.h"
#include "abi/implementations.h"
#include "abi/variadic.h"
#include "objc/metadata.h"

// In functions.S and functions_arm.S. They pass the words that hold arguments, registers first, and
// the place where those on the stack begin. On 32-bit Arm the stack's words follow the registers'.
extern "C" void varnix_msgSend();
extern "C" void varnix_msgSendSuper();
extern "C" void varnix_msgSendSuper2();
extern "C" void* varnix_prepareMessage(void** words, void* stack);
extern "C" void* varnix_prepareSuperMessage(void** words);
extern "C" void* varnix_prepareSuper2Message(void** words);
#if defined(__arm__)
extern "C" void varnix_msgSend_stret();
extern "C" void varnix_msgSendSuper_stret();
extern "C" void varnix_msgSendSuper2_stret();
extern "C" void* varnix_prepareStretMessage(void** words);
extern "C" void* varnix_prepareSuperStretMessage(void** words);
extern "C" void* varnix_prepareSuper2StretMessage(void** words);
#endif

namespace varnix::device {

namespace {

/// Where a message to an object of that class continues: the messenger itself, or a bridge to it.
template <class Messenger>
void* prepare(void** words, Class cls, void* selector, Messenger* messenger) {
  auto* target = reinterpret_cast<void*>(messenger);
  auto* name = static_cast<SEL>(selector);
  objc_method* method = cls == nullptr ? nullptr : class_getInstanceMethod(cls, name);
  if (method == nullptr) return bridge({}, Direction::toLinux, target);
  const NativeSignature call = signatureOf(method_getTypeEncoding(method), sel_getName(name),
                                           isDevices(method_getImplementation(method)));
  for (size_t i = 0; i < call.blocks.size(); ++i) {
    if (call.blocks[i]) adaptBlock(words[i]);
  }
  return bridge(call, Direction::toLinux, target);
}

Class classOf(void* receiver) {
  return receiver == nullptr ? nullptr : object_getClass(static_cast<id>(receiver));
}

Class superclassOf(void* target) { return static_cast<objc_super*>(target)->superclass; }

/// The compiler names the class that sends to super, older code that class's superclass.
void* olderForm(void* target) {
  static thread_local objc_super older;
  older = *static_cast<objc_super*>(target);
  older.superclass = class_getSuperclass(older.superclass);
  return &older;
}

void adaptList(void* list) {
  if (list == nullptr) return;
  auto* header = static_cast<objc::ListHeader*>(list);
  auto* entry = reinterpret_cast<objc::MethodEntry<IMP>*>(header + 1);
  for (std::uint32_t i = 0; i < header->count; ++i, ++entry)
    entry->implementation =
        crossed(entry->implementation, entry->types, entry->name, Direction::toDevice);
}

}  // namespace

void* messenger(std::string_view name) {
  constexpr std::pair<std::string_view, void (*)()> kMessengers[] = {
      {"objc_msgSend", &varnix_msgSend},
      {"objc_msgSendSuper", &varnix_msgSendSuper},
      {"objc_msgSendSuper2", &varnix_msgSendSuper2},
#if defined(__arm__)
      {"objc_msgSend_stret", &varnix_msgSend_stret},
      {"objc_msgSendSuper_stret", &varnix_msgSendSuper_stret},
      {"objc_msgSendSuper2_stret", &varnix_msgSendSuper2_stret},
#endif
  };
  for (const auto& [known, function] : kMessengers)
    if (known == name) return reinterpret_cast<void*>(function);
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
    const char* selector = sel_getName(static_cast<SEL>(words[1]));
    if (void* next = variadicMessage(selector, words, stack)) return next;
    if (void* next = implementationMessage(selector)) return next;
  }
  return prepare(words, classOf(words[0]), words[1], &objc_msgSend);
}

void* varnix_prepareSuperMessage(void** words) {
  return prepare(words, superclassOf(words[0]), words[1], &objc_msgSendSuper);
}

void* varnix_prepareSuper2Message(void** words) {
  words[0] = olderForm(words[0]);
  return varnix_prepareSuperMessage(words);
}

#if defined(__arm__)
// The address of the result comes first.
void* varnix_prepareStretMessage(void** words) {
  return prepare(words, classOf(words[1]), words[2], &objc_msgSend_stret);
}

void* varnix_prepareSuperStretMessage(void** words) {
  return prepare(words, superclassOf(words[1]), words[2], &objc_msgSendSuper_stret);
}

void* varnix_prepareSuper2StretMessage(void** words) {
  words[1] = olderForm(words[1]);
  return varnix_prepareSuperStretMessage(words);
}
#endif
