// Dispatch queues: order, exclusion, where blocks run, and what keeps what alive.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <latch>
#include <semaphore>
#include <string>
#include <thread>
#include <vector>

#include "Dispatch/queue.h"
#include "Foundation/log.h"
#include "Foundation/run_loop.h"
#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "platform/Foundation.h"
#include "runtime/send.h"

namespace {

using namespace std::chrono_literals;
using QueueRef = Strong<dispatch_queue_s>;

struct DispatchTracked : NSObject {
  static inline std::atomic<int> ended{0};
  void dealloc() {
    ++ended;
    sendSuper<void>(this, "dealloc"_sel);
  }
};

}  // namespace

OBJC_CLASS(DispatchTracked, NSObject, objc::Method<"dealloc", &DispatchTracked::dealloc>)

namespace {

QueueRef makeQueue(const char* label = "test") {
  return QueueRef::adopt(dispatch_queue_create(label, nullptr));
}

template <class F>
void async(dispatch_queue_t queue, F function) {
  auto block = objc::makeBlock<void()>(std::move(function));
  dispatch_async(queue, block);
}

/// Waits for the work that the queue has so far.
void finish(dispatch_queue_t queue) {
  std::binary_semaphore done(0);
  async(queue, [&] { done.release(); });
  done.acquire();
}

/// Runs the main loop meanwhile. Blocks on other threads do not wake the loop.
bool eventually(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + 20s;
  while (std::chrono::steady_clock::now() < end) {
    if (host::MainRunLoop::instance().runUntil(condition, 1ms)) return true;
  }
  return false;
}

bool onMainThread() { return NSThread::isMainThread(); }

/// Fails if two of its scopes are open at once.
class Alone {
 public:
  explicit Alone(std::atomic<int>& inside) : inside_(inside) { EXPECT_EQ(inside_++, 0); }
  Alone(const Alone&) = delete;
  Alone& operator=(const Alone&) = delete;
  ~Alone() { --inside_; }

 private:
  std::atomic<int>& inside_;
};

TEST(Dispatch, ASerialQueueKeepsTheOrderOfEachProducer) {
  constexpr int kThreads = 4;
  constexpr int kEach = 3000;
  const QueueRef queue = makeQueue();
  std::vector<std::vector<int>> seen(kThreads);  // written only by the queue
  std::atomic<int> inside = 0;
  {
    std::vector<std::jthread> producers;
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
      producers.emplace_back([&, thread] {
        for (int i = 0; i < kEach; ++i) {
          async(queue, [&, thread, i] {
            const Alone alone(inside);
            seen[thread].push_back(i);
          });
        }
      });
    }
  }
  finish(queue);
  for (const auto& numbers : seen) {
    EXPECT_EQ(numbers.size(), std::size_t{kEach});
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
  }
}

TEST(Dispatch, RunsOnOtherThreads) {
  const QueueRef queue = makeQueue();
  bool main = true;
  async(queue, [&] { main = onMainThread(); });
  finish(queue);
  EXPECT_FALSE(main);
}

TEST(Dispatch, CopiesLabels) {
  char name[] = "com.example.queue";
  const QueueRef queue = makeQueue(name);
  name[0] = 'X';
  EXPECT_STREQ(dispatch_queue_get_label(queue), "com.example.queue");
  EXPECT_STREQ(dispatch_queue_get_label(makeQueue(nullptr)), "");
  EXPECT_STREQ(dispatch_queue_get_label(dispatch_get_main_queue()), "com.apple.main-thread");
  EXPECT_STREQ(dispatch_queue_get_label(nullptr), "");
  std::string running;
  async(queue, [&] { running = dispatch_queue_get_label(nullptr); });
  finish(queue);
  EXPECT_EQ(running, "com.example.queue");
}

