// Constant strings and blocks, to which no list points.
#pragma once

#include "rules/class_data.h"
#include "rules/class_reader.h"

namespace varnix::device {

/// Adds strings, blocks and the descriptors of blocks.
void readConstants(ClassData& data, ClassReader& reader);

}  // namespace varnix::device
