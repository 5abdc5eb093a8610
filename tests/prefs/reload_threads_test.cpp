// The settings are changed on the main thread while others ask.
#include <atomic>
#include <set>
#include <thread>

#include "objc/autorelease_pool.h"
#include "support/springboard.h"

namespace {

using namespace test;

class ReloadThreads : public test::SpringBoard {
 protected:
  /// Asks on two other threads, again and again, while the main thread acts that many times.
  /// Returns the answers.
  static std::set<std::string> askedWhile(const std::function<std::string()>& ask, int times,
                                          const std::function<void(int)>& act) {
    std::atomic<bool> isOver = false;
    std::set<std::string> answers[2];
    std::atomic<int> asking = 0;
    std::thread threads[2];
    for (int i = 0; i < 2; ++i) {
      threads[i] = std::thread([&, i] {
        do {
          objc::AutoreleasePool pool;
          answers[i].insert(ask());
          asking |= 1 << i;
        } while (!isOver);
      });
    }
    while (asking != 3) std::this_thread::yield();
    for (int i = 0; i < times; ++i) {
      objc::AutoreleasePool pool;
      act(i);
    }
    isOver = true;
    for (std::thread& thread : threads) thread.join();
    answers[0].merge(answers[1]);
    return answers[0];
  }
  static std::string tint() { return hex(send(make<UIView>("UIView"), UIView::tintColor)); }
};

const std::string kRed = stringEntry("global_color", "#ff0000");
const std::string kBlue = stringEntry("global_color", "#0000ff");

TEST_F(ReloadThreads, ATintIsOneOfTheTwo) {
  settings(kRed);
  start("com.example.app");
  load();
  reload();
  const auto answers = askedWhile(&tint, 300, [this](int i) {
    settings(i % 2 == 0 ? kBlue : kRed);
    reload();
  });
  EXPECT_TRUE(answers.contains("#ff0000ff"));
  for (const std::string& answer : answers)
    EXPECT_TRUE(answer == "#ff0000ff" || answer == "#0000ffff") << answer;
  EXPECT_EQ(tint(), "#ff0000ff");
}

TEST_F(ReloadThreads, AValueIsOneThatWasStored) {
  settings(kRed);
  start("com.example.app");
  load();
  auto* store = send<KTPrefsManager*>(manager(), "prefsMan"_sel);
  auto ask = [store] {
    auto* value =
        static_cast<NSString*>(send(store, KTPrefsManager::objectForKey, string("changing")));
    return value == nullptr ? std::string("nil") : send(value, NSString::UTF8String);
  };
  const auto answers = askedWhile(ask, 2000, [store](int i) {
    if (i % 3 == 2) send(store, KTPrefsManager::removeObject, string("changing"));
    else
      send(store, KTPrefsManager::setObject, string(i % 3 == 0 ? "one" : "two"),
           string("changing"));
  });
  for (const std::string& answer : answers)
    EXPECT_TRUE(answer == "nil" || answer == "one" || answer == "two") << answer;
  EXPECT_TRUE(answers.contains("nil"));
  EXPECT_EQ(ask(), "two");
}

// Both threads find it missing, and one of them is first.
TEST_F(ReloadThreads, TheIconsColorIsOneObject) {
  icons["com.example.app"] = std::string(VARNIX_SAMPLES) + "/icons/com.example.mail.png";
  settings(integerEntry("global_color_type", 1));
  start("com.example.app");
  load();
  auto* shared = manager();
  UIColor* found[2] = {};
  std::thread threads[2];
  for (int i = 0; i < 2; ++i) {
    threads[i] = std::thread([&found, shared, i] {
      objc::AutoreleasePool pool;
      found[i] = send<UIColor*>(shared, "dye"_sel);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_NE(found[0], nullptr);
  EXPECT_EQ(found[0], found[1]);
  EXPECT_EQ(hex(found[0]), "#308ff7ff");
  // It is stored on the main thread.
  auto isStored = [this] {
    return contentsOf(settingsPath()).find("cached_icon_color_com.example.app") !=
           std::string::npos;
  };
  EXPECT_FALSE(isStored());
  EXPECT_TRUE(eventually(isStored));
  auto* stored = NSDictionary::dictionaryWithContentsOfFile(
      "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist"_ns);
  EXPECT_NE(stored, nullptr);
}

// The asker owns the answer, even if the view is replaced afterwards.
TEST_F(ReloadThreads, AnAnswerOutlivesItsView) {
  settings(stringEntry("kept", "as it was"));
  start("com.example.app");
  load();
  auto* store = send<KTPrefsManager*>(manager(), "prefsMan"_sel);
  objc::AutoreleasePool pool;
  auto* value = static_cast<NSString*>(send(store, KTPrefsManager::objectForKey, string("kept")));
  auto* view = send(store, KTPrefsManager::currentPrefsImplementation);
  {
    objc::AutoreleasePool inner;
    settings("");
    for (int i = 0; i < 3; ++i) send(store, KTPrefsManager::updateCurrentImplementation);
  }
  EXPECT_EQ(send(store, KTPrefsManager::objectForKey, string("kept")), nullptr);
  EXPECT_STREQ(send(value, NSString::UTF8String), "as it was");
  EXPECT_EQ(send(view, NSDictionary::objectForKey, string("kept")), value);
}

}  // namespace
