// String objects that the compiler emits: "enabled"_ns allocates nothing and is never freed.
#pragma once

#include "objc/fixed_string.h"
#include "objc/object.h"

extern "C" [[gnu::visibility("default")]] int __CFConstantStringClassReference[];

namespace objc {

/// The platform's layout of a constant string of 8-bit characters.
struct ConstantString {
  const void* isa;
  int flags;
  const char* text;
  long length;
};

template <FixedString Text>
consteval bool isAscii() {
  for (std::size_t i = 0; i < Text.size(); ++i) {
    if (static_cast<unsigned char>(Text.text[i]) > 127) return false;
  }
  return true;
}

inline constexpr int kConstantAsciiString = 0x7c8;

template <FixedString Text>
inline constinit ConstantString kConstantString = {&__CFConstantStringClassReference,
                                                   kConstantAsciiString, kStored<Text>.text,
                                                   static_cast<long>(Text.size())};

/// The constant string of that text, for text that the preprocessor puts together.
template <FixedString Text>
  requires(isAscii<Text>())
NSString* constantString() {
  return reinterpret_cast<NSString*>(&kConstantString<Text>);
}

inline namespace literals {
template <FixedString Text>
NSString* operator""_ns() {
  return constantString<Text>();
}
}  // namespace literals

}  // namespace objc
