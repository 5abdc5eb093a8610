// The Darwin notify centre, between real processes.
#include "Foundation/darwin_notify.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <thread>

#include "Foundation/log.h"
#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "objc/autorelease_pool.h"
#include "platform/CoreFoundation.h"
#include "process/container.h"
#include "support/hosted.h"

namespace {

using namespace std::chrono_literals;
using test::string;

constexpr const char* kName = "com.example.changed";

/// Counts its notifications.
struct Observer {
  int calls = 0;
  std::string name;
  std::thread::id thread;
  bool plain = true;  ///< each came with the usual arguments of a Darwin notification
  std::function<void()> then;

  static void notified(CFNotificationCenterRef centre, void* observer, CFStringRef name,
                       const void* object, CFDictionaryRef userInfo) {
    auto* self = static_cast<Observer*>(observer);
    ++self->calls;
    self->name = host::text(name);
    self->thread = std::this_thread::get_id();
    self->plain = self->plain && centre == CFNotificationCenterGetDarwinNotifyCenter() &&
                  object == nullptr && userInfo == nullptr;
    if (self->then) self->then();
  }
};

void observe(Observer& observer, NSString* name) {
  CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), &observer,
                                  &Observer::notified, name, nullptr,
                                  CFNotificationSuspensionBehavior::deliverImmediately);
}

void post(NSString* name) {
  CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), name, nullptr,
                                       nullptr, true);
}

/// Long enough to notice a second callback if only one was expected.
void settle() { host::MainRunLoop::instance().runFor(100ms); }

/// A separate process, made before this one observes anything.
class Child {
 public:
  /// The body is given a function that sends a number to the parent.
  explicit Child(const std::function<void(const std::function<void(int)>& tell)>& body) {
    int ends[2];
    if (pipe(ends) != 0) std::abort();
    process_ = fork();
    if (process_ == 0) {
      close(ends[0]);
      body([&](int number) {
        if (write(ends[1], &number, sizeof number) != sizeof number) _exit(1);
      });
      _exit(0);
    }
    close(ends[1]);
    told_ = ends[0];
  }
  ~Child() {
    if (process_ > 0) kill();
    close(told_);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// The next number; -1 if none comes within ten seconds.
  int hear() const {
    pollfd descriptor{told_, POLLIN, 0};
    int number = -1;
    if (poll(&descriptor, 1, 10000) == 1 && read(told_, &number, sizeof number) == sizeof number)
      return number;
    return -1;
  }
  void kill() {
    ::kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = -1;
  }

 private:
  pid_t process_ = -1;
  int told_ = -1;
};

/// Sends 0 once it observes, then after each notification how often it was called.
void observeAndTell(const std::function<void(int)>& tell) {
  Observer observer;
  observe(observer, string(kName));
  tell(0);
  for (int told = 0;;) {
    if (!test::eventually([&] { return observer.calls > told; })) continue;
    settle();
    told = observer.calls;
    tell(told);
  }
}

class DarwinNotify : public testing::Test {
 protected:
  DarwinNotify() { host::setContainerRoot(folder.path()); }

