// The main run loop.
#include "Foundation/run_loop.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include "objc/object.h"

namespace {

using namespace std::chrono_literals;
using host::MainRunLoop;

class RunLoop : public testing::Test {
 protected:
  RunLoop() {
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  }
  ~RunLoop() override {
    for (int end : ends) {
      loop.unwatch(end);
      close(end);
    }
  }
  void writeByte() const { ASSERT_EQ(write(ends[1], "x", 1), 1); }
  void readByte() const {
    char byte = 0;
    ASSERT_EQ(read(ends[0], &byte, 1), 1);
  }
  static auto now() { return std::chrono::steady_clock::now(); }

  MainRunLoop& loop = MainRunLoop::instance();
  int ends[2] = {-1, -1};
};

TEST_F(RunLoop, PerformsInOrder) {
  std::vector<int> order;
  for (int i = 0; i < 5; ++i) loop.perform([&, i] { order.push_back(i); });
  EXPECT_TRUE(order.empty());
  loop.drain();
  EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
  loop.drain();
  EXPECT_EQ(order.size(), 5u);
}

TEST_F(RunLoop, PerformsForOtherThreadsOnItsOwn) {
  constexpr int kThreads = 4;
  constexpr int kEach = 1000;
  std::vector<std::vector<int>> seen(kThreads);  // written only by this thread
  bool foreign = false;
  int count = 0;
  const auto mine = std::this_thread::get_id();
  std::vector<std::jthread> threads;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (int i = 0; i < kEach; ++i) {
        loop.perform([&, thread, i] {
          foreign = foreign || std::this_thread::get_id() != mine;
          seen[thread].push_back(i);
          ++count;
        });
      }
    });
  }
  EXPECT_TRUE(loop.runUntil([&] { return count == kThreads * kEach; }, 20s));
  EXPECT_FALSE(foreign);
  for (const auto& numbers : seen) EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

TEST_F(RunLoop, LeavesWhatAFunctionAddsToTheNextTurn) {
  int calls = 0;
  std::function<void()> again = [&] {
    ++calls;
    loop.perform(again);
  };
  loop.perform(again);
  loop.drain();
  EXPECT_EQ(calls, 1);
  loop.drain();
  EXPECT_EQ(calls, 2);
  again = [] {};
  loop.drain();
}

TEST_F(RunLoop, StopsFromAnotherThread) {
  for (int i = 0; i < 50; ++i) {
    std::jthread stopper([&] { loop.stop(); });
    loop.run();  // whichever comes first
  }
}

TEST_F(RunLoop, StopsFromAFunction) {
  loop.perform([&] { loop.stop(); });
  const auto start = now();
  loop.runFor(20s);
  EXPECT_LT(now() - start, 10s);
  EXPECT_FALSE(loop.runUntil([] { return false; }, 10ms));  // the stop has been used up
}

TEST_F(RunLoop, RunsForATime) {
  const auto start = now();
  const std::clock_t used = std::clock();
  loop.runFor(200ms);
  EXPECT_GE(now() - start, 200ms);
  EXPECT_LT(now() - start, 10s);
  EXPECT_LT(std::clock() - used, CLOCKS_PER_SEC / 10);  // it waits and does not spin
}

TEST_F(RunLoop, RunsUntilAConditionHolds) {
  bool done = false;
  std::jthread other([&] { loop.perform([&] { done = true; }); });
  EXPECT_TRUE(loop.runUntil([&] { return done; }, 20s));
  EXPECT_TRUE(loop.runUntil([] { return true; }, 0ms));
  EXPECT_FALSE(loop.runUntil([] { return false; }, 20ms));
}

TEST_F(RunLoop, DrainDoesNotWait) {
  loop.watch(ends[0], [] {});
  const auto start = now();
  loop.drain();
  EXPECT_LT(now() - start, 5s);
}

TEST_F(RunLoop, WatchesDescriptors) {
  int calls = 0;
  loop.watch(ends[0], [&] {
    ++calls;
    readByte();
  });
  loop.drain();
  EXPECT_EQ(calls, 0);
  writeByte();
  writeByte();
  EXPECT_TRUE(loop.runUntil([&] { return calls == 2; }, 20s));
  loop.drain();
  EXPECT_EQ(calls, 2);
  std::jthread writer([&] { writeByte(); });
  EXPECT_TRUE(loop.runUntil([&] { return calls == 3; }, 20s));
}

