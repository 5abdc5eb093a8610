// The settings store: defaults below a file, typed values, saving, reloading, and a pane's rows.
#include <memory>
#include "objc/autorelease_pool.h"

#include "Foundation/darwin_notify.h"
#include "objc/block.h"
#include "platform/Preferences.h"
#include "support/hosted.h"

namespace {

using namespace test;

constexpr const char* kDomain = "com.example.store";
constexpr const char* kChanged = "com.example.store.changed";

int callbacks = 0;
NSObject* calledWith = nullptr;
std::string colorWhenCalled;
void countCall(NSObject* store) {
  ++callbacks;
  calledWith = store;
  auto* color = objc::as<NSString>(send<NSObject*>(store, "objectForKey:"_sel, string("color")));
  colorWhenCalled = color == nullptr ? "nil" : send(color, NSString::UTF8String);
}

class Store : public Hosted {
 protected:
  void SetUp() override {
    start("com.example.app");
    load();
  }
  std::string path() const {
    return folder.path() + "/var/mobile/Library/Preferences/" + kDomain + ".plist";
  }
  void write(const std::string& entries) {
    std::ofstream(path(), std::ios::trunc)
        << "<plist version=\"1.0\"><dict>" << entries << "</dict></plist>";
  }
  static NSMutableDictionary* defaults() {
    auto* values = NSMutableDictionary::dictionary();
    send(values, NSMutableDictionary::setObjectForKey, NSNumber::numberWithLongLong(7),
         string("seven"));
    send(values, NSMutableDictionary::setObjectForKey, string("blue"), string("color"));
    return values;
  }
  static NSObject* open(NSDictionary* values, const char* notification) {
    auto* raw = send<NSObject*>(objc_getClass("KTPrefsManager"), "alloc"_sel);
    return objc_autorelease(send<NSObject*>(
        raw, "initWithId:defaultValues:notification:notificationCallback:"_sel, string(kDomain),
        values, notification == nullptr ? nullptr : string(notification),
        objc::globalBlock<&countCall>()));
  }
  static NSObject* get(NSObject* store, const char* key) {
    return send<NSObject*>(store, "objectForKey:"_sel, string(key));
  }
  static std::string text(NSObject* store, const char* key) {
    NSObject* value = get(store, key);
    return value == nullptr ? "nil"
                            : send(send(value, NSObject::description), NSString::UTF8String);
  }
  static void set(NSObject* store, NSObject* value, const char* key) {
    send<void>(store, "setObject:forKey:"_sel, value, string(key));
  }
  static PSSpecifier* specifier(const char* key, NSObject* fallback) {
    if (objc_getClass("PSSpecifier") == nullptr) {
      host::loadLibrary(std::filesystem::path(VARNIX_LIBRARY).parent_path() /
                        "Frameworks/Preferences.so");
    }
    auto* made = make<PSSpecifier>("PSSpecifier");
    send(send(made, PSSpecifier::properties), NSMutableDictionary::setObjectForKey, string(key),
         string("key"));
    if (fallback != nullptr)
      send(send(made, PSSpecifier::properties), NSMutableDictionary::setObjectForKey, fallback,
           string("default"));
    return made;
  }
  static void turn() { host::MainRunLoop::instance().runFor(std::chrono::milliseconds(50)); }
};

TEST_F(Store, WithoutAFileAnswersItsDefaults) {
  NSObject* store = open(defaults(), nullptr);
  EXPECT_EQ(text(store, "seven"), "7");
  EXPECT_EQ(text(store, "color"), "blue");
  EXPECT_EQ(get(store, "absent"), nullptr);
  EXPECT_FALSE(send<bool>(store, "boolForKey:"_sel, string("absent")));
  EXPECT_EQ(send<int>(store, "intForKey:"_sel, string("absent")), 0);
  EXPECT_EQ(send<float>(store, "floatForKey:"_sel, string("absent")), 0.0F);
}

TEST_F(Store, WithoutDefaultsAnswersTheFileAlone) {
  write("<key>a</key><integer>1</integer>");
  NSObject* store = open(nullptr, nullptr);
  EXPECT_EQ(text(store, "a"), "1");
  EXPECT_EQ(get(store, "seven"), nullptr);
}

TEST_F(Store, TheFileWinsKeyByKey) {
  write("<key>color</key><string>red</string>");
  NSObject* store = open(defaults(), nullptr);
  EXPECT_EQ(text(store, "color"), "red");
  EXPECT_EQ(text(store, "seven"), "7");
}

TEST_F(Store, NestedValuesAreNotMerged) {
  auto* values = NSMutableDictionary::dictionary();
  auto* inner = NSMutableDictionary::dictionary();
  send(inner, NSMutableDictionary::setObjectForKey, string("x"), string("x"));
  send(values, NSMutableDictionary::setObjectForKey, inner, string("nested"));
  write("<key>nested</key><dict><key>y</key><string>y</string></dict>");
  NSObject* store = open(values, nullptr);
  auto* nested = static_cast<NSDictionary*>(get(store, "nested"));
  EXPECT_EQ(send(nested, NSDictionary::count), 1U);
  EXPECT_EQ(send(nested, NSDictionary::objectForKey, string("x")), nullptr);
}

TEST_F(Store, AFileThatIsNoDictionaryCountsAsAbsent) {
  for (const char* bytes :
       {"", "garbage", "<plist version=\"1.0\"><array><string>a</string></array></plist>",
        "<plist version=\"1.0\"><string>a</string></plist>",
        "<plist version=\"1.0\"><dict><key>a"}) {
    std::ofstream(path(), std::ios::trunc) << bytes;
    EXPECT_EQ(text(open(defaults(), nullptr), "seven"), "7") << bytes;
  }
}

/// How long the library waited each time, in milliseconds. The file gets its contents during the
/// wait with this number.
std::vector<double> waits;
std::size_t writtenDuring = 0;
std::function<void()> writeDuringWait;
void noteWait(NSObject*, SEL, double seconds) {
  waits.push_back(seconds * 1000);
  if (waits.size() == writtenDuring) writeDuringWait();
}

class EmptyFile : public Store {
 protected:
  void SetUp() override {
    Store::SetUp();
    class_replaceMethod(object_getClass(reinterpret_cast<id>(objc_getClass("NSThread"))),
                        sel_registerName("sleepForTimeInterval:"), reinterpret_cast<IMP>(&noteWait),
                        "v@:d");
    writeDuringWait = [this] { write("<key>seven</key><integer>8</integer>"); };
    std::ofstream(path(), std::ios::trunc) << "";
  }
};

TEST_F(EmptyFile, IsReadAgainWhileSomebodyMayBeWriting) {
  for (std::size_t wait = 1; wait <= 4; ++wait) {
    std::ofstream(path(), std::ios::trunc) << "";
    waits.clear();
    writtenDuring = wait;
    EXPECT_EQ(text(open(defaults(), nullptr), "seven"), "8") << wait;
    EXPECT_EQ(waits.size(), wait);
  }
}

TEST_F(EmptyFile, CountsAsAbsentAfterSomeMilliseconds) {
  NSObject* store = open(defaults(), nullptr);
  EXPECT_EQ(text(store, "seven"), "7");
  EXPECT_EQ(waits, (std::vector<double>{1, 2, 4, 8}));
}

TEST_F(EmptyFile, IsWaitedForAtAReloadToo) {
  write("<key>seven</key><integer>9</integer>");
  NSObject* store = open(defaults(), kChanged);
  EXPECT_TRUE(waits.empty());
  std::ofstream(path(), std::ios::trunc) << "";
  writtenDuring = 2;
  send<void>(store, "notificationReceived"_sel);
  EXPECT_EQ(text(store, "seven"), "8");
}

TEST_F(EmptyFile, NothingElseIsWaitedFor) {
  std::filesystem::remove(path());
  EXPECT_EQ(text(open(defaults(), nullptr), "seven"), "7");
  std::ofstream(path(), std::ios::trunc) << "garbage";
  EXPECT_EQ(text(open(defaults(), nullptr), "seven"), "7");
  std::filesystem::remove(path());
  std::filesystem::create_directory(path());
  EXPECT_EQ(text(open(defaults(), nullptr), "seven"), "7");
  EXPECT_TRUE(waits.empty());
}

class FreshRoot : public Store {
 protected:
  void SetUp() override {
    host::ProcessOptions process;
    process.bundle = "com.example.app";
    process.root = folder.path();
    host::startProcess(process);
    load();
  }
};

TEST_F(FreshRoot, KeepsTheFirstSave) {
  NSObject* store = open(defaults(), nullptr);
  send<void>(store, "save"_sel);
  EXPECT_NE(contentsOf(path()).find("<string>blue</string>"), std::string::npos);
}

TEST_F(Store, ConvertsNumbersAndStrings) {
  write(
      "<key>yes</key><true/><key>no</key><false/><key>one</key><integer>1</integer>"
      "<key>real</key><real>2.75</real><key>minus</key><integer>-3</integer>");
  NSObject* store = open(nullptr, nullptr);
  auto boolean = [&](const char* key) { return send<bool>(store, "boolForKey:"_sel, string(key)); };
  auto integer = [&](const char* key) { return send<int>(store, "intForKey:"_sel, string(key)); };
  auto real = [&](const char* key) { return send<float>(store, "floatForKey:"_sel, string(key)); };
  EXPECT_TRUE(boolean("yes"));
  EXPECT_FALSE(boolean("no"));
  EXPECT_TRUE(boolean("real"));
  EXPECT_TRUE(boolean("minus"));
  EXPECT_EQ(integer("yes"), 1);
  EXPECT_EQ(integer("real"), 2);
  EXPECT_EQ(integer("minus"), -3);
  EXPECT_EQ(real("real"), 2.75F);
  const std::vector<std::pair<const char*, bool>> booleans = {
      {"YES", true},    {"yes", true},   {"True", true}, {"t", true},  {"  +001", true},
      {"-7", true},     {"0", false},    {"000", false}, {"", false},  {"no", false},
      {"false", false}, {" - 1", false}, {"0y", true},   {"x1", false}};
  for (const auto& [words, expected] : booleans) {
    set(store, string(words), "s");
    EXPECT_EQ(boolean("s"), expected) << '"' << words << '"';
  }
  const std::vector<std::pair<const char*, int>> integers = {
      {"12", 12}, {"  -12abc", -12},           {"abc", 0},
      {"", 0},    {"99999999999", 2147483647}, {"-99999999999", -2147483647 - 1}};
  for (const auto& [words, expected] : integers) {
    set(store, string(words), "s");
    EXPECT_EQ(integer("s"), expected) << '"' << words << '"';
  }
  set(store, string(" 1.5e1xyz"), "s");
  EXPECT_EQ(real("s"), 15.0F);
}

TEST_F(Store, AValueOfAnotherKindReadsAsAbsentAndIsReturnedAsItIs) {
  write(
      "<key>a</key><array/><key>d</key><dict/><key>b</key><data>AAEC</data><key>t</"
      "key><date>2020-01-02T03:04:05Z</date>");
  NSObject* store = open(nullptr, nullptr);
  for (const char* key : {"a", "d", "b", "t"}) {
    EXPECT_NE(get(store, key), nullptr) << key;
    EXPECT_FALSE(send<bool>(store, "boolForKey:"_sel, string(key))) << key;
    EXPECT_EQ(send<int>(store, "intForKey:"_sel, string(key)), 0) << key;
    EXPECT_EQ(send<float>(store, "floatForKey:"_sel, string(key)), 0.0F) << key;
  }
}

TEST_F(Store, ChangesStayInMemoryUntilSaved) {
  NSObject* store = open(defaults(), nullptr);
  set(store, string("green"), "color");
  EXPECT_EQ(text(store, "color"), "green");
  EXPECT_FALSE(std::filesystem::exists(path()));
  send<void>(store, "removeObjectForKey:"_sel, string("seven"));
  EXPECT_EQ(get(store, "seven"), nullptr);
  send<void>(store, "updateCurrentImplementation"_sel);
  EXPECT_EQ(text(store, "color"), "blue");
  EXPECT_EQ(text(store, "seven"), "7");
}

TEST_F(Store, SavePutsEveryDefaultIntoTheFile) {
  NSObject* store = open(defaults(), nullptr);
  set(store, string("grün 🎨 %@"), "color");
  send<void>(store, "save"_sel);
  auto* saved = NSDictionary::dictionaryWithContentsOfFile(
      string((std::string("/var/mobile/Library/Preferences/") + kDomain + ".plist").c_str()));
  ASSERT_NE(saved, nullptr);
  EXPECT_EQ(send(saved, NSDictionary::count), 2U);
  EXPECT_STREQ(
      send(send(send(saved, NSDictionary::objectForKey, string("color")), NSObject::description),
           NSString::UTF8String),
      "grün 🎨 %@");
  EXPECT_EQ(send(static_cast<NSNumber*>(send(saved, NSDictionary::objectForKey, string("seven"))),
                 NSNumber::intValue),
            7);
}

TEST_F(Store, SaveWritesInPlace) {
  write("");
  std::filesystem::create_hard_link(path(), folder.path() + "/link");
  NSObject* store = open(defaults(), nullptr);
  send<void>(store, "save"_sel);
  EXPECT_EQ(contentsOf(folder.path() + "/link"), contentsOf(path()));
  EXPECT_NE(contentsOf(path()).find("seven"), std::string::npos);
}

TEST_F(Store, AFailedSaveIsIgnored) {
  std::filesystem::create_directory(path());
  NSObject* store = open(defaults(), nullptr);
  send<void>(store, "save"_sel);
  EXPECT_TRUE(std::filesystem::is_directory(path()));
  EXPECT_EQ(text(store, "seven"), "7");
}

TEST_F(Store, KnowsItsIdentifierAndPath) {
  NSObject* store = open(nullptr, nullptr);
  EXPECT_STREQ(send(send<NSString*>(store, "identifier"_sel), NSString::UTF8String), kDomain);
  EXPECT_STREQ(send(send<NSString*>(store, "plistPath"_sel), NSString::UTF8String),
               "/var/mobile/Library/Preferences/com.example.store.plist");
}

TEST_F(Store, SettingThePathReloadsAtOnce) {
  NSObject* store = open(defaults(), nullptr);
  std::ofstream(folder.path() + "/other.x.plist")
      << "<plist version=\"1.0\"><dict><key>color</key><string>other</string></dict></plist>";
  send<void>(store, "setPlistPath:"_sel, string("/other.x.plist"));
  EXPECT_EQ(text(store, "color"), "other");
  EXPECT_STREQ(send(send<NSString*>(store, "identifier"_sel), NSString::UTF8String), "other.x");
}

TEST_F(Store, TheNotificationReloadsAndThenCallsBack) {
  NSObject* store = open(defaults(), kChanged);
  set(store, string("unsaved"), "color");
  write("<key>seven</key><integer>8</integer>");
  send<void>(store, "notifyEveryone"_sel);
  EXPECT_EQ(text(store, "color"), "unsaved") << "delivered before the main loop turned";
  ASSERT_TRUE(eventually([] { return callbacks == 1; }));
  EXPECT_EQ(calledWith, store);
  EXPECT_EQ(colorWhenCalled, "blue") << "called before the file was read";
  EXPECT_EQ(text(store, "seven"), "8");
  EXPECT_EQ(text(store, "color"), "blue");
}

// A suspended application hears of many changes once, when it is resumed.
TEST_F(Store, InASuspendedProcessReloadsOnceWhenItGoesOn) {
  open(defaults(), kChanged);
  host::suspendDarwinNotifications(true);
  for (int i = 0; i < 3; ++i) {
    host::postDarwinNotification(kChanged, false);
    turn();
  }
  EXPECT_EQ(callbacks, 0);
  host::suspendDarwinNotifications(false);
  turn();
  EXPECT_EQ(callbacks, 1);
}

// The store's posts are delivered at once, even to suspended processes.
TEST_F(Store, TellsSuspendedProcessesAtOnce) {
  NSObject* store = open(defaults(), kChanged);
  host::suspendDarwinNotifications(true);
  send<void>(store, "notifyEveryone"_sel);
  EXPECT_TRUE(eventually([] { return callbacks == 1; }));
}

TEST_F(Store, SaveAndNotifyReachesThePosterToo) {
  NSObject* store = open(defaults(), kChanged);
  set(store, string("kept"), "color");
  send<void>(store, "saveAndNotify"_sel);
  ASSERT_TRUE(eventually([] { return callbacks == 1; }));
  EXPECT_EQ(text(store, "color"), "kept");
}

TEST_F(Store, WithoutANameNeitherObservesNorPosts) {
  NSObject* store = open(defaults(), nullptr);
  NSObject* other = open(defaults(), kChanged);
  EXPECT_EQ(send<NSString*>(store, "notificationName"_sel), nullptr);
  EXPECT_EQ(send<void*>(store, "notificationCallback"_sel), nullptr);
  set(store, string("unsaved"), "color");
  send<void>(store, "notifyEveryone"_sel);
  turn();
  EXPECT_EQ(callbacks, 0) << "it posted";
  send<void>(other, "notifyEveryone"_sel);
  ASSERT_TRUE(eventually([] { return callbacks == 1; }));
  EXPECT_EQ(text(store, "color"), "unsaved") << "it observed";
  send<void>(store, "notificationReceived"_sel);
  EXPECT_EQ(callbacks, 1);
  EXPECT_EQ(text(store, "color"), "blue");
}

TEST_F(Store, APanesRowReadsTheViewThenItsDefault) {
  NSObject* store = open(defaults(), nullptr);
  auto readRow = [&](PSSpecifier* row) {
    NSObject* value = send<NSObject*>(store, "readPreferenceValue:"_sel, row);
    return std::string(
        value == nullptr ? "nil" : send(send(value, NSObject::description), NSString::UTF8String));
  };
  EXPECT_EQ(readRow(specifier("color", string("row's"))), "blue");
  EXPECT_EQ(readRow(specifier("other", string("row's"))), "row's");
  EXPECT_EQ(readRow(specifier("other", nullptr)), "nil");
  EXPECT_EQ(readRow(nullptr), "nil");
}

TEST_F(Store, APanesRowWritesAndAnnounces) {
  NSObject* store = open(defaults(), kChanged);
  send<void>(store, "setPreferenceValue:specifier:"_sel, string("pane"),
             specifier("color", nullptr));
  EXPECT_NE(contentsOf(path()).find("pane"), std::string::npos);
  EXPECT_TRUE(eventually([] { return callbacks == 1; }));
}

TEST_F(Store, ANilRowChangesWritesAndPostsNothing) {
  NSObject* store = open(defaults(), kChanged);
  send<void>(store, "setPreferenceValue:specifier:"_sel, string("pane"),
             static_cast<PSSpecifier*>(nullptr));
  turn();
  EXPECT_EQ(callbacks, 0);
  EXPECT_FALSE(std::filesystem::exists(path()));
  EXPECT_EQ(text(store, "color"), "blue");
}

TEST_F(Store, NilKeysAndValuesAreTheCallersMistake) {
  NSObject* store = open(defaults(), nullptr);
#if defined(__arm__)
  // On the device exceptions jump over frames. This system's do not: the process ends with this
  // one.
  EXPECT_DEATH(set(store, nullptr, "k"), "attempt to insert nil into a dictionary");
#else
  EXPECT_THROW(set(store, nullptr, "k"), host::runtime::Exception);
#endif
  EXPECT_EQ(send<NSObject*>(store, "objectForKey:"_sel, static_cast<NSString*>(nullptr)), nullptr);
}

TEST_F(Store, CopiesNameAndDefaultsAndKeepsTheRest) {
  auto* values = defaults();
  NSObject* store = open(values, kChanged);
  send(values, NSMutableDictionary::setObjectForKey, string("late"), string("color"));
  send<void>(store, "updateCurrentImplementation"_sel);
  EXPECT_EQ(text(store, "color"), "blue");
  EXPECT_STREQ(send(send<NSString*>(store, "notificationName"_sel), NSString::UTF8String),
               kChanged);
  NSObject* view = send<NSObject*>(store, "currentPrefsImplementation"_sel);
  EXPECT_NE(objc::as<NSMutableDictionary>(view), nullptr);
  EXPECT_NE(send<void*>(store, "notificationCallback"_sel), nullptr);
}

std::vector<std::string> events;

TEST_F(Store, IsTakenDownInOrderWithOneLastReload) {
  auto pool = std::make_unique<objc::AutoreleasePool>();
  open(defaults(), nullptr);
  Class cls = objc_getClass("KTPrefsManager");
  static auto watch = [](Class of, const char* name) {
    SEL selector = sel_registerName(name);
    static std::vector<std::pair<SEL, IMP>> saved;
    saved.emplace_back(selector, class_getMethodImplementation(of, selector));
    auto note = +[](NSObject* self, SEL command, NSObject* value) {
      events.push_back(std::string(sel_getName(command)) + (value == nullptr ? " nil" : " value"));
      for (const auto& [known, implementation] : saved) {
        if (known == command)
          reinterpret_cast<void (*)(NSObject*, SEL, NSObject*)>(implementation)(self, command,
                                                                                value);
      }
    };
    class_replaceMethod(of, selector, reinterpret_cast<IMP>(note), "v@:@");
  };
  for (const char* name : {"setDefaultValues:", "setNotificationName:", "setPlistPath:",
                           "setCurrentPrefsImplementation:"}) {
    watch(cls, name);
  }
  pool.reset();
  EXPECT_EQ(events,
            (std::vector<std::string>{"setDefaultValues: nil", "setNotificationName: nil",
                                      "setPlistPath: nil", "setCurrentPrefsImplementation: value",
                                      "setCurrentPrefsImplementation: nil"}));
}

}  // namespace
