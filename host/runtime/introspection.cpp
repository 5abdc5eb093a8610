// What programs ask about classes, methods, variables and selectors, and how they change them.
#include <algorithm>
#include <cstring>
#include <utility>

#include "internal.h"
#include "lists.h"
#include "objc/object.h"
#include "type_encoding.h"

namespace host::runtime {

const char* keptName(const std::string& name) {
  static auto* names = new std::unordered_map<std::string, char*>;
  const auto [slot, isNew] = names->try_emplace(name, nullptr);
  if (isNew) slot->second = copyText(name);
  return slot->second;
}

namespace {

/// What objc_method_description is.
struct MethodDescription {
  SEL name;
  const char* types;
};

std::vector<std::string_view> methodTypes(const objc_method* method) {
  return method == nullptr || method->types == nullptr ? std::vector<std::string_view>()
                                                       : typesOf(method->types);
}

/// The same at every call, since a hash table has no order.
std::vector<objc_method*> methodsOf(Class cls) {
  std::vector<objc_method*> methods;
  for (const auto& [selector, method] : rw(cls)->methods) methods.push_back(method);
  std::ranges::sort(methods, [](const objc_method* one, const objc_method* other) {
    return std::strcmp(one->name->name, other->name->name) < 0;
  });
  return methods;
}

std::vector<Class> sortedClasses() {
  std::vector<Class> classes = allClasses();
  std::erase_if(classes, [](Class cls) { return objc_getClass(class_getName(cls)) != cls; });
  std::ranges::sort(classes,
                    [](Class one, Class other) { return rw(one)->name < rw(other)->name; });
  return classes;
}

void copyType(const objc_method* method, std::size_t index, char* to, std::size_t size) {
  const auto types = methodTypes(method);
  std::memset(to, 0, size);
  if (index < types.size())
    std::memcpy(to, types[index].data(), std::min(size, types[index].size()));
}

}  // namespace

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

// Selectors.

HOST_EXPORT SEL sel_getUid(const char* name) { return sel_registerName(name); }
HOST_EXPORT bool sel_isEqual(SEL one, SEL other) { return one == other; }

HOST_EXPORT bool sel_isMapped(SEL selector) { return selector != nullptr; }

// Classes.

HOST_EXPORT Class objc_lookUpClass(const char* name) { return objc_getClass(name); }
HOST_EXPORT Class objc_getRequiredClass(const char* name) {
  Class cls = objc_getClass(name);
  if (cls == nullptr) std::abort();
  return cls;
}

/// Stores as many classes as fit, and returns how many there are.
HOST_EXPORT int objc_getClassList(Class* buffer, int size) {
  std::scoped_lock guard(lock());
  const std::vector<Class> classes = sortedClasses();
  for (std::size_t i = 0; buffer != nullptr && i < classes.size() && static_cast<int>(i) < size;
       ++i)
    buffer[i] = classes[i];
  return static_cast<int>(classes.size());
}
HOST_EXPORT Class* objc_copyClassList(unsigned* count) {
  std::scoped_lock guard(lock());
  return copyList(sortedClasses(), count);
}

HOST_EXPORT bool object_isClass(id object) {
  return object != nullptr && class_isMetaClass(object->isa);
}
HOST_EXPORT const char* object_getClassName(id object) {
  return class_getName(object_getClass(object));
}
HOST_EXPORT Class object_setClass(id object, Class cls) {
  return object == nullptr ? nullptr : std::exchange(object->isa, cls);
}

HOST_EXPORT int class_getVersion(Class cls) { return cls == nullptr ? 0 : rw(cls)->version; }
HOST_EXPORT void class_setVersion(Class cls, int version) {
  if (cls != nullptr) rw(cls)->version = version;
}

HOST_EXPORT Class class_setSuperclass(Class cls, Class superclass) {
  std::scoped_lock guard(lock());
  Class old = cls->superclass;
  std::erase(rw(old)->subclasses, cls);
  std::erase(rw(old->isa)->subclasses, cls->isa);
  cls->superclass = superclass;
  cls->isa->superclass = superclass->isa;
  rw(superclass)->subclasses.push_back(cls);
  rw(superclass->isa)->subclasses.push_back(cls->isa);
  flushCaches(cls);
  flushCaches(cls->isa);
  return old;
}

// Methods.

HOST_EXPORT objc_method** class_copyMethodList(Class cls, unsigned* count) {
  std::scoped_lock guard(lock());
  return copyList(cls == nullptr ? std::vector<objc_method*>() : methodsOf(cls), count);
}

HOST_EXPORT unsigned method_getNumberOfArguments(objc_method* method) {
  const auto types = methodTypes(method);
  return types.empty() ? 0 : static_cast<unsigned>(types.size() - 1);
}
HOST_EXPORT void method_getReturnType(objc_method* method, char* to, std::size_t size) {
  copyType(method, 0, to, size);
}
HOST_EXPORT void method_getArgumentType(objc_method* method, unsigned index, char* to,
                                        std::size_t size) {
  copyType(method, std::size_t{index} + 1, to, size);
}
HOST_EXPORT char* method_copyReturnType(objc_method* method) {
  const auto types = methodTypes(method);
  return types.empty() ? nullptr : copyText(std::string(types[0]));
}
HOST_EXPORT char* method_copyArgumentType(objc_method* method, unsigned index) {
  const auto types = methodTypes(method);
  return std::size_t{index} + 1 < types.size() ? copyText(std::string(types[index + 1])) : nullptr;
}

/// The method's name and types; the result lives as long as the process.
HOST_EXPORT MethodDescription* method_getDescription(objc_method* method) {
  static_assert(offsetof(objc_method, name) == 0 && offsetof(objc_method, types) == sizeof(void*));
  return reinterpret_cast<MethodDescription*>(method);
}

HOST_EXPORT void method_exchangeImplementations(objc_method* one, objc_method* other) {
  if (one == nullptr || other == nullptr) return;
  std::scoped_lock guard(lock());
  other->implementation = one->implementation.exchange(other->implementation);
  flushCaches(one->owner);
  flushCaches(other->owner);
}

// Instance variables.

HOST_EXPORT objc_ivar** class_copyIvarList(Class cls, unsigned* count) {
  std::scoped_lock guard(lock());
  return copyList(cls == nullptr ? std::vector<objc_ivar*>() : rw(cls)->ivars, count);
}
HOST_EXPORT objc_ivar* class_getClassVariable(Class cls, const char* name) {
  return cls == nullptr ? nullptr : class_getInstanceVariable(cls->isa, name);
}
HOST_EXPORT const std::uint8_t* class_getIvarLayout(Class cls) {
  return cls == nullptr ? nullptr : rw(cls)->ivarLayout;
}
HOST_EXPORT const std::uint8_t* class_getWeakIvarLayout(Class cls) {
  return cls == nullptr ? nullptr : rw(cls)->weakIvarLayout;
}
HOST_EXPORT void class_setIvarLayout(Class cls, const std::uint8_t* layout) {
  if (cls != nullptr && !isMapped(cls)) rw(cls)->ivarLayout = layout;
}
HOST_EXPORT void class_setWeakIvarLayout(Class cls, const std::uint8_t* layout) {
  if (cls != nullptr && !isMapped(cls)) rw(cls)->weakIvarLayout = layout;
}

// Instances.

HOST_EXPORT void* object_getIndexedIvars(id object) {
  return object == nullptr ? nullptr
                           : reinterpret_cast<char*>(object) + class_getInstanceSize(object->isa);
}
HOST_EXPORT void objc_removeAssociatedObjects(id object) {
  if (object != nullptr) removeAssociations(object);
}
}
