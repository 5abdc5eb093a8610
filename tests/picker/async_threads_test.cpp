// Requests through the picker's queue: where they compute, where they answer, and what is kept.
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "objc/autorelease_pool.h"
#include "objc/block.h"
#include "picker/CQColorPicker.h"
#include "platform/Dispatch.h"
#include "support/hosted.h"
#include "support/pictures.h"
#include "support/recorded.h"

namespace {

using objc::makeBlock;
using test::eventually;
using test::hex;
using test::make;
using test::plainPicture;

using Completion = objc::Block<void(NSObject*)>;
using DictionaryCompletion = objc::Block<void(NSDictionary*)>;

std::string backgroundOf(NSObject* scheme) {
  return hex(send<UIColor*>(scheme, "backgroundColor"_sel));
}

bool isMainThread() { return NSThread::isMainThread(); }

void enterState(NSInteger state) {
  send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel, state);
}

class Asynchronous : public test::Hosted {
 protected:
  void SetUp() override {
    application("");
    picker = make<NSObject>("CQColorPicker");
  }
  static void request(NSObject* picker, UIImage* image, Completion completion) {
    send<void>(picker, "pickColorsFromImage:onComplete:"_sel, image, completion);
  }
  static void requestDictionary(UIImage* image, DictionaryCompletion completion) {
    send<void>(objc_getClass("CQColorPicker"), "pickColorFromImage:onComplete:"_sel, image,
               completion);
  }
  dispatch_queue_t queue() {
    objc_ivar* ivar = class_getInstanceVariable(picker->isa, "taskQueue");
    return *reinterpret_cast<dispatch_queue_t*>(reinterpret_cast<char*>(picker) +
                                                ivar_getOffset(ivar));
  }

  NSObject* picker = nullptr;
};

/// Keeps a queue busy until it is released.
class Blocker {
 public:
  explicit Blocker(dispatch_queue_t queue) {
    auto wait = makeBlock<void()>([this] {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return letGo_; });
      ended_ = true;
      changed_.notify_all();
    });
    dispatch_async(queue, wait);
  }
  ~Blocker() {
    letGo();
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return ended_; });
  }
  void letGo() {
    std::lock_guard lock(mutex_);
    letGo_ = true;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool letGo_ = false;
  bool ended_ = false;
};

std::atomic<bool> computedOnMain{true};
objc::Hook<CQColorPicker::setupContext> setupContext;
bool notedSetupContext(CQColorPicker* self, SEL command) {
  computedOnMain = isMainThread();
  return setupContext.original(self, command);
}

TEST_F(Asynchronous, ComputesAsideAndAnswersOnTheMainThread) {
  setupContext.install<&notedSetupContext>(picker->isa, CQColorPicker::setupContext);
  std::string answer;
  bool answeredOnMain = false;
  auto done = makeBlock<void(NSObject*)>([&](NSObject* scheme) {
    answer = backgroundOf(scheme);
    answeredOnMain = isMainThread();
  });
  request(picker, plainPicture(1, 2, 3), done);
  EXPECT_EQ(answer, "");
  ASSERT_TRUE(eventually([&] { return !answer.empty(); }));
  EXPECT_EQ(answer, "#010203ff");
  EXPECT_TRUE(answeredOnMain);
  EXPECT_FALSE(computedOnMain);
}

TEST_F(Asynchronous, KeepsWhatItNeedsUntilTheAnswer) {
  std::string answer;
  {
    objc::AutoreleasePool pool;
    auto* other =
        send<NSObject*>(send<NSObject*>(objc_getClass("CQColorPicker"), "alloc"_sel), "init"_sel);
    auto done =
        makeBlock<void(NSObject*)>([&answer](NSObject* scheme) { answer = backgroundOf(scheme); });
    request(other, plainPicture(9, 8, 7), done);
    objc_release(other);
  }
  ASSERT_TRUE(eventually([&] { return !answer.empty(); }));
  EXPECT_EQ(answer, "#090807ff");
}

TEST_F(Asynchronous, DropsRequestsInTheBackground) {
  enterState(2);
  int answers = 0;
  auto done = makeBlock<void(NSObject*)>([&](NSObject*) { ++answers; });
  auto dictionary = makeBlock<void(NSDictionary*)>([&](NSDictionary*) { ++answers; });
  request(picker, plainPicture(1, 2, 3), done);
  requestDictionary(plainPicture(1, 2, 3), dictionary);
  enterState(0);
  // Later requests are answered, and none was waiting before them.
  bool later = false;
  auto last = makeBlock<void(NSObject*)>([&](NSObject*) { later = true; });
  request(picker, plainPicture(1, 2, 3), last);
  ASSERT_TRUE(eventually([&] { return later; }));
  EXPECT_EQ(answers, 0);
}

TEST_F(Asynchronous, AnswersNilWhereTheApplicationLeftMeanwhile) {
  int answers = 0;
  NSObject* scheme = picker;
  auto done = makeBlock<void(NSObject*)>([&](NSObject* found) {
    ++answers;
    scheme = found;
  });
  {
    Blocker busy(queue());
    request(picker, plainPicture(1, 2, 3), done);
    enterState(2);
  }
  ASSERT_TRUE(eventually([&] { return answers == 1; }));
  EXPECT_EQ(scheme, nullptr);
}