TEST(Dispatch, GlobalQueuesAreAlwaysTheSame) {
  std::vector<dispatch_queue_t> queues;
  for (long priority : {2L, 0L, -2L, -32768L}) {
    dispatch_queue_t queue = dispatch_get_global_queue(priority, 0);
    ASSERT_NE(queue, nullptr);
    EXPECT_EQ(queue, dispatch_get_global_queue(priority, 0));
    EXPECT_EQ(std::count(queues.begin(), queues.end(), queue), 0);
    queues.push_back(queue);
    dispatch_release(queue);
    dispatch_release(queue);
    dispatch_retain(queue);
    objc_release(objc_autorelease(queue));
    finish(queue);
  }
  EXPECT_EQ(dispatch_get_global_queue(1, 0), nullptr);
  EXPECT_EQ(dispatch_get_global_queue(-1, 0), nullptr);
  EXPECT_EQ(dispatch_get_global_queue(0, 1), nullptr);
  dispatch_release(dispatch_get_main_queue());
}

TEST(Dispatch, GlobalQueuesRunBlocksSideBySide) {
  std::latch both(2);
  std::latch done(2);
  for (int i = 0; i < 2; ++i) {
    async(dispatch_get_global_queue(0, 0), [&] {
      both.arrive_and_wait();
      done.count_down();
    });
  }
  done.wait();
}

/// Keeps all threads of the pool busy until it is told to stop.
class BusyPool {
 public:
  BusyPool() {
    for (int i = 0; i < count_; ++i) {
      async(dispatch_get_global_queue(2, 0), [this] {
        begun_.release();
        letGo_.acquire();
        ended_.release();
      });
    }
    for (int i = 0; i < count_; ++i) begun_.acquire();
  }
  ~BusyPool() {
    if (!released_) release();
    for (int i = 0; i < count_; ++i) ended_.acquire();
  }
  BusyPool(const BusyPool&) = delete;
  BusyPool& operator=(const BusyPool&) = delete;

  void releaseOne() { letGo_.release(); }
  void release() {
    released_ = true;
    letGo_.release(count_);
  }

 private:
  const int count_ = static_cast<int>(std::max(2U, std::thread::hardware_concurrency()));
  bool released_ = false;
  std::counting_semaphore<> begun_{0}, letGo_{0}, ended_{0};
};

TEST(Dispatch, HigherPrioritiesBeginFirst) {
  constexpr int kEach = 5;
  std::vector<long> order;
  std::latch done(4 * kEach);
  {
    BusyPool busy;
    for (int i = 0; i < kEach; ++i) {
      for (long priority : {-32768L, -2L, 0L, 2L}) {
        async(dispatch_get_global_queue(priority, 0), [&, priority] {
          order.push_back(priority);  // only one thread is free, so nobody else writes
          done.count_down();
        });
      }
    }
    busy.releaseOne();
    done.wait();
    busy.release();
  }
  std::vector<long> expected = order;
  std::sort(expected.rbegin(), expected.rend());
  EXPECT_EQ(order.size(), std::size_t{4 * kEach});
  EXPECT_EQ(order, expected);
}

TEST(Dispatch, TheMainQueueRunsInOrderOnTheMainThread) {
  constexpr int kBlocks = 1000;
  std::vector<int> seen;
  bool main = true;
  const QueueRef producer = makeQueue();
  async(producer, [&] {
    for (int i = 0; i < kBlocks; ++i) {
      async(dispatch_get_main_queue(), [&, i] {
        main = main && onMainThread();
        seen.push_back(i);
      });
    }
  });
  finish(producer);
  EXPECT_TRUE(seen.empty());  // the loop has not run yet
  EXPECT_TRUE(eventually([&] { return seen.size() == kBlocks; }));
  EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
  EXPECT_TRUE(main);
}

