// libc++'s <string_view> and <cmath> include this for EOF; src/ prints nothing.
#pragma once

#include <stddef.h>

#define EOF (-1)

#ifdef __cplusplus
extern "C" {
#endif

int remove(const char* path);  // std::remove must be declared before the algorithm of that name
int snprintf(char* to, size_t size, const char* format, ...) __attribute__((format(printf, 3, 4)));

#ifdef __cplusplus
}
#endif
