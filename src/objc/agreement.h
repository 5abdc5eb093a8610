// Whether two type encodings describe the same way to pass arguments and result.
#pragma once

namespace objc {

/// Compares a method's own encoding with the one with which we would call or replace it: the number
/// of arguments, and each value by its size and kind of register. So all pointers agree, BOOL
/// agrees however it is encoded, and so do structures of the same numbers. If the method returns
/// nothing, an object as our result agrees. So does null, or an encoding that cannot be read: other
/// extensions write sloppy ones.
bool agree(const char* theirs, const char* ours);

}  // namespace objc
