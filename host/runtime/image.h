// What a binary hands over to the run-time: the sections that an Objective-C compiler writes.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "export.h"
#include "objc/metadata.h"

/// A protocol, which is an object too. Compilers write one in every binary that names it; the
/// run-time knows each by the first that it sees.
struct objc_protocol {
  Class isa;
  const char* name;
  void* protocols;
  void* instanceMethods;
  void* classMethods;
  void* optionalInstanceMethods;
  void* optionalClassMethods;
  void* instanceProperties;
  std::uint32_t size;  ///< of this structure, in bytes: an older compiler's ends earlier
  std::uint32_t flags;
  const char** extendedTypes;
  const char* demangledName;
  void* classProperties;
};

namespace host::runtime {

/// Flags of a binary's image information.
enum ImageFlags : std::uint32_t { kHasCategoryClassProperties = 1 << 6 };

/// A category as compilers write it. The last member is there only if the image says so.
struct CompiledCategory : objc::CategoryData {
  void* classProperties;
};

/// The sections of one binary. Any may be empty, and entries may be nil.
struct ImageSections {
  std::string path;         ///< the binary's; if it is empty, that of its first class or category
  std::uint32_t flags = 0;  ///< the second word of the image information
  std::span<SEL> selectorReferences;                 ///< __objc_selrefs; C strings until now
  std::span<Class> classReferences;                  ///< __objc_classrefs
  std::span<Class> superclassReferences;             ///< __objc_superrefs
  std::span<Class> classes;                          ///< __objc_classlist
  std::span<Class> nonLazyClasses;                   ///< __objc_nlclslist: those with +load
  std::span<objc::CategoryData*> categories;         ///< __objc_catlist
  std::span<objc::CategoryData*> nonLazyCategories;  ///< __objc_nlcatlist: those with +load
  std::span<objc_protocol*> protocols;               ///< __objc_protolist
  std::span<objc_protocol*> protocolReferences;      ///< __objc_protorefs
};

/// Makes a binary known that was just loaded: selectors and protocols become those of the process,
/// classes and categories are taken over, and references to a class that is left out become nil.
/// Then each +load runs: of the classes, superclasses first, then of the categories. Call it before
/// any code of the binary runs, and once. A class is left out if its superclass is missing, and a
/// category if its class is missing. A class whose name is taken cannot be found by name, but its
/// own binary can use it.
HOST_EXPORT void mapImage(const ImageSections& image);

}  // namespace host::runtime
