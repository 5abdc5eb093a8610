// Types of methods, as the run-time's encodings have them and as the facts do: how each value
// travels.
#pragma once

#include <string>
#include <vector>

namespace varnix::device {

/// Words of 32 bits (armv7) or of 64 (arm64).
enum class Width { narrow, wide };

/// The values of a method's encoding: the result, then the arguments without receiver and selector.
/// Throws Error for what is no method's encoding.
std::vector<std::string> valuesOfEncoding(const std::string& types);

/// The values of a fact's types, which have neither receiver nor selector: "v@{CGRect}". Throws
/// Error for what cannot be read, and for a structure that is not known here.
std::vector<std::string> valuesOfFact(const std::string& types);

/// What a fact's value is on that width, as an encoding. The facts are of 32 bits, where int and
/// NSInteger, float and CGFloat have one letter: on 64 bits it is taken for the latter.
std::string widened(const std::string& value, Width width);

/// Whether two values of encodings travel in the same registers, and are both objects, selectors or
/// pointers to something else, where they are one of these.
bool travelAlike(const std::string& one, const std::string& other);

/// A value in words: "object", "CGRect", "pointer".
std::string inWords(const std::string& value);

/// A method's encoding in words: "void (object, float)".
std::string methodInWords(const std::string& types);

}  // namespace varnix::device
