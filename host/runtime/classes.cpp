// Classes: those of loaded binaries, mapped from their metadata, and those made at run time.
#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <unordered_set>

#include "Foundation/log.h"
#include "internal.h"
#include "objc/metadata.h"
#include "process/image_loader.h"
#include "runtime.h"

namespace host::runtime {

namespace {

struct Registry {
  std::unordered_map<std::string_view, Class> byName;
  std::unordered_set<Class> mapped;
  std::unordered_set<std::string> hidden;
  /// As "-[Class selector]", "+[Class selector]" and "Class.variable".
  std::unordered_set<std::string> leftOut;
  /// Never freed, since other code may still use them: a method lives as long as the process.
  std::vector<objc_method*> hiddenMethods;
};

Registry& registry() {
  static auto* classes = new Registry;
  return *classes;
}

std::string methodName(std::string_view className, std::string_view selector, bool classMethod) {
  return (classMethod ? "+[" : "-[") + std::string(className) + " " + std::string(selector) + "]";
}

/// Names are put together only if something is left out.
bool isMethodLeftOut(Class cls, const char* selector) {
  const auto& leftOut = registry().leftOut;
  return !leftOut.empty() &&
         leftOut.contains(methodName(rw(cls)->name, selector, class_isMetaClass(cls)));
}

bool isVariableLeftOut(Class cls, const char* name) {
  const auto& leftOut = registry().leftOut;
  return !leftOut.empty() && leftOut.contains(rw(cls)->name + "." + name);
}

void addMethods(Class cls, void* list) {
  forEachEntry<objc::MethodEntry<IMP>>(list, [cls](objc::MethodEntry<IMP>& entry) {
    if (isMethodLeftOut(cls, entry.name)) return;
    SEL selector = sel_registerName(entry.name);
    auto& methods = rw(cls)->methods;
    if (auto found = methods.find(selector); found != methods.end()) {
      // A category takes precedence over its class.
      found->second->implementation = entry.implementation;
      found->second->types = entry.types;
    } else {
      insertMethod(cls, selector, entry.types, entry.implementation);
    }
  });
}

std::uint32_t alignUp(std::uint32_t value, std::uint32_t log2Alignment) {
  const std::uint32_t mask = (1U << log2Alignment) - 1;
  return (value + mask) & ~mask;
}

/// If a superclass has grown since the binary was compiled, moves the instance variables after the
/// superclass's, and writes the new offsets where the binary's code reads them.
void addIvars(Class cls, const objc::ClassRo& ro) {
  std::uint32_t shift = 0;
  const std::uint32_t superSize =
      cls->superclass == nullptr ? 0 : rw(cls->superclass)->instanceSize;
  if (superSize > ro.instanceStart) {
    std::uint32_t log2Alignment = 0;
    forEachEntry<objc::IvarEntry>(ro.ivars, [&](objc::IvarEntry& entry) {
      log2Alignment = std::max(log2Alignment, entry.log2Alignment);
    });
    shift = alignUp(superSize - ro.instanceStart, log2Alignment);
  }
  rw(cls)->instanceStart = ro.instanceStart + shift;
  rw(cls)->instanceSize = ro.instanceSize + shift;
  forEachEntry<objc::IvarEntry>(ro.ivars, [&](objc::IvarEntry& entry) {
    // A bit-field without a name has no offset of its own.
    if (entry.offset == nullptr) return;
    // Where the superclass is NSObject, compilers write a constant: its size never changes.
    if (shift != 0) *entry.offset += static_cast<std::int32_t>(shift);
    const char* name = entry.name == nullptr ? "" : entry.name;
    if (isVariableLeftOut(cls, name)) return;
    rw(cls)->ivars.push_back(
        new objc_ivar{name, entry.types, *entry.offset, entry.size, entry.log2Alignment});
  });
}

void mapHalf(Class cls, const objc::ClassRo& ro) {
  auto* data = new ClassRw;
  data->flags = ro.flags;
  data->name = ro.name;
  data->ivarLayout = ro.ivarLayout;
  data->weakIvarLayout = ro.weakIvarLayout;
  cls->data = data;
  if (cls->superclass != nullptr) {
    rw(cls->superclass)->subclasses.push_back(cls);
    data->customReferenceCounting = rw(cls->superclass)->customReferenceCounting.load();
    data->customAllocation = rw(cls->superclass)->customAllocation.load();
  }
}

/// Whether the superclass that a binary names exists. One that was itself left out does not.
bool superclassIsThere(Class cls) {
  const auto& ro = *static_cast<objc::ClassRo*>(cls->data);
  return (ro.flags & objc::kRootClass) != 0 || registry().mapped.contains(cls->superclass);
}

/// A look-up by name finds the first class of that name.
void warnOfTakenName(Class cls, const char* name) {
  const auto first = registry().byName.find(name);
  if (first == registry().byName.end()) return;
  host::log(host::LogLevel::error, std::string("Class ") + name + " is implemented in both " +
                                       binaryOf(first->second) + " and " + binaryOf(cls) +
                                       ". One of the two will be used. Which one is undefined.");
}

void mapClass(Class cls) {
  const auto& ro = *static_cast<objc::ClassRo*>(cls->data);
  const auto& metaRo = *static_cast<objc::ClassRo*>(cls->isa->data);
  warnOfTakenName(cls, ro.name);
  mapHalf(cls, ro);
  mapHalf(cls->isa, metaRo);  // second, since a root's metaclass has the root as its superclass
  rw(cls->isa)->instanceSize = sizeof(objc_class);
  rw(cls->isa)->instanceClass = cls;
  addIvars(cls, ro);
  addMethods(cls, ro.methods);
  addMethods(cls->isa, metaRo.methods);
  addProperties(cls, ro.properties);
  addProperties(cls->isa, metaRo.properties);
  addProtocols(cls, ro.protocols);
  registry().byName.emplace(rw(cls)->name, cls);
  registry().mapped.insert(cls);
}

/// Subclasses may exist already: an extension can replace an inherited retain.
void mark(Class cls, std::atomic<bool> ClassRw::* custom) {
  (rw(cls)->*custom) = true;
  for (Class subclass : rw(cls)->subclasses) mark(subclass, custom);
}

}  // namespace

std::string binaryOf(Class cls) {
  if (imageLoader() != nullptr) {
    if (std::string path = imageLoader()->pathOf(cls); !path.empty()) return path;
  }
  Dl_info info{};
  return dladdr(cls, &info) == 0 || info.dli_fname == nullptr ? "?" : info.dli_fname;
}

bool isMapped(Class cls) { return registry().mapped.contains(cls); }

void unmapClass(Class cls) {
  const auto found = registry().byName.find(rw(cls)->name);
  if (found != registry().byName.end() && found->second == cls) registry().byName.erase(found);
  registry().mapped.erase(cls);
}

void mapClasses(std::span<Class> classes) {
  for (bool progress = true; progress;) {
    progress = false;
    for (Class cls : classes) {
      if (cls == nullptr || isMapped(cls) || !superclassIsThere(cls)) continue;
      mapClass(cls);
      progress = true;
    }
  }
}

void mapCategory(const objc::CategoryData& category, void* classProperties) {
  Class cls = category.cls;
  if (!isMapped(cls)) return;
  addMethods(cls, category.instanceMethods);
  addMethods(cls->isa, category.classMethods);
  addProperties(cls, category.properties);
  addProperties(cls->isa, classProperties);
  addProtocols(cls, category.protocols);
  flushCaches(cls);
  flushCaches(cls->isa);
}

std::vector<Class> allClasses() { return {registry().mapped.begin(), registry().mapped.end()}; }

objc_method* insertMethod(Class cls, SEL selector, const char* types, IMP implementation) {
  auto* method = new objc_method{selector, types, implementation, cls};
  ClassRw* data = rw(cls);
  data->methods.emplace(selector, method);
  const std::string_view name(sel_getName(selector));
  if (name == ".cxx_construct") data->construct = implementation;
  if (name == ".cxx_destruct") data->destruct = implementation;
  const bool countsReferences = name == "retain" || name == "release" || name == "autorelease";
  if (countsReferences && cls->superclass != nullptr) mark(cls, &ClassRw::customReferenceCounting);
  // The root of the metaclasses has the root class above it.
  const bool isBelowRoot = cls->superclass != nullptr && cls->superclass->superclass != nullptr;
  if (name == "allocWithZone:" && isBelowRoot) mark(cls, &ClassRw::customAllocation);
  return method;
}

void hideClass(std::string_view name) {
  std::scoped_lock guard(lock());
  registry().hidden.emplace(name);
}

Hidden hideMethod(const std::string& className, const std::string& selector, bool classMethod) {
  std::scoped_lock guard(lock());
  const auto found = registry().byName.find(className);
  if (found == registry().byName.end()) {
    registry().leftOut.insert(methodName(className, selector, classMethod));
    return Hidden::later;
  }
  Class cls = classMethod ? found->second->isa : found->second;
  const auto method = rw(cls)->methods.extract(sel_registerName(selector.c_str()));
  if (method.empty()) return Hidden::nothing;
  registry().hiddenMethods.push_back(method.mapped());
  flushCaches(cls);
  return Hidden::done;
}

Hidden hideVariable(const std::string& className, const std::string& variable) {
  std::scoped_lock guard(lock());
  const auto found = registry().byName.find(className);
  if (found == registry().byName.end()) {
    registry().leftOut.insert(className + "." + variable);
    return Hidden::later;
  }
  auto& variables = rw(found->second)->ivars;
  const auto gone =
      std::erase_if(variables, [&](objc_ivar* ivar) { return ivar->name == variable; });
  return gone == 0 ? Hidden::nothing : Hidden::done;
}

void growClass(std::string_view name, std::uint32_t bytes) {
  std::scoped_lock guard(lock());
  const auto found = registry().byName.find(name);
  if (found != registry().byName.end()) rw(found->second)->instanceSize += bytes;
}

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

Class objc_getClass(const char* name) {
  countLookUp();
  if (name == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  if (registry().hidden.contains(name)) return nullptr;
  auto found = registry().byName.find(name);
  return found == registry().byName.end() ? nullptr : found->second;
}

Class objc_getMetaClass(const char* name) {
  Class cls = objc_getClass(name);
  return cls == nullptr ? nullptr : cls->isa;
}

Class object_getClass(const void* object) { return object == nullptr ? nullptr : isaOf(object); }
const char* class_getName(Class cls) { return cls == nullptr ? "nil" : rw(cls)->name.c_str(); }
Class class_getSuperclass(Class cls) { return cls == nullptr ? nullptr : cls->superclass; }
bool class_isMetaClass(Class cls) {
  return cls != nullptr && (rw(cls)->flags & objc::kMetaClass) != 0;
}

std::size_t class_getInstanceSize(Class cls) {
  return cls == nullptr ? 0 : alignUp(rw(cls)->instanceSize, sizeof(void*) == 8 ? 3 : 2);
}

objc_ivar* class_getInstanceVariable(Class cls, const char* name) {
  countLookUp();
  if (name == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  for (; cls != nullptr; cls = cls->superclass) {
    for (objc_ivar* ivar : rw(cls)->ivars) {
      if (ivar->name == name) return ivar;
    }
  }
  return nullptr;
}

std::ptrdiff_t ivar_getOffset(objc_ivar* ivar) { return ivar == nullptr ? 0 : ivar->offset; }
const char* ivar_getName(objc_ivar* ivar) { return ivar == nullptr ? nullptr : ivar->name.c_str(); }
const char* ivar_getTypeEncoding(objc_ivar* ivar) {
  return ivar == nullptr ? nullptr : ivar->types.c_str();
}

Class objc_allocateClassPair(Class superclass, const char* name, std::size_t) {
  std::scoped_lock guard(lock());
  if (name == nullptr || registry().byName.contains(name)) return nullptr;
  auto* meta = new objc_class{};
  auto* cls = new objc_class{};
  cls->isa = meta;
  cls->superclass = superclass;
  cls->cache = meta->cache = &_objc_empty_cache;
  Class root = superclass;
  while (root != nullptr && root->superclass != nullptr) root = root->superclass;
  meta->isa = root == nullptr ? meta : root->isa;
  meta->superclass = superclass == nullptr ? cls : superclass->isa;

  objc::ClassRo ro{};
  const std::uint32_t rootFlag = superclass == nullptr ? objc::kRootClass : 0U;
  ro.name = name;
  ro.flags = rootFlag;
  mapHalf(cls, ro);
  ro.flags = rootFlag | objc::kMetaClass;
  mapHalf(meta, ro);
  rw(meta)->instanceSize = sizeof(objc_class);
  rw(meta)->instanceClass = cls;
  rw(cls)->instanceSize = superclass == nullptr ? sizeof(Class) : rw(superclass)->instanceSize;
  rw(cls)->instanceStart = rw(cls)->instanceSize;
  return cls;
}

void objc_registerClassPair(Class cls) {
  if (cls == nullptr) return;
  std::scoped_lock guard(lock());
  registry().byName.emplace(rw(cls)->name, cls);
  registry().mapped.insert(cls);
}

bool class_addIvar(Class cls, const char* name, std::size_t size, std::uint8_t log2Alignment,
                   const char* types) {
  if (cls == nullptr || name == nullptr) return false;
  std::scoped_lock guard(lock());
  // A registered class may have instances, whose size is fixed.
  if (registry().mapped.contains(cls) || class_getInstanceVariable(cls, name) != nullptr)
    return false;
  const std::uint32_t offset = alignUp(rw(cls)->instanceSize, log2Alignment);
  rw(cls)->instanceSize = offset + static_cast<std::uint32_t>(size);
  rw(cls)->ivars.push_back(new objc_ivar{name, types == nullptr ? "" : types,
                                         static_cast<std::int32_t>(offset),
                                         static_cast<std::uint32_t>(size), log2Alignment});
  return true;
}
}
