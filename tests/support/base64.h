// Bytes as an XML property list stores them.
#pragma once

#include <string>

#include "platform/Foundation.h"

namespace test {

std::string base64(NSData* data);

}  // namespace test
