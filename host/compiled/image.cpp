// Linked into every binary that an Objective-C compiler writes for Linux: hands the compiler's
// sections over to the run-time before any other code of the binary runs.
#include "runtime/image.h"

// The linker defines the bounds of a section only if the section exists: an empty entry makes it.
#define OBJC_SECTION_(Type, name, section_)                                           \
  extern "C" {                                                                        \
  [[gnu::visibility("hidden")]] extern Type __start_##section_[];                     \
  [[gnu::visibility("hidden")]] extern Type __stop_##section_[];                      \
  }                                                                                   \
  [[gnu::used, gnu::section(#section_)]] static constinit Type name##Entry = nullptr; \
  static std::span<Type> name() { return {__start_##section_, __stop_##section_}; }

OBJC_SECTION_(SEL, selectorReferences, objc_selrefs)
OBJC_SECTION_(Class, classReferences, objc_classrefs)
OBJC_SECTION_(Class, superclassReferences, objc_superrefs)
OBJC_SECTION_(Class, classes, objc_classlist)
OBJC_SECTION_(Class, nonLazyClasses, objc_nlclslist)
OBJC_SECTION_(objc::CategoryData*, categories, objc_catlist)
OBJC_SECTION_(objc::CategoryData*, nonLazyCategories, objc_nlcatlist)
OBJC_SECTION_(objc_protocol*, protocols, objc_protolist)
OBJC_SECTION_(objc_protocol*, protocolReferences, objc_protorefs)

// The earliest priority that is not reserved.
[[gnu::constructor(101)]] static void registerImage() {
  host::runtime::ImageSections image;
  // Compilers of our time write it in every binary.
  image.flags = host::runtime::kHasCategoryClassProperties;
  image.selectorReferences = selectorReferences();
  image.classReferences = classReferences();
  image.superclassReferences = superclassReferences();
  image.classes = classes();
  image.nonLazyClasses = nonLazyClasses();
  image.categories = categories();
  image.nonLazyCategories = nonLazyCategories();
  image.protocols = protocols();
  image.protocolReferences = protocolReferences();
  host::runtime::mapImage(image);
}
