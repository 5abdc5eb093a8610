// What a binary uses from the platform, in a form for programs: one line for each message, variable
// or class, in a section of its own. Only the build that lists the uses has it; in all others these
// macros are empty.
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
