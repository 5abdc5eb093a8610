// Hands this binary's classes and categories to the run-time when it is loaded. On the device the
// loader finds the same lists by their Mach-O sections.
#if defined(__ELF__)

#include "objc/metadata.h"

extern "C" {
[[gnu::weak, gnu::visibility("hidden")]] extern Class __start_objc_classlist[];
[[gnu::weak, gnu::visibility("hidden")]] extern Class __stop_objc_classlist[];
[[gnu::weak, gnu::visibility("hidden")]] extern objc::CategoryData* __start_objc_catlist[];
[[gnu::weak, gnu::visibility("hidden")]] extern objc::CategoryData* __stop_objc_catlist[];

[[gnu::visibility("default")]] void objc_mapImage(Class* classes, Class* classesEnd,
                                                  objc::CategoryData** categories,
                                                  objc::CategoryData** categoriesEnd);
}

// The earliest priority that is not reserved: classes exist before any other initialiser runs.
[[gnu::constructor(101)]] static void mapImage() {
  objc_mapImage(__start_objc_classlist, __stop_objc_classlist, __start_objc_catlist,
                __stop_objc_catlist);
}

#endif
