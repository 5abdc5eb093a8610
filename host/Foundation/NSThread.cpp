// Threads: only which one is the main one, and sleeping.
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "objc/define.h"

namespace {

struct Thread : NSObject {
  static bool isMain() { return syscall(SYS_gettid) == getpid(); }
  static void sleep(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  }
};

}  // namespace

OBJC_CLASS_NAMED(NSThread, NSObject, Thread, NSObject,
                 objc::ClassMethod<"isMainThread", &Thread::isMain>,
                 objc::ClassMethod<"sleepForTimeInterval:", &Thread::sleep>)
