// The platform's class metadata, as its run-time reads it from a binary.
#pragma once

#include <cstdint>

#include "objc/runtime.h"

/// A class as a binary stores it. The run-time takes over `data` when it maps the image.
struct objc_class {
  Class isa;
  Class superclass;
  objc_cache* cache;
  void* vtable;
  void* data;
};

namespace objc {

enum ClassFlags : std::uint32_t {
  kMetaClass = 1,
  kRootClass = 2,
  kHasCxxStructors = 4,
  kHasCxxDestructorOnly = 1 << 8,
};

/// The constant half of a class (class_ro_t). Sizes are in bytes.
struct ClassRo {
  std::uint32_t flags;
  std::uint32_t instanceStart;
  std::uint32_t instanceSize;
#if defined(__LP64__)
  std::uint32_t reserved;
#endif
  const std::uint8_t* ivarLayout;
  const char* name;
  void* methods;
  void* protocols;
  void* ivars;
  const std::uint8_t* weakIvarLayout;
  void* properties;
};

/// One method; Imp is the implementation's own function type, so that no cast is needed.
template <class Imp>
struct MethodEntry {
  const char* name;
  const char* types;
  Imp implementation;
};

struct IvarEntry {
  std::int32_t* offset;
  const char* name;
  const char* types;
  std::uint32_t log2Alignment;
  std::uint32_t size;
};

struct PropertyEntry {
  const char* name;
  const char* attributes;
};

/// What precedes the entries of a method, ivar or property list.
struct ListHeader {
  std::uint32_t entrySize;
  std::uint32_t count;
};

struct CategoryData {
  const char* name;
  Class cls;
  void* instanceMethods;
  void* classMethods;
  void* protocols;
  void* properties;
};

}  // namespace objc

// The compiler's label is a symbol's whole name; Mach-O's carry a leading underscore.
#if defined(__APPLE__)
#define OBJC_SYMBOL(name) asm("_" name)
#define OBJC_CLASS_LIST [[gnu::used, gnu::section("__DATA,__objc_classlist,regular,no_dead_strip")]]
#define OBJC_CATEGORY_LIST \
  [[gnu::used, gnu::section("__DATA,__objc_catlist,regular,no_dead_strip")]]
#define OBJC_WEAK [[clang::weak_import]]
#else
#define OBJC_SYMBOL(name) asm(name)
#define OBJC_CLASS_LIST [[gnu::used, gnu::section("objc_classlist")]]
#define OBJC_CATEGORY_LIST [[gnu::used, gnu::section("objc_catlist")]]
#define OBJC_WEAK [[gnu::weak]]
#endif
#define OBJC_EXPORTED [[gnu::visibility("default")]]
#define OBJC_HIDDEN [[gnu::visibility("hidden")]]
