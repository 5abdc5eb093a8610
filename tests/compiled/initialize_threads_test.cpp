// +initialize and weak references when several threads meet them at once.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "objc/autorelease_pool.h"
#include "support/compiled_library.h"
#include "support/hosted.h"

namespace {

class CompiledThreads : public test::Hosted {
 protected:
  void SetUp() override {
    start("com.example.compiled", host::ProcessKind::daemon);
    host::loadLibrary(path());
  }
  static std::string path() { return test::compiledLibrary("compiled/compiled_arc_slow_start"); }
  template <class F>
  static F* function(const char* name) {
    return reinterpret_cast<F*>(host::librarySymbol(path(), name));
  }
  /// Runs the function on so many threads at once.
  template <class F>
  static void onThreads(int count, F each) {
    std::atomic<bool> go = false;
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
      threads.emplace_back([&, i] {
        while (!go) std::this_thread::yield();
        const objc::AutoreleasePool pool;
        each(i);
      });
    go = true;
    for (std::thread& thread : threads) thread.join();
  }
};

TEST_F(CompiledThreads, EveryThreadWaitsForInitialize) {
  auto* ready = function<int()>("slowStartReady");
  auto* setSleep = function<void(void (*)())>("slowStartSleep");
  setSleep([] { std::this_thread::sleep_for(std::chrono::milliseconds(50)); });
  std::atomic<int> sum = 0;
  onThreads(8, [&](int) { sum += ready(); });
  // Each saw what +initialize had set.
  EXPECT_EQ(sum, 8 * 42);
  EXPECT_EQ(*function<int>("slowStartRuns"), 1);
}

TEST_F(CompiledThreads, AWeakReferenceIsNilOrAlive) {
  auto* make = function<void()>("slowStartMakeShared");
  auto* drop = function<void()>("slowStartDropShared");
  auto* read = function<int()>("slowStartReadShared");
  for (int round = 0; round < 200; ++round) {
    make();
    std::atomic<int> wrong = 0;
    onThreads(3, [&](int i) {
      if (i == 0) {
        drop();
        return;
      }
      // 7 while it is there, 0 when it is gone.
      for (int n = 0; n < 20; ++n)
        if (const int value = read(); value != 7 && value != 0) ++wrong;
    });
    ASSERT_EQ(wrong, 0);
    ASSERT_EQ(read(), 0);
  }
}

}  // namespace
