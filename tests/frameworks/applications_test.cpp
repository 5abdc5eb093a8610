// The application list's names, and when icons come.
#include "platform/AppList.h"

#include <dlfcn.h>

#include "support/pane.h"

namespace {

using namespace test;

int arrivals = 0;
std::string arrived;

class Applications : public Pane {
 protected:
  void icon(const std::string& identifier) const {
    const std::string folderOfIcons = folder.path() + "/Applications";
    std::filesystem::create_directories(folderOfIcons);
    std::filesystem::copy_file(VARNIX_SAMPLES "/icons/com.example.mail.png",
                               folderOfIcons + "/" + identifier + ".png");
  }
  static ALApplicationList* list() { return ALApplicationList::sharedApplicationList(); }
  static std::string words(NSObject* text) {
    return text == nullptr ? "nil" : std::string(host::text(static_cast<NSString*>(text)));
  }
  static std::vector<std::string> sorted(bool onlyVisible) {
    NSArray* found = nullptr;
    NSDictionary* names =
        send(list(), ALApplicationList::applications, nullptr, onlyVisible, &found);
    EXPECT_EQ(send(names, NSDictionary::count), send(found, NSArray::count));
    std::vector<std::string> all;
    for (NSUInteger i = 0; i < send(found, NSArray::count); ++i)
      all.push_back(words(send(found, NSArray::objectAtIndex, i)));
    return all;
  }
  static std::string name(const char* identifier) {
    return words(send(send<NSDictionary*>(list(), "applications"_sel), NSDictionary::objectForKey,
                      string(identifier)));
  }
  static bool isThere(NSUInteger size, const char* identifier) {
    return send(list(), ALApplicationList::hasCachedIconOfSize, size, string(identifier));
  }
  static UIImage* ask(NSUInteger size, const char* identifier) {
    return send(list(), ALApplicationList::iconOfSize, size, string(identifier));
  }
};

TEST_F(Applications, AreSortedByName) {
  icon("com.example.notes2");
  icons["org.zebra"] = VARNIX_SAMPLES "/icons/com.example.maps.png";
  start("com.example.app");
  EXPECT_EQ(sorted(true),
            (std::vector<std::string>{
                "com.burbn.instagram", "com.apple.mobilemail", "com.apple.Maps",
                "com.apple.MobileSMS", "com.apple.Music", "com.apple.mobilenotes",
                "com.example.notes2", "com.apple.mobileslideshow", "com.apple.mobilesafari",
                "com.apple.Preferences", "com.atebits.Tweetie2", "org.zebra"}));
  EXPECT_EQ(name("com.apple.MobileSMS"), "Messages");
  EXPECT_EQ(name("com.example.notes2"), "Notes2");
  EXPECT_EQ(name("org.zebra"), "Zebra");
  EXPECT_EQ(name("com.example.none"), "nil");
}

TEST_F(Applications, HiddenOnesAreNotVisible) {
  start("com.example.app");
  const auto visible = sorted(true);
  const auto all = sorted(false);
  EXPECT_EQ(all.size(), visible.size() + 1);
  EXPECT_EQ(std::count(all.begin(), all.end(), "com.apple.WebSheet"), 1);
  EXPECT_EQ(std::count(visible.begin(), visible.end(), "com.apple.WebSheet"), 0);
  EXPECT_EQ(send(send(list(), ALApplicationList::applications, nullptr, true, nullptr),
                 NSDictionary::count),
            visible.size());
}

TEST_F(Applications, NoPredicateIsUnderstood) {
  start("com.example.app");
  EXPECT_THROW(send(list(), ALApplicationList::applications, list(), true, nullptr),
               host::runtime::Exception);
}

TEST_F(Applications, AnIconIsThereOnceItWasAskedFor) {
  icon("com.example.mail");
  start("com.example.app");
  EXPECT_FALSE(isThere(ALApplicationIconSizeSmall, "com.example.mail"));
  EXPECT_NE(ask(ALApplicationIconSizeSmall, "com.example.mail"), nullptr);
  EXPECT_TRUE(isThere(ALApplicationIconSizeSmall, "com.example.mail"));
  EXPECT_FALSE(isThere(ALApplicationIconSizeLarge, "com.example.mail"));
  // One that there is not never comes.
  EXPECT_EQ(ask(ALApplicationIconSizeSmall, "com.example.none"), nullptr);
  EXPECT_FALSE(isThere(ALApplicationIconSizeSmall, "com.example.none"));
}

TEST_F(Applications, ANewIconIsToldOfOnce) {
  icon("com.example.mail");
  start("com.example.app");
  auto** notification = static_cast<NSString**>(dlsym(RTLD_DEFAULT, "ALIconLoadedNotification"));
  auto** key = static_cast<NSString**>(dlsym(RTLD_DEFAULT, "ALDisplayIdentifierKey"));
  ASSERT_TRUE(notification != nullptr && key != nullptr);
  Class cls = objc_allocateClassPair(objc_getClass("NSObject"), "IconListener", 0);
  static NSString* identifierKey = nullptr;
  identifierKey = *key;
  class_addMethod(cls, "came:"_sel,
                  reinterpret_cast<IMP>(+[](NSObject*, SEL, NSNotification* notice) {
                    EXPECT_TRUE(NSThread::isMainThread());
                    ++arrivals;
                    arrived = words(send(send(notice, NSNotification::userInfo),
                                         NSDictionary::objectForKey, identifierKey));
                  }),
                  "v@:@");
  objc_registerClassPair(cls);
  auto* listener = make<NSObject>("IconListener");
  send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::addObserver, listener,
       "came:"_sel, *notification, nullptr);
  ask(ALApplicationIconSizeSmall, "com.example.mail");
  EXPECT_EQ(arrivals, 0);
  host::MainRunLoop::instance().drain();
  EXPECT_EQ(arrivals, 1);
  EXPECT_EQ(arrived, "com.example.mail");
  ask(ALApplicationIconSizeSmall, "com.example.mail");
  host::MainRunLoop::instance().drain();
  EXPECT_EQ(arrivals, 1);
  send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::removeObserver, listener);
}

}  // namespace
