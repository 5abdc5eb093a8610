// Makes a binary's classes and categories known to the run-time. The device's run-time looks for
// the Mach-O lists in every image that says it has any. On Linux this code hands them over when the
// binary is loaded.
#if defined(__ELF__)

#include "objc/metadata.h"

extern "C" {
[[gnu::visibility("hidden")]] extern Class __start_objc_classlist[];
[[gnu::visibility("hidden")]] extern Class __stop_objc_classlist[];
[[gnu::visibility("hidden")]] extern objc::CategoryData* __start_objc_catlist[];
[[gnu::visibility("hidden")]] extern objc::CategoryData* __stop_objc_catlist[];

[[gnu::visibility("default")]] void objc_mapImage(Class* classes, Class* classesEnd,
                                                  objc::CategoryData** categories,
                                                  objc::CategoryData** categoriesEnd);
}

// The linker defines the bounds of a section only if the section exists. An empty entry in each
// list makes them exist in a binary without classes too.
OBJC_CLASS_LIST static constinit Class noClass = nullptr;
OBJC_CATEGORY_LIST static constinit objc::CategoryData* noCategory = nullptr;

// The earliest priority that is not reserved, so that classes exist before other initialisers run.
[[gnu::constructor(101)]] static void mapImage() {
  objc_mapImage(__start_objc_classlist, __stop_objc_classlist, __start_objc_catlist,
                __stop_objc_catlist);
}

#else

#include <cstdint>

namespace {

struct ImageInfo {
  std::uint32_t version;
  std::uint32_t flags;
};

// Without this section the device's run-time ignores the image.
[[gnu::used,
  gnu::section("__DATA,__objc_imageinfo,regular,no_dead_strip")]] constexpr ImageInfo kImageInfo{0,
                                                                                                 0};

}  // namespace

#endif
