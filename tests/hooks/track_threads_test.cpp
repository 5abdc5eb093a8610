// A surface that is released while another thread's change of track is on its way: it is freed on
// the main thread, as views must be.
#include <atomic>
#include <thread>

#include "platform/Dispatch.h"
#include "support/centers.h"

namespace {

/// While this is set, queueing a block waits until the block has run.
std::atomic<bool> isHeld = false;
std::atomic<bool> hasRun = false;

}  // namespace

/// The system's own header uses other names for what platform/dlfcn.h declares.
extern "C" void* dlsym(void* handle, const char* name);

/// Everything in this process finds this one before the platform's.
extern "C" void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
  constexpr std::intptr_t kNext = -1;
  static auto* next = reinterpret_cast<decltype(&dispatch_async)>(
      dlsym(reinterpret_cast<void*>(kNext), "dispatch_async"));
  next(queue, block);
  while (isHeld && !hasRun) std::this_thread::yield();
}

namespace {

using namespace test;

class TrackThreads : public Centers {};

std::thread::id endedOn;

void noteEnd(NSObject* self, SEL command);
constinit objc::Hook<NSObject::dealloc> endHook;
void noteEnd(NSObject* self, SEL command) {
  endedOn = std::this_thread::get_id();
  endHook.original(self, command);
}

TEST_F(TrackThreads, ASurfaceEndsOnTheMainThread) {
  centers("");
  Strong<NSObject> surface = makeControlCenter();
  endHook.install<&noteEnd>(objc_getClass(kControlCenter), NSObject::dealloc);
  isHeld = true;
  std::thread poster([] {
    objc::AutoreleasePool pool;
    post();
  });
  ASSERT_TRUE(eventually([] { return !calls().empty(); }));
  // The poster has not returned from queueing the block. The block was the last but one to hold the
  // surface.
  surface = nullptr;
  hasRun = true;
  poster.join();
  EXPECT_EQ(calls(), std::vector<std::string>{"colorBackdrop"});
  EXPECT_EQ(endedOn, std::this_thread::get_id());
}

}  // namespace
