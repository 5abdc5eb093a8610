#include "rules/import_homes.h"

namespace varnix::device {

namespace {

struct Home {
  std::string_view symbol;  ///< The name, or its beginning.
  bool isPrefix;
  std::string_view library;
};

constexpr Home kHomes[] = {
    {"_OBJC_CLASS_$_NSObject", false, "libobjc.A.dylib"},
    {"_OBJC_METACLASS_$_NSObject", false, "libobjc.A.dylib"},
    {"__objc_empty_cache", false, "libobjc.A.dylib"},
    {"___CFConstantStringClassReference", false, "CoreFoundation"},
    {"__NSConcreteGlobalBlock", false, "libSystem.B.dylib"},
    {"__NSConcreteStackBlock", false, "libSystem.B.dylib"},
    {"_OBJC_CLASS_$_UI", true, "UIKit"},
    {"_OBJC_METACLASS_$_UI", true, "UIKit"},
    {"_objc_", true, "libobjc.A.dylib"},
    {"_class_", true, "libobjc.A.dylib"},
    {"_object_", true, "libobjc.A.dylib"},
    {"_method_", true, "libobjc.A.dylib"},
    {"_ivar_", true, "libobjc.A.dylib"},
    {"_sel_", true, "libobjc.A.dylib"},
    {"__Block_", true, "libSystem.B.dylib"},
};

}  // namespace

std::string_view homeOf(std::string_view symbol) {
  for (const Home& home : kHomes)
    if (home.isPrefix ? symbol.starts_with(home.symbol) : symbol == home.symbol)
      return home.library;
  return {};
}

}  // namespace varnix::device
