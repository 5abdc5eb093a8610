#pragma once

#include "platform/Foundation.h"

namespace host {

/// An NSEnumerator over the array's elements, autoreleased.
NSObject* makeEnumerator(NSArray* elements);

}  // namespace host