  test::Folder folder;
  objc::AutoreleasePool pool;
};

TEST_F(DarwinNotify, ReachesThePoster) {
  Observer observer;
  observe(observer, string(kName));
  post(string(kName));
  EXPECT_EQ(observer.calls, 0);  // not before the loop runs
  EXPECT_TRUE(test::eventually([&] { return observer.calls == 1; }));
  EXPECT_EQ(observer.name, kName);
  EXPECT_EQ(observer.thread, std::this_thread::get_id());
  EXPECT_TRUE(observer.plain);
  settle();
  EXPECT_EQ(observer.calls, 1);  // also for the first post, which creates the file
  host::postDarwinNotification(kName);
  settle();
  EXPECT_EQ(observer.calls, 2);
}

TEST_F(DarwinNotify, Coalesces) {
  Observer one;
  Observer two;
  Observer other;
  observe(one, string(kName));
  observe(two, string(kName));
  observe(other, string("com.example.other"));
  for (int i = 0; i < 10; ++i) {
    post(string(kName));
    post(string("com.example.other"));
  }
  settle();
  EXPECT_EQ(one.calls, 1);
  EXPECT_EQ(two.calls, 1);
  EXPECT_EQ(other.calls, 1);
}

TEST_F(DarwinNotify, ComesFromAProcessWithoutObservers) {
  Child poster([](const auto& tell) {
    while (!std::filesystem::exists(host::containerRoot() + "/go"))
      std::this_thread::sleep_for(1ms);
    host::postDarwinNotification(kName);
    tell(1);
  });
  Observer observer;
  observe(observer, string(kName));
  std::ofstream(folder.path() + "/go") << "";
  EXPECT_EQ(poster.hear(), 1);
  EXPECT_TRUE(test::eventually([&] { return observer.calls == 1; }));
  settle();
  EXPECT_EQ(observer.calls, 1);
}

TEST_F(DarwinNotify, ReachesEveryProcess) {
  Child first(&observeAndTell);
  Child second(&observeAndTell);
  ASSERT_EQ(first.hear(), 0);
  ASSERT_EQ(second.hear(), 0);
  Observer own;
  observe(own, string(kName));
  for (int count = 1; count <= 3; ++count) {
    post(string(kName));
    EXPECT_EQ(first.hear(), count);
    EXPECT_EQ(second.hear(), count);
    EXPECT_TRUE(test::eventually([&] { return own.calls == count; }));
  }
}

TEST_F(DarwinNotify, ADeadProcessDisturbsNobody) {
  Child dies(&observeAndTell);
  Child lives(&observeAndTell);
  ASSERT_EQ(dies.hear(), 0);
  ASSERT_EQ(lives.hear(), 0);
  post(string(kName));
  EXPECT_EQ(dies.hear(), 1);
  EXPECT_EQ(lives.hear(), 1);
  dies.kill();
  post(string(kName));
  EXPECT_EQ(lives.hear(), 2);
  Observer later;
  observe(later, string(kName));
  settle();
  EXPECT_EQ(later.calls, 0);  // earlier posts do not count
  post(string(kName));
  EXPECT_TRUE(test::eventually([&] { return later.calls == 1; }));
  EXPECT_EQ(lives.hear(), 3);
}

TEST_F(DarwinNotify, ContainerRootsAreWorldsOfTheirOwn) {
  test::Folder elsewhere;
  Child other([&](const auto& tell) {
    host::setContainerRoot(elsewhere.path());
    Observer observer;
    observe(observer, string(kName));
    tell(0);
    host::MainRunLoop::instance().runUntil([&] { return observer.calls > 0; }, 300ms);
    tell(observer.calls);
  });
  ASSERT_EQ(other.hear(), 0);
  post(string(kName));
  EXPECT_EQ(other.hear(), 0);
}

TEST_F(DarwinNotify, NamesMayBeAnything) {
  const std::string longName(10000, 'n');
  std::vector<std::string> names{"a/b",
                                 "..",
                                 ".",
                                 "",
                                 "a b",
                                 "a%2Fb",
                                 "%",
                                 "100% é 😀",
                                 "\x01\n",
                                 longName + "1",
                                 longName + "2",
                                 longName,
                                 std::string(200, 'x'),
                                 std::string(201, 'x')};
  std::vector<Observer> observers(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) observe(observers[i], string(names[i].c_str()));
  for (std::size_t i = 0; i < names.size(); ++i) {
    for (Observer& observer : observers) observer.calls = 0;
    post(string(names[i].c_str()));
    EXPECT_TRUE(test::eventually([&] { return observers[i].calls == 1; })) << names[i];
    EXPECT_EQ(observers[i].name, names[i]);
    for (std::size_t j = 0; j < names.size(); ++j)
      EXPECT_EQ(observers[j].calls, i == j ? 1 : 0) << names[i] << names[j];
  }
  // One file for each, and nothing beside the folder.
  const auto entries = [](const std::string& path) {
    return std::distance(std::filesystem::directory_iterator(path),
                         std::filesystem::directory_iterator());
  };
  EXPECT_EQ(entries(folder.path() + "/.notify"), static_cast<std::ptrdiff_t>(names.size()));
  EXPECT_EQ(entries(folder.path()), 1);
}

void postWaiting(NSString* name) {
  CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), name, nullptr,
                                       nullptr, false);
}

class Suspended : public DarwinNotify {
 protected:
  Suspended() {
    for (std::size_t i = 0; i < 4; ++i) {
      CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), &observers_[i],
                                      &Observer::notified, string(kName), nullptr,
                                      static_cast<CFNotificationSuspensionBehavior>(i + 1));
    }
    host::suspendDarwinNotifications(true);
  }
  /// How often each was called: the observer that drops posts, the one that coalesces, the one that
  /// holds, the one that wants them at once.
  std::vector<int> calls() const {
    return {observers_[0].calls, observers_[1].calls, observers_[2].calls, observers_[3].calls};
  }

 private:
  Observer observers_[4];
};

using Calls = std::vector<int>;

TEST_F(Suspended, GetWhatTheyAskedForWhenTheyGoOn) {
  for (int i = 0; i < 3; ++i) {
    postWaiting(string(kName));
    settle();  // otherwise the posts would count as one
  }
  EXPECT_EQ(calls(), (Calls{0, 0, 0, 3}));
  host::suspendDarwinNotifications(false);
  EXPECT_EQ(calls(), (Calls{0, 0, 0, 3}));  // not before the loop runs
  settle();
  EXPECT_EQ(calls(), (Calls{0, 1, 3, 3}));
  postWaiting(string(kName));
  settle();
  EXPECT_EQ(calls(), (Calls{1, 2, 4, 4}));
}

