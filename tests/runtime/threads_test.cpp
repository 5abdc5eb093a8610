// The run-time used by several threads at once. Each case is limited to a fraction of a second.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <latch>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "objc/hook.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"
#include "runtime/send.h"

namespace {

using namespace std::chrono_literals;
constexpr int kThreads = 4;
constexpr auto kLong = 250ms;

struct ThreadParent : NSObject {
  CGRect frame(double by) { return {{by, by}, {by, by}}; }
  int number() { return 1; }
  int hooked() { return 1; }
};
struct ThreadChild : ThreadParent {
  int many() { return 0; }
};
struct ThreadEnding : NSObject {
  static inline std::atomic<int> ended{0};
  void dealloc() {
    ++ended;
    sendSuper<void>(this, "dealloc"_sel);
  }
};

}  // namespace

OBJC_CLASS(ThreadParent, NSObject, objc::Method<"frame:", &ThreadParent::frame>,
           objc::Method<"number", &ThreadParent::number>,
           objc::Method<"hooked", &ThreadParent::hooked>)
OBJC_CLASS(ThreadChild, ThreadParent, objc::Method<"many", &ThreadChild::many>)
OBJC_CLASS(ThreadEnding, NSObject, objc::Method<"dealloc", &ThreadEnding::dealloc>)

namespace {

/// Runs the function on all threads, started together.
void onAllThreads(const std::function<void(int)>& function) {
  std::latch start(kThreads);
  std::vector<std::jthread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      function(i);
    });
  }
}

template <class F>
IMP imp(F* function) {
  return reinterpret_cast<IMP>(function);
}

int two(id, SEL) { return 2; }
int three(id, SEL) { return 3; }
CGRect negated(id, SEL, double by) { return {{-by, -by}, {-by, -by}}; }
CGRect plain(id, SEL, double by) { return {{by, by}, {by, by}}; }

TEST(Threads, SendWhileMethodsAreReplaced) {
  auto parent = Strong<ThreadParent>::adopt(objc::alloc<ThreadParent>());
  auto child = Strong<ThreadChild>::adopt(objc::alloc<ThreadChild>());
  std::atomic<bool> done{false};
  std::atomic<int> wrong{0};
  std::atomic<long> sends{0};
  std::jthread replacing([&] {
    objc_method* number = class_getInstanceMethod(parent->isa, "number"_sel);
    objc_method* frame = class_getInstanceMethod(parent->isa, "frame:"_sel);
    for (int i = 0; !done; ++i) {
      method_setImplementation(number, i % 2 == 0 ? imp(&two) : imp(&three));
      method_setImplementation(frame, i % 2 == 0 ? imp(&negated) : imp(&plain));
      class_replaceMethod(child->isa, "number"_sel, i % 2 == 0 ? imp(&three) : imp(&two), "i@:");
      std::this_thread::sleep_for(20us);
    }
  });
  const auto end = std::chrono::steady_clock::now() + kLong;
  onAllThreads([&](int) {
    while (std::chrono::steady_clock::now() < end) {
      for (int i = 0; i < 100; ++i) {
        const int ofParent = send<int>(parent, "number"_sel);
        const int ofChild = send<int>(child, "number"_sel);
        const CGRect rect = send<CGRect>(child, "frame:"_sel, 5.0);
        const double each = rect.origin.x;
        if (ofParent < 1 || ofParent > 3 || ofChild < 1 || ofChild > 3 ||
            (each != 5 && each != -5) || rect.origin.y != each || rect.size.width != each ||
            rect.size.height != each) {
          ++wrong;
        }
      }
      sends += 300;
    }
  });
  done = true;
  EXPECT_EQ(wrong, 0);
  EXPECT_GT(sends, 1000);
}

// Once the replacement has returned on this thread, the method never answers as before.
TEST(Threads, AReplacementIsSeenByTheThreadThatMadeIt) {
  auto child = Strong<ThreadChild>::adopt(objc::alloc<ThreadChild>());
  std::atomic<bool> done{false};
  std::atomic<int> stale{0};
  std::vector<std::jthread> sending;
  for (int i = 0; i < kThreads; ++i) {
    sending.emplace_back([&] {
      while (!done) send<int>(child, "number"_sel);
    });
  }
  const auto end = std::chrono::steady_clock::now() + kLong;
  for (int i = 0; std::chrono::steady_clock::now() < end; ++i) {
    class_replaceMethod(child->isa, "number"_sel, i % 2 == 0 ? imp(&two) : imp(&three), "i@:");
    if (send<int>(child, "number"_sel) != (i % 2 == 0 ? 2 : 3)) ++stale;
  }
  done = true;
  EXPECT_EQ(stale, 0);
}