TEST_F(RunLoop, WatchingFromAnotherThreadCounts) {
  writeByte();
  bool called = false;
  std::jthread other([&] {
    std::this_thread::sleep_for(20ms);
    loop.watch(ends[0], [&] {
      readByte();
      called = true;
    });
  });
  EXPECT_TRUE(loop.runUntil([&] { return called; }, 20s));
}

TEST_F(RunLoop, AFunctionMayUnwatchItself) {
  int calls = 0;
  auto token = std::make_shared<int>(1);
  loop.watch(ends[0], [&, token] {
    loop.unwatch(ends[0]);
    calls += *token;  // still there
  });
  writeByte();
  loop.drain();
  loop.drain();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(token.use_count(), 1);
}

TEST_F(RunLoop, AnUnwatchedDescriptorIsNotReportedAnyMore) {
  int other[2];
  ASSERT_EQ(pipe(other), 0);
  int calls = 0;
  // Whichever is called first removes the other in the same turn.
  loop.watch(ends[0], [&] {
    ++calls;
    loop.unwatch(other[0]);
    loop.unwatch(ends[0]);
  });
  loop.watch(other[0], [&] {
    ++calls;
    loop.unwatch(other[0]);
    loop.unwatch(ends[0]);
  });
  writeByte();
  ASSERT_EQ(write(other[1], "x", 1), 1);
  loop.drain();
  EXPECT_EQ(calls, 1);
  close(other[0]);
  close(other[1]);
}

TEST_F(RunLoop, ReportsTheEndOfAPipe) {
  int calls = 0;
  loop.watch(ends[0], [&] {
    ++calls;
    loop.unwatch(ends[0]);
  });
  close(ends[1]);
  ends[1] = -1;
  EXPECT_TRUE(loop.runUntil([&] { return calls == 1; }, 20s));
}

TEST_F(RunLoop, ForgetsADescriptorThatWasClosed) {
  int calls = 0;
  loop.watch(ends[0], [&] { ++calls; });
  close(ends[0]);
  ends[0] = -1;
  const std::clock_t used = std::clock();
  loop.runFor(100ms);
  EXPECT_EQ(calls, 0);
  EXPECT_LT(std::clock() - used, CLOCKS_PER_SEC / 20);
}

TEST_F(RunLoop, AnExceptionLeavesTheOthersInPlace) {
  int calls = 0;
  loop.perform([] { throw std::runtime_error("thrown"); });
  loop.perform([&] { ++calls; });
  EXPECT_THROW(loop.drain(), std::runtime_error);
  EXPECT_TRUE(loop.runUntil([&] { return calls == 1; }, 20s));
}

TEST_F(RunLoop, NestsInAFunction) {
  std::vector<int> order;
  loop.perform([&] {
    order.push_back(1);
    loop.drain();
    order.push_back(3);
  });
  loop.perform([&] { order.push_back(2); });
  loop.drain();
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

int deallocated = 0;

void countDealloc(NSObject* self, SEL) {
  ++deallocated;
  object_dispose(self);
}

TEST_F(RunLoop, DrainsAPoolAfterEachFunction) {
  Class tracked = objc_allocateClassPair(objc_getClass("NSObject"), "Tracked", 0);
  ASSERT_TRUE(class_addMethod(tracked, sel_registerName("dealloc"),
                              reinterpret_cast<IMP>(&countDealloc), "v@:"));
  objc_registerClassPair(tracked);
  const auto leave = [&] { objc_autorelease(class_createInstance(tracked, 0)); };
  int atSecond = -1;
  loop.perform(leave);
  loop.perform([&] { atSecond = deallocated; });
  loop.drain();
  EXPECT_EQ(atSecond, 1);
  loop.watch(ends[0], [&] {
    readByte();
    leave();
  });
  writeByte();
  loop.drain();
  EXPECT_EQ(deallocated, 2);
}

}  // namespace
