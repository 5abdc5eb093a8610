// Threads, as far as anybody asks which one is the main one.
#include <sys/syscall.h>
#include <unistd.h>

#include "objc/define.h"

namespace {

struct Thread : NSObject {
  static bool isMain() { return syscall(SYS_gettid) == getpid(); }
};

}  // namespace

OBJC_CLASS_NAMED(NSThread, NSObject, Thread, NSObject,
                 objc::ClassMethod<"isMainThread", &Thread::isMain>)