TEST(Threads, SendForTheFirstTimeTogether) {
  constexpr int kMethods = 400;
  Class cls = objc::classOf<ThreadChild>();
  for (int i = 0; i < kMethods; ++i) {
    class_addMethod(cls, sel_registerName(("first" + std::to_string(i)).c_str()),
                    i % 2 == 0 ? imp(&two) : imp(&three), "i@:");
  }
  auto child = Strong<ThreadChild>::adopt(objc::alloc<ThreadChild>());
  std::atomic<int> wrong{0};
  onAllThreads([&](int thread) {
    for (int n = 0; n < kMethods; ++n) {
      const int i = (n + thread * kMethods / 8) % kMethods;
      SEL selector = sel_registerName(("first" + std::to_string(i)).c_str());
      if (objc::sendDynamic<int>(child.get(), selector) != (i % 2 == 0 ? 2 : 3)) ++wrong;
    }
  });
  EXPECT_EQ(wrong, 0);
}

TEST(Threads, RegisterTheSameSelectors) {
  constexpr int kNames = 500;
  std::vector<std::vector<SEL>> found(kThreads);
  onAllThreads([&](int thread) {
    for (int i = 0; i < kNames; ++i) {
      found[static_cast<std::size_t>(thread)].push_back(
          sel_registerName(("raced" + std::to_string(i)).c_str()));
    }
  });
  for (const auto& other : found) EXPECT_EQ(other, found[0]);
  EXPECT_EQ(std::set<SEL>(found[0].begin(), found[0].end()).size(), std::size_t{kNames});
  EXPECT_STREQ(sel_getName(found[0][7]), "raced7");
}

TEST(Threads, RetainAndReleaseOneObject) {
  auto* object = objc::alloc<ThreadEnding>();
  for (int i = 0; i < kThreads; ++i) objc_retain(object);
  onAllThreads([&](int) {
    for (int i = 0; i < 20000; ++i) {
      objc::AutoreleasePool pool;
      objc_retain(object);
      send<void>(objc_retain(object), "release"_sel);
      objc_autorelease(object);
    }
    objc_release(object);
  });
  EXPECT_EQ(ThreadEnding::ended, 0);
  EXPECT_EQ(send<NSUInteger>(object, "retainCount"_sel), 1U);
  objc_release(object);
  EXPECT_EQ(ThreadEnding::ended, 1);
}

TEST(Threads, DrainPoolsOfTheirOwn) {
  ThreadEnding::ended = 0;
  onAllThreads([](int) {
    for (int i = 0; i < 500; ++i) {
      objc::AutoreleasePool pool;
      objc_autorelease(objc::alloc<ThreadEnding>());
    }
  });
  EXPECT_EQ(ThreadEnding::ended, 500 * kThreads);
}

TEST(Threads, AssociateObjects) {
  ThreadEnding::ended = 0;
  auto shared = Strong<NSObject>::adopt(objc::alloc<NSObject>());
  std::atomic<int> wrong{0};
  onAllThreads([&](int thread) {
    const std::string name = "key" + std::to_string(thread);
    for (int i = 0; i < 500; ++i) {
      auto value = Strong<ThreadEnding>::adopt(objc::alloc<ThreadEnding>());
      objc_setAssociatedObject(shared, sel_registerName(name.c_str()), value,
                               AssociationPolicy::retain);
      if (objc_getAssociatedObject(shared, sel_registerName(name.c_str())) != value.get()) ++wrong;
      auto owner = Strong<NSObject>::adopt(objc::alloc<NSObject>());
      objc_setAssociatedObject(owner, "mine"_sel.get(), value, AssociationPolicy::retain);
    }
  });
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(ThreadEnding::ended, 499 * kThreads);
  shared = nullptr;
  EXPECT_EQ(ThreadEnding::ended, 500 * kThreads);
}

/// Slots of hooks that are installed while other threads send: none may be found empty.
constexpr int kRounds = 200;
IMP slots[kRounds];
std::atomic<int> emptySlots{0};

template <int N>
int replacement(id self, SEL command) {
  IMP saved = __atomic_load_n(&slots[N], __ATOMIC_RELAXED);
  if (saved == nullptr) {
    ++emptySlots;
    return 0;
  }
  return 1 + reinterpret_cast<int (*)(id, SEL)>(saved)(self, command);
}

template <int... N>
void installAll(Class cls, std::integer_sequence<int, N...>) {
  (MSHookMessageEx(cls, "hooked"_sel, imp(&replacement<N>), &slots[N]), ...);
}

TEST(Threads, SendWhileHooksGoIn) {
  auto child = Strong<ThreadChild>::adopt(objc::alloc<ThreadChild>());
  std::atomic<bool> done{false};
  std::atomic<int> backwards{0};
  std::latch running(kThreads + 1);
  std::vector<std::jthread> sending;
  for (int i = 0; i < kThreads; ++i) {
    sending.emplace_back([&] {
      running.arrive_and_wait();
      for (int last = 0; !done;) {
        const int answer = send<int>(child, "hooked"_sel);
        if (answer < last) ++backwards;
        last = answer;
      }
    });
  }
  running.arrive_and_wait();
  installAll(child->isa, std::make_integer_sequence<int, kRounds>{});
  EXPECT_EQ(send<int>(child, "hooked"_sel), kRounds + 1);
  done = true;
  sending.clear();
  EXPECT_EQ(emptySlots, 0);
  EXPECT_EQ(backwards, 0);
}

}  // namespace
