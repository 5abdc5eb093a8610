// Nothing of ours is wide; libc++'s <algorithm> and <string_view> ask for the state type and,
// through char_traits<wchar_t>, for these prototypes.
#pragma once

#include <stddef.h>

// Keeps libc++'s const overloads of wcschr and its like out: they would need more prototypes.
#define _WCHAR_H_CPLUSPLUS_98_CONFORMANCE_ 1

#ifdef __cplusplus
extern "C" {
#endif

typedef union {
  char bytes[128];
  long long alignment;
} mbstate_t;
typedef int wint_t;

#define WEOF ((wint_t)-1)

size_t wcslen(const wchar_t* text);
wchar_t* wmemchr(const wchar_t* in, wchar_t unit, size_t count);
int wmemcmp(const wchar_t* a, const wchar_t* b, size_t count);
wchar_t* wmemcpy(wchar_t* to, const wchar_t* from, size_t count);
wchar_t* wmemmove(wchar_t* to, const wchar_t* from, size_t count);
wchar_t* wmemset(wchar_t* to, wchar_t unit, size_t count);

#ifdef __cplusplus
}
#endif
