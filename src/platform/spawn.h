// Child processes.
#pragma once

#pragma GCC visibility push(default)
extern "C" {
/// Starts the program at the path and returns at once: 0 with the child's identifier, or an error
/// code. The argument list ends with a null; null file actions, attributes and environment mean
/// none.
int posix_spawn(int* child, const char* path, const void* fileActions, const void* attributes,
                char* const arguments[], char* const environment[]);
}
#pragma GCC visibility pop
