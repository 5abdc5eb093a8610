#include "Foundation/NSCoder.h"

#include "objc/define.h"

OBJC_CLASS_NAMED(NSCoder, NSObject, NSCoder, NSObject)
