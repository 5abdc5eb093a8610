// Instances: making them, counting references, freeing them.
#include <cstdlib>
#include <new>

#include "internal.h"
#include "objc/object.h"
#include "objc/own_class.h"
#include "runtime.h"
#include "runtime/send.h"

OBJC_DECLARE_CLASS_SYMBOLS_(NSConstantString, )
OBJC_DECLARE_CLASS_SYMBOLS_(__NSGlobalBlock, )
OBJC_DECLARE_CLASS_SYMBOLS_(__NSStackBlock, )
OBJC_DECLARE_CLASS_SYMBOLS_(Protocol, )

namespace {

using namespace host::runtime;

void construct(id object, Class cls) {
  if (cls == nullptr) return;
  construct(object, cls->superclass);
  if (IMP own = rw(cls)->construct) reinterpret_cast<id (*)(id, SEL)>(own)(object, nullptr);
}

void destruct(id object, Class cls) {
  for (; cls != nullptr; cls = cls->superclass) {
    if (IMP own = rw(cls)->destruct) reinterpret_cast<void (*)(id, SEL)>(own)(object, nullptr);
  }
}

}  // namespace

namespace host::runtime {

bool hasHeader(id object) {
  if (!countsItself(object->isa)) return true;
  for (Class cls = object->isa; cls != nullptr; cls = cls->superclass) {
    if (cls == &objc_class_NSConstantString || cls == &objc_class___NSGlobalBlock ||
        cls == &objc_class___NSStackBlock || cls == &objc_class_Protocol)
      return false;
  }
  return !class_isMetaClass(object->isa);
}

bool countsItself(Class cls) {
  return rw(cls)->customReferenceCounting || (rw(cls)->flags & objc::kMetaClass) != 0;
}

void addReference(id object) {
  std::atomic<std::int64_t>& references = header(object)->references;
  if (references.load(std::memory_order_relaxed) >= 0)
    references.fetch_add(1, std::memory_order_relaxed);
}

void dropReference(id object) {
  std::atomic<std::int64_t>& references = header(object)->references;
  if (references.load(std::memory_order_relaxed) < 0) return;
  if (references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
  references.store(kDeallocating, std::memory_order_relaxed);
  send(object, NSObject::dealloc);
}

}  // namespace host::runtime

extern "C" {

id class_createInstance(Class cls, std::size_t extraBytes) {
  if (cls == nullptr) return nullptr;
  countAllocation();
  void* memory = std::calloc(1, sizeof(ObjectHeader) + class_getInstanceSize(cls) + extraBytes);
  if (memory == nullptr) throw std::bad_alloc();
  auto* head = ::new (memory) ObjectHeader{};
  head->references.store(1, std::memory_order_relaxed);
  auto* object = reinterpret_cast<id>(head + 1);
  object->isa = cls;
  construct(object, cls);
  return object;
}

/// Ends an instance without freeing its memory.
HOST_EXPORT void* objc_destructInstance(id object) {
  if (object == nullptr) return nullptr;
  destruct(object, object->isa);
  if (countsItself(object->isa) ||
      header(object)->hasAssociations.load(std::memory_order_relaxed) != 0)
    removeAssociations(object);
  if (hasHeader(object) && header(object)->isWeaklyReferenced.load(std::memory_order_relaxed) != 0)
    clearWeakReferences(object);
  return object;
}

id object_dispose(id object) {
  if (object == nullptr) return nullptr;
  objc_destructInstance(object);
  std::free(header(object));
  return nullptr;
}

id objc_retain(id object) {
  if (object == nullptr) return nullptr;
  Class cls = object->isa;
  if (countsItself(cls)) return send<id>(object, "retain"_sel);
  addReference(object);
  return object;
}

void objc_release(id object) {
  if (object == nullptr) return;
  Class cls = object->isa;
  if (countsItself(cls)) {
    send<void>(object, "release"_sel);
    return;
  }
  dropReference(object);
}
}
