// The share handler used by many threads at once, and the lock that every object has.
#include <atomic>
#include <latch>
#include <thread>

#include "objc/synchronized.h"
#include "support/follow.h"

namespace {

constexpr int kThreads = 16;

template <class F>
void onThreads(F function) {
  std::latch together(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      together.arrive_and_wait();
      const objc::AutoreleasePool pool;
      function(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

std::atomic<int> made;
constinit objc::Hook<NSObject::init> handlerInit;
NSObject* countInit(NSObject* self, SEL command) {
  ++made;
  // Long enough for other threads to get in, if they were let in.
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  return handlerInit.original(self, command);
}

class PanesupportShareThreads : public test::Follow {};

TEST_F(PanesupportShareThreads, MakeOneHandler) {
  settingsApplication();
  Class cls = objc_getClass("QKTwitterShareHandler");
  handlerInit.install<&countInit>(cls, NSObject::init);
  NSObject* handlers[kThreads] = {};
  onThreads([&](int i) { handlers[i] = send<NSObject*>(cls, "sharedInstance"_sel); });
  EXPECT_EQ(made, 1);
  ASSERT_NE(handlers[0], nullptr);
  for (NSObject* handler : handlers) EXPECT_EQ(handler, handlers[0]);
}

// A thread that holds the class's lock makes the others wait.
TEST_F(PanesupportShareThreads, WaitForTheLockOfTheClass) {
  settingsApplication();
  Class cls = objc_getClass("QKTwitterShareHandler");
  std::atomic<bool> answered = false;
  std::thread other;
  {
    const objc::Synchronized lock(cls);
    other = std::thread([&] {
      send<NSObject*>(cls, "sharedInstance"_sel);
      answered = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(answered);
    // The holder itself does not wait.
    EXPECT_NE(send<NSObject*>(cls, "sharedInstance"_sel), nullptr);
  }
  other.join();
  EXPECT_TRUE(answered);
}

TEST_F(PanesupportShareThreads, TakeTurns) {
  NSObject* object = test::make<NSObject>("NSObject");
  int count = 0;
  onThreads([&](int) {
    for (int i = 0; i < 200; ++i) {
      const objc::Synchronized lock(object);
      const objc::Synchronized again(object);
      ++count;
    }
  });
  EXPECT_EQ(count, kThreads * 200);
  EXPECT_EQ(objc_sync_enter(nullptr), 0);
  EXPECT_EQ(objc_sync_exit(nullptr), 0);
  EXPECT_NE(objc_sync_exit(object), 0);
}

// A thread that does not hold the lock cannot let others in.
TEST_F(PanesupportShareThreads, AreNotEndedByAThreadThatIsNotInside) {
  NSObject* object = test::make<NSObject>("NSObject");
  EXPECT_EQ(objc_sync_enter(object), 0);
  EXPECT_EQ(objc_sync_enter(object), 0);
  std::thread([&] { EXPECT_EQ(objc_sync_exit(object), -1); }).join();
  EXPECT_EQ(objc_sync_exit(object), 0);
  std::thread([&] { EXPECT_EQ(objc_sync_exit(object), -1); }).join();
  EXPECT_EQ(objc_sync_exit(object), 0);
  EXPECT_EQ(objc_sync_exit(object), -1);
  std::thread([&] {
    EXPECT_EQ(objc_sync_enter(object), 0);
    EXPECT_EQ(objc_sync_exit(object), 0);
  }).join();
}

// Completions run on the platform's threads.
TEST_F(PanesupportShareThreads, FollowFromManyCompletionsAtOnce) {
  settingsApplication();
  host::setAccounts("com.apple.twitter"_ns, test::strings({"only"}));
  onThreads([](int) {
    auto* handler = test::make<NSObject>("QKWelcomeTwitterHandler");
    send<void>(handler, "setUsername:"_sel, "maker"_ns);
    send<void>(handler, "dropMeAFollow"_sel);
  });
  ASSERT_TRUE(test::eventually([] { return alertCount() == kThreads; }));
  EXPECT_EQ(requests(), test::Lines(kThreads, follows("only")));
}

}  // namespace
