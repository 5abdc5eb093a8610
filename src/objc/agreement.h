// Whether two type encodings say that a call travels alike.
#pragma once

namespace objc {

/// Compares a method's own encoding with the one that we would call or replace it by: the number of
/// arguments, and each value by its size and kind of register. So all pointers are alike, BOOL by
/// whatever letter, and structures of the same numbers. An object as our result where the method
/// has none agrees. So does what cannot be read, or null: other extensions write sloppy encodings.
bool agree(const char* theirs, const char* ours);

}  // namespace objc
