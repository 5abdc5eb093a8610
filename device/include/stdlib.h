// There is no SDK for the device here: the parts of its C library that src/ or libc++'s headers
// name.
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

// libc++ overloads div() for these, so they must exist even if nothing divides.
typedef struct {
  int quot, rem;
} div_t;
typedef struct {
  long quot, rem;
} ldiv_t;
typedef struct {
  long long quot, rem;
} lldiv_t;

div_t div(int a, int b);
ldiv_t ldiv(long a, long b);
lldiv_t lldiv(long long a, long long b);

void* malloc(size_t size);
void* calloc(size_t count, size_t size);
void* realloc(void* block, size_t size);
void free(void* block);
void abort(void) __attribute__((noreturn));
int abs(int value);
long labs(long value);
long long llabs(long long value);
char* getenv(const char* name);
long strtol(const char* text, char** end, int base);
double strtod(const char* text, char** end);

#ifdef __cplusplus
}
#endif
