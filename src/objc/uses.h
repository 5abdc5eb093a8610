// What a binary uses of the platform, as a program reads it: a line a message, variable or class,
// in a section of its own. Only a build that lists the uses has it; in any other these macros are
// empty.
#pragma once

#include "objc/fixed_string.h"

#if defined(VARNIX_LIST_USES)
namespace objc {
template <FixedString Line>
struct Use {
  [[gnu::used, gnu::section("__DATA,__uses")]] static inline constexpr auto kLine = Line;
};
}  // namespace objc
#define OBJC_USES(...) static_cast<void>(&objc::Use<(__VA_ARGS__)>::kLine)
#else
#define OBJC_USES(...) static_cast<void>(0)
#endif