TEST_F(Suspended, AllGetWhatCannotWait) {
  post(string(kName));
  settle();
  EXPECT_EQ(calls(), (Calls{1, 1, 1, 1}));
  host::suspendDarwinNotifications(false);
  settle();
  EXPECT_EQ(calls(), (Calls{1, 1, 1, 1}));
}

TEST_F(Suspended, KeepNothingTwice) {
  for (int round = 1; round <= 2; ++round) {
    host::suspendDarwinNotifications(true);
    postWaiting(string(kName));
    settle();
    host::suspendDarwinNotifications(false);
    settle();
    EXPECT_EQ(calls(), (Calls{0, round, round, round}));
  }
}

TEST_F(DarwinNotify, IgnoresWhatMakesNoSense) {
  Observer observer;
  int stranger = 0;
  auto* other = reinterpret_cast<CFNotificationCenterRef>(&stranger);
  const auto behaviour = CFNotificationSuspensionBehavior::coalesce;
  CFNotificationCenterRef darwin = CFNotificationCenterGetDarwinNotifyCenter();
  CFNotificationCenterAddObserver(darwin, &observer, nullptr, string(kName), nullptr, behaviour);
  CFNotificationCenterAddObserver(darwin, &observer, &Observer::notified, nullptr, nullptr,
                                  behaviour);
  CFNotificationCenterAddObserver(other, &observer, &Observer::notified, string(kName), nullptr,
                                  behaviour);
  CFNotificationCenterAddObserver(nullptr, &observer, &Observer::notified, string(kName), nullptr,
                                  behaviour);
  post(nullptr);
  post(string(kName));
  settle();
  EXPECT_EQ(observer.calls, 0);
  observe(observer, string(kName));
  CFNotificationCenterPostNotification(other, string(kName), nullptr, nullptr, true);
  CFNotificationCenterPostNotification(nullptr, string(kName), nullptr, nullptr, true);
  settle();
  EXPECT_EQ(observer.calls, 0);
}

TEST_F(DarwinNotify, CallsOnTheMainThreadForPostsFromOthers) {
  Observer observer;
  observe(observer, string(kName));
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([] {
        for (int count = 0; count < 50; ++count) host::postDarwinNotification(kName);
      });
    }
    EXPECT_TRUE(test::eventually([&] { return observer.calls > 0; }));
  }
  EXPECT_EQ(observer.thread, std::this_thread::get_id());
}

TEST_F(DarwinNotify, ACallbackMayObserveAndPost) {
  Observer late;
  Observer observer;
  observer.then = [&] {
    observer.then = nullptr;
    observe(late, string(kName));
    post(string(kName));
  };
  observe(observer, string(kName));
  post(string(kName));
  EXPECT_TRUE(test::eventually([&] { return observer.calls == 2 && late.calls == 1; }));
}

TEST_F(DarwinNotify, SurvivesTheLossOfItsFolder) {
  Observer observer;
  observe(observer, string(kName));
  std::filesystem::remove_all(folder.path() + "/.notify");
  settle();
  observer.calls = 0;
  post(string(kName));
  EXPECT_TRUE(test::eventually([&] { return observer.calls == 1; }));
}

TEST_F(DarwinNotify, HearsItselfWhereFilesDoNotWork) {
  std::ofstream(folder.path() + "/.notify") << "no folder";
  Observer observer;
  observe(observer, string(kName));
  post(string(kName));
  post(string(kName));
  post(string("com.example.other"));
  EXPECT_EQ(observer.calls, 0);
  settle();
  EXPECT_EQ(observer.calls, 1);
  ASSERT_EQ(host::logLines().size(), 1u);
  EXPECT_EQ(host::logLines().front().level, static_cast<int>(host::LogLevel::warning));
}

TEST_F(DarwinNotify, APipeInAFilesPlaceDoesNotHoldThePoster) {
  std::filesystem::create_directory(folder.path() + "/.notify");
  ASSERT_EQ(mkfifo((folder.path() + "/.notify/" + kName).c_str(), 0644), 0);
  Observer observer;
  observe(observer, string(kName));
  post(string(kName));
  EXPECT_TRUE(test::eventually([&] { return observer.calls == 1; }));
}

TEST_F(DarwinNotify, DeliversAllNamesWhenTheQueueOverflows) {
  Observer last;
  Observer another;
  observe(last, string("com.example.last"));
  observe(another, string("com.example.another"));
  // Posts of the same name in a row are one event; these are not.
  for (int i = 0; i < 20000; ++i)
    host::postDarwinNotification(i % 2 == 0 ? "com.example.a" : "com.example.b");
  host::postDarwinNotification("com.example.last");
  settle();
  EXPECT_EQ(last.calls, 1);
  EXPECT_EQ(another.calls, 1);
}

}  // namespace
