// Types of methods, from the run-time's encodings and from the facts: how each value is passed.
#pragma once

#include <string>
#include <vector>

namespace varnix::device {

/// Words of 32 bits (armv7) or 64 bits (arm64).
enum class Width { narrow, wide };

/// The values of a method's encoding: the result, then the arguments without receiver and selector.
/// Throws Error for anything but a method's encoding.
std::vector<std::string> valuesOfEncoding(const std::string& types);

/// The values of a fact's types, which have neither receiver nor selector: "v@{CGRect}". Throws
/// Error if they cannot be read, and for an unknown structure.
std::vector<std::string> valuesOfFact(const std::string& types);

/// The encoding of a fact's value at that width. The facts are for 32 bits, where int and NSInteger
/// have the same letter, and float and CGFloat. On 64 bits it is read as the latter.
std::string widened(const std::string& value, Width width);

/// Whether two values are passed in the same registers. If one is an object, a selector or a
/// pointer to something else, the other must be the same.
bool travelAlike(const std::string& one, const std::string& other);

/// A value in words: "object", "CGRect", "pointer".
std::string inWords(const std::string& value);

/// A method's encoding in words: "void (object, float)".
std::string methodInWords(const std::string& types);

}  // namespace varnix::device