TEST(Dispatch, ABlockOnTheMainQueueMayTurnTheLoop) {
  std::vector<std::string> order;
  const QueueRef queue = makeQueue("aimed");
  dispatch_set_target_queue(queue, dispatch_get_main_queue());
  async(dispatch_get_main_queue(), [&] {
    order.push_back(dispatch_queue_get_label(nullptr));
    host::MainRunLoop::instance().drain();
    order.push_back(dispatch_queue_get_label(nullptr));
  });
  async(queue, [&] { order.push_back(dispatch_queue_get_label(nullptr)); });
  EXPECT_TRUE(eventually([&] { return order.size() == 3; }));
  EXPECT_EQ(order,
            (std::vector<std::string>{"com.apple.main-thread", "aimed", "com.apple.main-thread"}));
}

TEST(Dispatch, AQueueAimedAtTheMainQueueRunsOnTheMainThread) {
  const QueueRef queue = makeQueue();
  dispatch_set_target_queue(queue, dispatch_get_main_queue());
  int count = 0;
  bool main = true;
  for (int i = 0; i < 100; ++i) {
    async(queue, [&, i] {
      main = main && onMainThread() && count == i;
      ++count;
    });
  }
  EXPECT_TRUE(eventually([&] { return count == 100; }));
  EXPECT_TRUE(main);
}

TEST(Dispatch, QueuesAimedAtOneSerialQueueExcludeEachOther) {
  const QueueRef common = makeQueue("common");
  const QueueRef first = makeQueue("first");
  const QueueRef second = makeQueue("second");
  dispatch_set_target_queue(first, common);
  dispatch_set_target_queue(second, first);
  std::atomic<int> inside = 0;
  std::atomic<int> count = 0;
  for (int i = 0; i < 1000; ++i) {
    for (const QueueRef& queue : {common, first, second}) {
      async(queue, [&] {
        const Alone alone(inside);
        ++count;
      });
    }
  }
  EXPECT_TRUE(eventually([&] { return count == 3000; }));
}

TEST(Dispatch, ARetargetedQueueKeepsItsOrder) {
  const QueueRef common = makeQueue("common");
  const QueueRef queue = makeQueue();
  std::atomic<int> inside = 0;
  std::vector<int> seen;
  std::atomic<int> count = 0;
  constexpr int kBlocks = 2000;
  for (int i = 0; i < kBlocks; ++i) {
    async(queue, [&, i] {
      const Alone alone(inside);
      seen.push_back(i);
      ++count;
    });
    dispatch_queue_t targets[] = {common, dispatch_get_main_queue(), nullptr,
                                  dispatch_get_global_queue(-2, 0)};
    dispatch_set_target_queue(queue, targets[i % 4]);
  }
  EXPECT_TRUE(eventually([&] { return count == kBlocks; }));
  EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
}

TEST(Dispatch, WorkThatHasNotBegunFollowsTheQueue) {
  const QueueRef queue = makeQueue();
  bool main = false;
  bool ran = false;
  {
    BusyPool busy;
    async(queue, [&] {
      main = onMainThread();
      ran = true;
    });
    dispatch_set_target_queue(queue, dispatch_get_main_queue());
  }
  EXPECT_TRUE(eventually([&] { return ran; }));
  EXPECT_TRUE(main);
}

TEST(Dispatch, RefusesCyclesAndStrangeArguments) {
  const QueueRef first = makeQueue();
  const QueueRef second = makeQueue();
  dispatch_set_target_queue(first, second);
  const std::size_t lines = host::logLines().size();
  dispatch_set_target_queue(second, first);
  dispatch_set_target_queue(second, second);
  dispatch_set_target_queue(nullptr, second);
  dispatch_set_target_queue(dispatch_get_main_queue(), second);
  dispatch_set_target_queue("text"_ns, second);
  async(nullptr, [] { ADD_FAILURE(); });
  dispatch_async(first, nullptr);
  dispatch_async(nullptr, nullptr);
  EXPECT_EQ(host::logLines().size(), lines + 8);
  finish(first);
  finish(second);
}

