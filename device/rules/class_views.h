// Questions about classes that several rules share.
#pragma once

#include "rules/class_data.h"

namespace varnix::device {

/// Of a class's flags.
inline constexpr uint32_t kClassIsMeta = 1, kClassIsRoot = 2;

/// Classes and metaclasses.
std::vector<ClassHalf> halves(const ClassData& data);
/// Those whose parts could all be read.
std::vector<ClassEntry> wholeClasses(const ClassData& data);
/// Nil if none is listed there.
const ClassHalf* listedAt(const ClassData& data, uint64_t address);

}  // namespace varnix::device
