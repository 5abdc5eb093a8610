// Type encodings: what a method's types say, one type after the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "export.h"

namespace host::runtime {

/// The type at the front of an encoding, qualifiers and names included; empty at its end. Takes it
/// and the number after it from the encoding.
std::string_view takeType(std::string_view& encoding);

/// All types of a method: the result's, the receiver's, the selector's, the arguments'.
HOST_EXPORT std::vector<std::string_view> typesOf(std::string_view encoding);

/// The type without qualifiers such as const or inout.
HOST_EXPORT std::string_view withoutQualifiers(std::string_view type);

/// In bytes, as this process's compiler lays the type out. Zeros for void and for types that are
/// not known.
struct Extent {
  std::size_t size;
  std::size_t alignment;
};
HOST_EXPORT Extent extentOf(std::string_view type);

/// The members of a structure or union, without their names.
HOST_EXPORT std::vector<std::string_view> membersOf(std::string_view type);

}  // namespace host::runtime