TEST(Dispatch, APendingBlockKeepsItsQueue) {
  std::atomic<int> count = 0;
  std::string label;
  {
    BusyPool busy;
    dispatch_queue_t queue = dispatch_queue_create("left", nullptr);
    dispatch_queue_t target = dispatch_queue_create("target", nullptr);
    dispatch_set_target_queue(queue, target);
    dispatch_release(target);
    for (int i = 0; i < 100; ++i) {
      async(queue, [&] {
        label = dispatch_queue_get_label(nullptr);
        ++count;
      });
    }
    dispatch_release(queue);
  }
  EXPECT_TRUE(eventually([&] { return count == 100; }));
  EXPECT_EQ(label, "left");
}

TEST(Dispatch, LetsGoOfWhatABlockHeldBeforeTheNextOne) {
  for (dispatch_queue_t queue :
       {makeQueue().autorelease(), dispatch_get_main_queue(), dispatch_get_global_queue(0, 0)}) {
    DispatchTracked::ended = 0;
    {
      auto held = Strong<DispatchTracked>::adopt(objc::alloc<DispatchTracked>());
      async(queue, [held] { objc_autorelease(objc::alloc<DispatchTracked>()); });
    }
    EXPECT_TRUE(eventually([] { return DispatchTracked::ended == 2; }));
  }
}

TEST(Dispatch, DrainsAPoolAfterEachBlock) {
  const QueueRef queue = makeQueue();
  DispatchTracked::ended = 0;
  for (int i = 0; i < 10; ++i) {
    async(queue, [i] {
      EXPECT_EQ(DispatchTracked::ended, i);
      objc_autorelease(objc::alloc<DispatchTracked>());
    });
  }
  finish(queue);
  EXPECT_EQ(DispatchTracked::ended, 10);
}

TEST(Dispatch, ABlockMayAddBlocks) {
  const QueueRef queue = makeQueue();
  std::vector<int> order;
  std::binary_semaphore done(0);
  async(queue, [&] {
    async(queue, [&] {
      order.push_back(2);
      async(queue, [&] {
        order.push_back(3);
        done.release();
      });
    });
    order.push_back(1);
  });
  done.acquire();
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST(Dispatch, OnceRunsOnceAndOthersWaitForItsEnd) {
  for (int round = 0; round < 200; ++round) {
    dispatch_once_t predicate = 0;
    dispatch_once_t inner = 0;
    int value = 0;  // written by one thread, and read by all after the predicate
    std::atomic<int> calls = 0;
    std::latch start(4);
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        start.arrive_and_wait();
        auto block = objc::makeBlock<void()>([&] {
          auto other = objc::makeBlock<void()>([&] { ++calls; });
          dispatch_once(&inner, other);
          ++calls;
          std::this_thread::yield();
          value = 42;
        });
        dispatch_once(&predicate, block);
        EXPECT_EQ(value, 42);
      });
    }
    threads.clear();
    EXPECT_EQ(calls, 2);
  }
}

TEST(Dispatch, ManyQueuesShareFewThreads) {
  constexpr int kQueues = 200;
  std::atomic<int> count = 0;
  for (int i = 0; i < kQueues; ++i) {
    const QueueRef queue = makeQueue();
    for (int k = 0; k < 20; ++k) async(queue, [&] { ++count; });
  }
  EXPECT_TRUE(eventually([&] { return count == kQueues * 20; }));
}

TEST(DispatchDeathTest, TheProcessEndsWhileBlocksRunAndWait) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        static const QueueRef queue = makeQueue();
        for (int i = 0; i < 100; ++i) async(queue, [] { std::this_thread::sleep_for(10ms); });
        async(dispatch_get_main_queue(), [] {});
        finish(dispatch_get_global_queue(0, 0));
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
}

TEST(DispatchDeathTest, AnExceptionOutOfABlockEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        async(dispatch_get_main_queue(), [] { throw 1; });
        try {
          host::MainRunLoop::instance().drain();
        } catch (int) {
        }
      },
      "");
}

}  // namespace
