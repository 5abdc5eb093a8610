// The dynamic loader.
#pragma once

inline constexpr int RTLD_NOW = 2;

#pragma GCC visibility push(default)
extern "C" {
/// Null if the file is missing or cannot be loaded.
void* dlopen(const char* path, int mode);
}
#pragma GCC visibility pop
