// A change of track: who is told, when, and for how long.
#include "support/centers.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

class Track : public Centers {};

TEST_F(Track, ATrackTintsOnceThePosterHasReturned) {
  centers("");
  controlCenter();
  notificationCenter();
  post();
  EXPECT_EQ(calls(), Lines());
  drain();
  EXPECT_EQ(calls(), (Lines{"colorBackdrop", "colorBackdrop"}));
}

TEST_F(Track, ATrackTintsOnTheMainThreadWhoeverPosts) {
  centers("");
  controlCenter();
  std::thread([] {
    objc::AutoreleasePool pool;
    post();
  }).join();
  EXPECT_EQ(calls(), Lines());
  drain();
  EXPECT_EQ(tintedOn, std::vector<std::thread::id>{std::this_thread::get_id()});
}

int deallocated = 0;
template <int Slot>
struct Dealloc {
  static void install(const char* name) {
    hook.template install<&noted>(objc_getClass(name), NSObject::dealloc);
  }
  static void noted(NSObject* self, SEL command) {
    ++deallocated;
    hook.original(self, command);
  }
  static inline constinit objc::Hook<NSObject::dealloc> hook;
};

TEST_F(Track, NobodyIsToldAfterItsEnd) {
  centers("");
  Dealloc<0>::install(kControlCenter);
  Dealloc<1>::install(kNotificationCenter);
  {
    objc::AutoreleasePool pool;
    auto control = makeControlCenter();
    auto notification = makeNotificationCenter();
  }
  EXPECT_EQ(deallocated, 2);
  post();
  drain();
  EXPECT_EQ(calls(), Lines());
}

TEST_F(Track, OneThatIsToldLivesUntilItIsTinted) {
  centers("");
  Dealloc<0>::install(kControlCenter);
  {
    objc::AutoreleasePool pool;
    auto center = makeControlCenter();
    post();
  }
  EXPECT_EQ(deallocated, 0);
  drain();
  EXPECT_EQ(calls(), Lines{"colorBackdrop"});
  EXPECT_EQ(deallocated, 1);
}

// It stops observing every name, its own and those of others.
TEST_F(Track, ItsEndEndsEveryObservation) {
  centers("");
  Dealloc<0>::install(kControlCenter);
  {
    objc::AutoreleasePool pool;
    auto center = makeControlCenter();
    send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::addObserver, center,
         "_updateBackground"_sel, string("another"), nullptr);
  }
  EXPECT_EQ(deallocated, 1);
  send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::postNotificationName,
       string("another"), nullptr);
  EXPECT_EQ(calls(), Lines());
}

NSObject* answered = nullptr;
NSObject* answerAnother(NSObject* self, SEL, CGRect) {
  objc_release(self);
  return objc_retain(answered);
}

TEST_F(Track, TheObserverIsWhatTheInitialiserAnswers) {
  settings("");
  startSpringBoard();
  auto other = makeControlCenter();
  class_replaceMethod(objc_getClass(kControlCenter), sel_registerName("initWithFrame:"),
                      reinterpret_cast<IMP>(&answerAnother), "@@:");
  load();
  answered = nullptr;
  EXPECT_EQ(makeControlCenter().get(), nullptr);
  recordSettings();
  post();
  drain();
  EXPECT_EQ(writes(), Lines());
  answered = other;
  EXPECT_EQ(makeControlCenter().get(), other.get());
  post();
  drain();
  EXPECT_EQ(writes(), tinted("#de3027ff", "0.6"));
}

}  // namespace
