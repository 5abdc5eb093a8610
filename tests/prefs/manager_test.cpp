// The dye manager: who is dyed, and with which colour.
#include <sys/wait.h>
#include <unistd.h>

#include "objc/autorelease_pool.h"
#include "support/hosted.h"

namespace {

using namespace test;

std::string key(const std::string& name, const std::string& value) {
  return "<key>" + name + "</key>" + value;
}
std::string text(const std::string& words) { return "<string>" + words + "</string>"; }
std::string number(long long value) { return "<integer>" + std::to_string(value) + "</integer>"; }

struct Element {
  const char* operation;
  const char* prefix;
  bool followsOpenApp;
};
constexpr Element kElements[] = {{"statusBar", "statusbar", false},
                                 {"folder", "folder", false},
                                 {"cc", "cc", true},
                                 {"nc", "nc", true},
                                 {"sms", "sms", false},
                                 {"keyboard", "keyboard", false},
                                 {"vol", "volume", true}};

class Manager : public Hosted {
 protected:
  static bool yes(const char* name) {
    return objc::sendDynamic<bool>(manager(), sel_registerName(name));
  }
  static NSInteger enabled(const Element& e) {
    return objc::sendDynamic<NSInteger>(
        manager(), sel_registerName((std::string(e.operation) + "Enabled").c_str()));
  }
  static UIColor* dyeOf(const Element& e) {
    return objc::sendDynamic<UIColor*>(
        manager(), sel_registerName((std::string(e.operation) + "Dye").c_str()));
  }
  static std::string dye() { return hex(send<UIColor*>(manager(), "dye"_sel)); }
  static bool disabled(const char* identifier) {
    return send<bool>(manager(), "appIsDisabled:"_sel,
                      identifier == nullptr ? nullptr : string(identifier));
  }
};

TEST_F(Manager, AnswersTheDefaultsForAnEmptyFile) {
  application("");
  EXPECT_TRUE(yes("tweakEnabled"));
  EXPECT_FALSE(disabled("com.example.app"));
  EXPECT_FALSE(yes("useAlbumArt"));
  EXPECT_FALSE(yes("wantsIconColor"));
  EXPECT_EQ(dye(), "#de3027ff");
  for (const Element& element : kElements) {
    EXPECT_EQ(enabled(element), 0) << element.operation;
    EXPECT_EQ(hex(dyeOf(element)), "#de3027ff") << element.operation;
    EXPECT_TRUE(send<bool>(dyeOf(element), "isVarnixColor"_sel)) << element.operation;
  }
}

TEST_F(Manager, ElementsAnswerByTheirTypes) {
  std::string entries = key("global_color", text("#101112"));
  for (const Element& element : kElements) {
    entries += key(std::string(element.prefix) + "_color", text(std::string("#0a0b0c")));
  }
  for (long long type : {0LL, 1LL, 2LL, 3LL, -1LL, 4294967298LL}) {
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
      std::string typed = entries;
      for (const Element& element : kElements)
        typed += key(std::string(element.prefix) + "_color_type", number(type));
      application(typed);
      // On 32 bits an NSInteger is the lower half.
      const auto answered = static_cast<NSInteger>(type);
      for (const Element& element : kElements) {
        EXPECT_EQ(enabled(element), answered) << element.operation;
        EXPECT_EQ(hex(dyeOf(element)), answered == 1   ? "nil"
                                       : answered == 2 ? "#0a0b0cff"
                                                       : "#101112ff")
            << element.operation;
        EXPECT_EQ(send<bool>(dyeOf(element), "isVarnixColor"_sel), answered != 1);
      }
      _exit(HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << type;
  }
}

TEST_F(Manager, AnOwnColorThatIsMissingIsWhite) {
  std::string entries;
  for (const Element& element : kElements)
    entries += key(std::string(element.prefix) + "_color_type", number(2));
  application(entries);
  for (const Element& element : kElements) {
    EXPECT_EQ(hex(dyeOf(element)), "#ffffffff") << element.operation;
    EXPECT_TRUE(send<bool>(dyeOf(element), "isVarnixColor"_sel));
  }
}

TEST_F(Manager, TheDyeItselfIsNotMarked) {
  application("");
  EXPECT_FALSE(send<bool>(send<UIColor*>(manager(), "dye"_sel), "isVarnixColor"_sel));
}

TEST_F(Manager, ReadsColorStringsAndFallsBack) {
  const std::vector<std::pair<std::string, std::string>> colors = {
      {text("#112233"), "#112233ff"},
      {text("AABBCC"), "#aabbccff"},
      {text("#abc"), "#aabbccff"},
      {text("#112233:0.5"), "#11223380"},
      {text("#abc:0"), "#aabbcc00"},
      {text("abc"), "#de3027ff"},
      {text(""), "#de3027ff"},
      {text("#"), "#de3027ff"},
      {text("7"), "#de3027ff"},
      {text("#11223"), "#de3027ff"},
      {text("#1122334"), "#de3027ff"},
      {text("#gg2233"), "#de3027ff"},
      {text("#112233:"), "#de3027ff"},
      {text("#112233:x"), "#de3027ff"},
      {text(":0.5"), "#de3027ff"},
      {text(" #112233"), "#de3027ff"},
      {text("#112233:1.2.3"), "#de3027ff"},
      {text("#112233:9"), "#112233ff"},
      {number(112233), "#de3027ff"},
      {"<true/>", "#de3027ff"},
      {"<data>AAEC</data>", "#de3027ff"},
      {"<array/>", "#de3027ff"},
      {"<dict/>", "#de3027ff"},
      {"<date>2020-01-02T03:04:05Z</date>", "#de3027ff"}};
  settings("");
  start("com.example.app");
  load();
  for (const auto& [value, expected] : colors) {
    settings(key("global_color", value));
    EXPECT_EQ(dye(), expected) << value;  // each manager() reads the file again
  }
}

TEST_F(Manager, SwitchesAndExclusions) {
  application(key("enabled", "<false/>") + key("com.a_enabled", "<false/>") +
              key("com.b_enabled", "<true/>") + key("com.c_enabled", number(0)) +
              key("com.d_enabled", text("no")) + key("com.e_enabled", "<array/>"));
  EXPECT_FALSE(yes("tweakEnabled"));
  EXPECT_TRUE(disabled("com.a"));
  EXPECT_FALSE(disabled("com.b"));
  EXPECT_TRUE(disabled("com.c"));
  EXPECT_TRUE(disabled("com.d"));
  EXPECT_FALSE(disabled("com.e"));
  EXPECT_FALSE(disabled("com.f"));
  EXPECT_FALSE(disabled(nullptr));
}

TEST_F(Manager, AMasterSwitchOfAnotherKindCountsAsAbsent) {
  application(key("enabled", "<array/>"));
  EXPECT_TRUE(yes("tweakEnabled"));
}

TEST_F(Manager, KnowsItsProcess) {
  application("");
  EXPECT_STREQ(send(send<NSString*>(manager(), "bundleId"_sel), NSString::UTF8String),
               "com.example.app");
  EXPECT_FALSE(yes("isSpringBoard"));
}

TEST_F(Manager, KnowsSpringBoardAndTheOpenApplication) {
  springBoard("", "com.example.open");
  EXPECT_TRUE(yes("isSpringBoard"));
  EXPECT_STREQ(send(send<NSString*>(manager(), "getOpenAppId"_sel), NSString::UTF8String),
               "com.example.open");
}

TEST_F(Manager, AnOpenApplicationMayGoByItsOtherName) {
  springBoard("", "com.example.open");
  Class cls = objc_getClass("SBApplication");
  NSString* (*other)(id, SEL) = [](id, SEL) { return string("by another name"); };
  class_addMethod(cls, "displayIdentifier"_sel, reinterpret_cast<IMP>(other), "@@:");
  EXPECT_STREQ(send(send<NSString*>(manager(), "getOpenAppId"_sel), NSString::UTF8String),
               "by another name");
}

TEST_F(Manager, AnOpenApplicationMayHaveNoName) {
  start("com.apple.springboard", host::ProcessKind::springboard, "com.example.open",
        {"-[SBApplication bundleIdentifier]"});
  load();
  EXPECT_EQ(send<NSString*>(manager(), "getOpenAppId"_sel), nullptr);
}

TEST_F(Manager, NothingIsOpenOnTheHomeScreen) {
  springBoard("");
  EXPECT_EQ(send<NSString*>(manager(), "getOpenAppId"_sel), nullptr);
}

std::string scope(const std::string& app, const std::string& on) {
  return key(app + "_scope_enabled", on);
}

// An application's own "enabled" excludes it, whatever its scope.
TEST_F(Manager, TheMasterSwitchHasNoScope) {
  for (const bool on : {true, false}) {
    const char* own = on ? "<false/>" : "<true/>";
    settings(key("enabled", on ? "<true/>" : "<false/>") + key("com.example.app_enabled", own) +
             scope("com.example.app", "<true/>"));
    if (on) {
      start("com.example.app");
      load();
    }
    EXPECT_EQ(yes("tweakEnabled"), on);
    EXPECT_EQ(disabled("com.example.app"), on);
  }
}

TEST_F(Manager, AnOverrideNeedsItsSwitch) {
  const std::string plain = key("global_color", text("#111111"));
  const std::string own = key("com.example.app_global_color", text("#222222"));
  const std::vector<std::pair<std::string, std::string>> cases = {
      {plain + own + scope("com.example.app", "<true/>"), "#222222ff"},
      {plain + own + scope("com.example.app", "<false/>"), "#111111ff"},
      {plain + own, "#111111ff"},
      {plain + scope("com.example.app", "<true/>"), "#111111ff"},
      {own + scope("com.example.app", "<true/>"), "#222222ff"},
      {own, "#de3027ff"},
      {plain + own + scope("com.example.other", "<true/>"), "#111111ff"},
      {plain + own + scope("com.example.app", "<array/>"), "#111111ff"},
      {plain + own + scope("com.example.app", text("yes")), "#222222ff"},
      {plain + key("com.example.app_global_color", "<dict/>") + scope("com.example.app", "<true/>"),
       "#111111ff"},
      {plain + key("com.example.app_global_color", number(5)) + scope("com.example.app", "<true/>"),
       "#de3027ff"}};
  settings("");
  start("com.example.app");
  load();
  for (const auto& [entries, expected] : cases) {
    settings(entries);
    EXPECT_EQ(dye(), expected) << entries;
  }
}

TEST_F(Manager, OddIdentifiersAreTextAndNotFormats) {
  for (const std::string& id : {std::string("100%@ %s %n"), std::string("with space"),
                                std::string("smile 😀"), std::string(10000, 'x')}) {
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
      settings(scope(id, "<true/>") + key(id + "_global_color", text("#010203")));
      start(id);
      load();
      EXPECT_EQ(dye(), "#010203ff");
      _exit(HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << id.substr(0, 20);
  }
}

TEST_F(Manager, OpenApplicationsDecideAboutTypesOfThreeElements) {
  std::string entries =
      scope("com.example.open", "<true/>") + scope("com.apple.springboard", "<true/>");
  for (const Element& element : kElements) {
    const std::string prefix = element.prefix;
    entries += key("com.example.open_" + prefix + "_color_type", number(2));
    entries += key("com.example.open_" + prefix + "_color", text("#aaaaaa"));
    entries += key("com.apple.springboard_" + prefix + "_color", text("#bbbbbb"));
    entries += key(prefix + "_color_type", number(1));
  }
  springBoard(entries, "com.example.open");
  for (const Element& element : kElements) {
    EXPECT_EQ(enabled(element), element.followsOpenApp ? 2 : 1) << element.operation;
    // The colour is SpringBoard's own, even if the type came from the open application.
    EXPECT_EQ(hex(dyeOf(element)), element.followsOpenApp ? "#bbbbbbff" : "nil")
        << element.operation;
  }
}

TEST_F(Manager, WithNothingOpenSpringBoardsOwnTypeCounts) {
  springBoard(scope("com.apple.springboard", "<true/>") +
              key("com.apple.springboard_cc_color_type", number(5)) +
              key("cc_color_type", number(1)));
  EXPECT_EQ(enabled(kElements[2]), 5);
}

TEST_F(Manager, WantsIconColorIsPlainWhereTheDyeIsScoped) {
  application(key("global_color_type", number(1)) + scope("com.example.app", "<true/>") +
              key("com.example.app_global_color_type", number(0)) +
              key("com.example.app_global_color", text("#010203")));
  EXPECT_TRUE(yes("wantsIconColor"));
  EXPECT_EQ(dye(), "#010203ff");
}

TEST_F(Manager, TheIconColorPathReadsThePlainGlobalColor) {
  application(key("global_color_type", number(1)) + key("global_color", text("#040506")) +
              scope("com.example.app", "<true/>") +
              key("com.example.app_global_color", text("#010203")));
  EXPECT_EQ(dye(), "#040506ff");
}

TEST_F(Manager, TheIconColorIsKeptWhenTheSettingsChange) {
  application(key("global_color_type", number(1)) + key("global_color", text("#040506")));
  NSObject* one = manager();
  EXPECT_EQ(send<UIColor*>(one, "cachedIconColor"_sel), nullptr);
  EXPECT_EQ(hex(send<UIColor*>(one, "dye"_sel)), "#040506ff");
  EXPECT_EQ(hex(send<UIColor*>(one, "cachedIconColor"_sel)), "#040506ff");
  settings(key("global_color_type", number(1)) + key("global_color", text("#070809")));
  send<void>(send<NSObject*>(one, "prefsMan"_sel), "updateCurrentImplementation"_sel);
  EXPECT_EQ(hex(send<UIColor*>(one, "dye"_sel)), "#040506ff");
}

TEST_F(Manager, SpringBoardsDyeIsTheScopedGlobalColorWhateverTheType) {
  springBoard(key("global_color_type", number(1)) + key("global_color", text("#040506")) +
              scope("com.apple.springboard", "<true/>") +
              key("com.apple.springboard_global_color", text("#010203")));
  EXPECT_EQ(dye(), "#010203ff");
  EXPECT_TRUE(yes("wantsIconColor"));
}

TEST_F(Manager, AlbumArtIsScoped) {
  application(key("use_album_art", "<false/>") + scope("com.example.app", "<true/>") +
              key("com.example.app_use_album_art", "<true/>"));
  EXPECT_TRUE(yes("useAlbumArt"));
}

TEST_F(Manager, GetPrefReturnsWhatIsStored) {
  application(key("thing", "<array/>") + scope("com.other", "<true/>") +
              key("com.other_thing", text("own")));
  NSObject* store = send<NSObject*>(manager(), "prefsMan"_sel);
  EXPECT_NE(objc::as<NSArray>(send<NSObject*>(store, "getPref:"_sel, string("thing"))), nullptr);
  NSObject* own =
      send<NSObject*>(store, "getPref:ident:"_sel, string("thing"), string("com.other"));
  EXPECT_STREQ(send(send(own, NSObject::description), NSString::UTF8String), "own");
  EXPECT_EQ(send<NSObject*>(store, "getPref:"_sel, string("absent")), nullptr);
  EXPECT_NE(send<NSObject*>(store, "getPref:"_sel, string("enabled")), nullptr)
      << "the store's default";
}

TEST_F(Manager, ManyIdentifiersAndKeysGetTheirOwnValues) {
  std::string entries;
  for (int i = 0; i < 200; ++i) {
    const std::string id = "com.example." + std::to_string(i);
    entries += scope(id, "<true/>") + key(id + "_thing", number(i));
  }
  application(entries);
  NSObject* store = send<NSObject*>(manager(), "prefsMan"_sel);
  NSString* thing = string("thing");
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 200; ++i) {
      NSString* id = string(("com.example." + std::to_string(i)).c_str());
      auto* value = static_cast<NSNumber*>(send<NSObject*>(store, "getPref:ident:"_sel, thing, id));
      ASSERT_NE(value, nullptr) << i;
      EXPECT_EQ(send(value, NSNumber::intValue), i);
    }
  }
}

// Each view asks for its tint many times, so a setting's two keys are put together only once.
TEST_F(Manager, KeysOfAnApplicationAreKept) {
  application(key("global_color", text("#111111")));
  auto* store = send<NSObject*>(manager(), "prefsMan"_sel);
  auto* identifier = string("com.example.app");
  auto* name = string("global_color");
  auto allocations = [&] {
    host::runtime::startCounting();
    send<NSObject*>(store, "getPref:ident:"_sel, name, identifier);
    return host::runtime::stopCounting().allocations;
  };
  EXPECT_GT(allocations(), 0U);
  EXPECT_EQ(allocations(), 0U);
  // The keys of others do not replace these.
  for (int i = 0; i < 500; ++i) {
    const objc::AutoreleasePool pool;
    send<NSObject*>(store, "getPref:ident:"_sel, name,
                    string(("com.example." + std::to_string(i)).c_str()));
  }
  EXPECT_EQ(allocations(), 0U);
}

TEST_F(Manager, LetsGoOfItsStoreAndColor) {
  application(key("global_color_type", number(1)));
  NSObject* one = manager();
  EXPECT_NE(send<NSObject*>(one, "prefsMan"_sel), nullptr);
  send<void>(one, "setPrefsMan:"_sel, static_cast<NSObject*>(nullptr));
  EXPECT_EQ(send<NSObject*>(one, "prefsMan"_sel), nullptr);
  EXPECT_EQ(dye(), "#de3027ff");
}

TEST_F(Manager, AsksTheOperationThatTheSelectorNames) {
  application(key("thing_color", text("#0c0d0e")));
  static auto two = +[](NSObject*, SEL) -> NSInteger { return 2; };
  class_addMethod(objc_getClass("VNXManager"), sel_registerName("thingEnabled"),
                  reinterpret_cast<IMP>(two), "q@:");
  UIColor* color =
      send<UIColor*>(manager(), "_getDyeColorWithKey:fallback:enabledSel:"_sel,
                     string("thing_color"), string("#FFFFFF"), sel_registerName("thingEnabled"));
  EXPECT_EQ(hex(color), "#0c0d0eff");
}

}  // namespace