TEST_F(Asynchronous, GivesADictionaryOfThreeColors) {
  std::vector<std::string> entries;
  bool onMain = false;
  auto done = makeBlock<void(NSDictionary*)>([&](NSDictionary* colors) {
    onMain = isMainThread();
    entries.push_back(std::to_string(send(colors, NSDictionary::count)));
    for (NSString* key : {"BackgroundColor"_ns, "PrimaryTextColor"_ns, "SecondaryTextColor"_ns})
      entries.push_back(hex(static_cast<UIColor*>(send(colors, NSDictionary::objectForKey, key))));
  });
  requestDictionary(plainPicture(255, 255, 255), done);
  ASSERT_TRUE(eventually([&] { return !entries.empty(); }));
  EXPECT_EQ(entries, (std::vector<std::string>{"3", "#ffffffff", "#000000ff", "#000000ff"}));
  EXPECT_TRUE(onMain);
}

objc::Hook<CQColorScheme::setPrimaryTextColor> setPrimary;
void dropPrimary(CQColorScheme* self, SEL command, UIColor*) {
  setPrimary.original(self, command, nullptr);
}

TEST_F(Asynchronous, TheDictionaryEndsAtTheFirstMissingColor) {
  setPrimary.install<&dropPrimary>(objc_getClass("CQColorScheme"),
                                   CQColorScheme::setPrimaryTextColor);
  NSUInteger count = 99;
  std::string background;
  auto done = makeBlock<void(NSDictionary*)>([&](NSDictionary* colors) {
    count = send(colors, NSDictionary::count);
    background =
        hex(static_cast<UIColor*>(send(colors, NSDictionary::objectForKey, "BackgroundColor"_ns)));
  });
  requestDictionary(plainPicture(255, 255, 255), done);
  ASSERT_TRUE(eventually([&] { return count != 99; }));
  EXPECT_EQ(count, 1U);
  EXPECT_EQ(background, "#ffffffff");
}

objc::Hook<CQColorPicker::colorSchemeFromImage> colorScheme;
CQColorScheme* noScheme(CQColorPicker*, SEL, UIImage*) { return nullptr; }

TEST_F(Asynchronous, WithoutASchemeTheDictionaryIsEmpty) {
  colorScheme.install<&noScheme>(picker->isa, CQColorPicker::colorSchemeFromImage);
  NSUInteger count = 99;
  auto done = makeBlock<void(NSDictionary*)>([&](NSDictionary* colors) {
    count = colors == nullptr ? 98 : send(colors, NSDictionary::count);
  });
  requestDictionary(plainPicture(255, 255, 255), done);
  ASSERT_TRUE(eventually([&] { return count != 99; }));
  EXPECT_EQ(count, 0U);
}

std::atomic<int> pickersMade{0};
objc::Hook<NSObject::init> initPicker;
NSObject* countedInit(NSObject* self, SEL command) {
  ++pickersMade;
  return initPicker.original(self, command);
}

TEST_F(Asynchronous, SharesOnePicker) {
  initPicker.install<&countedInit>(picker->isa, NSObject::init);
  std::atomic<int> answers{0};
  auto done = makeBlock<void(NSDictionary*)>([&](NSDictionary*) { ++answers; });
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      objc::AutoreleasePool pool;
      requestDictionary(plainPicture(5, 5, 5), done);
    });
  }
  for (auto& thread : threads) thread.join();
  ASSERT_TRUE(eventually([&] { return answers == 4; }));
  EXPECT_EQ(pickersMade, 1);
}

/// Each request's image contains its number; each answer must be its own, in order.
TEST_F(Asynchronous, AThousandInFlightLoseNothing) {
  constexpr int kPickers = 4;
#if defined(VARNIX_ARCHITECTURE)
  constexpr int kEach = 25;  // With a thousand, an emulated processor draws for two minutes.
#else
  constexpr int kEach = 250;
#endif
  std::vector<NSObject*> pickers;
  for (int i = 0; i < kPickers; ++i) pickers.push_back(make<NSObject>("CQColorPicker"));
  std::vector<std::vector<std::string>> answers(kPickers);
  std::vector<std::vector<std::string>> expected(kPickers);
  std::vector<std::thread> threads;
  for (int p = 0; p < kPickers; ++p) {
    threads.emplace_back([&, p] {
      objc::AutoreleasePool pool;
      for (int i = 0; i < kEach; ++i) {
        auto* image =
            plainPicture(static_cast<std::uint8_t>(p * 60), static_cast<std::uint8_t>(i), 100);
        auto done = makeBlock<void(NSObject*)>(
            [&answers, p](NSObject* scheme) { answers[p].push_back(backgroundOf(scheme)); });
        request(pickers[p], image, done);
        char color[16];
        std::snprintf(color, sizeof color, "#%02x%02x64ff", p * 60, i);
        expected[p].emplace_back(color);
      }
    });
  }
  for (auto& thread : threads) thread.join();
  auto all = [&] {
    std::size_t count = 0;
    for (const auto& list : answers) count += list.size();
    return count == kPickers * kEach;
  };
  ASSERT_TRUE(host::MainRunLoop::instance().runUntil(all, std::chrono::seconds(60)));
  for (int p = 0; p < kPickers; ++p) EXPECT_EQ(answers[p], expected[p]) << p;
}

}  // namespace
