// There is no SDK for the device here: the parts of its C library that src/ or libc++'s headers
// name.
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

void* memcpy(void* to, const void* from, size_t size);
void* memmove(void* to, const void* from, size_t size);
void* memset(void* to, int byte, size_t size);
int memcmp(const void* a, const void* b, size_t size);
void* memchr(const void* in, int byte, size_t size);
size_t strlen(const char* text);
int strcmp(const char* a, const char* b);
int strncmp(const char* a, const char* b, size_t size);
char* strchr(const char* in, int byte);
char* strrchr(const char* in, int byte);
char* strstr(const char* in, const char* text);
char* strpbrk(const char* in, const char* bytes);

#ifdef __cplusplus
}
#endif
