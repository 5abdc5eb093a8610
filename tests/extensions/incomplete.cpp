// A framework that calls a function which does not exist.
#include "objc/define.h"
#include "platform/Foundation.h"

extern "C" int nobody_has_this();

namespace {

struct Incomplete : NSObject {
  int number() { return nobody_has_this(); }
};

}  // namespace

OBJC_CLASS_NAMED(MPUNowPlayingController, NSObject, Incomplete, NSObject,
                 objc::Method<"number", &Incomplete::number>)
