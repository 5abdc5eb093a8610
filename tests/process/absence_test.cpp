// Phones that lack something: processes started without certain classes, methods, instance
// variables and functions.
#include <array>

#include "runtime/instance_variable.h"
#include "support/hosted.h"

namespace {

using namespace test;

class Absences : public Hosted {
 protected:
  void startWithout(std::vector<std::string> names,
                    host::ProcessKind kind = host::ProcessKind::springboard) {
    start("com.apple.springboard", kind, {}, std::move(names));
  }
  void expectRefusal(const std::string& name, const std::string& words) {
    try {
      startWithout({name});
      FAIL() << "it started";
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(error.what(), words);
    }
  }
};

TEST_F(Absences, OfAMethodLeaveTheInheritedOne) {
  startWithout({"-[UISwitch tintColor]"}, host::ProcessKind::application);
  auto* view = make<UIView>("UISwitch");
  EXPECT_EQ(class_getInstanceMethod(objc_getClass("UISwitch"), "tintColor"_sel),
            class_getInstanceMethod(objc_getClass("UIView"), "tintColor"_sel));
  EXPECT_EQ(hex(send(view, UIView::tintColor)), "#007affff");
}

TEST_F(Absences, OfTheOnlyMethodLeaveNone) {
  startWithout({"-[SBApplication bundleIdentifier]"});
  EXPECT_FALSE(class_respondsToSelector(objc_getClass("SBApplication"), "bundleIdentifier"_sel));
  EXPECT_TRUE(class_respondsToSelector(objc_getClass("SBApplication"), "isEqual:"_sel));
}

TEST_F(Absences, OfAClassMethodLeaveTheInstancesOne) {
  startWithout({"+[UIColor clearColor]", "-[UIColor CGColor]"});
  EXPECT_FALSE(class_respondsToSelector(objc_getMetaClass("UIColor"), "clearColor"_sel));
  EXPECT_TRUE(class_respondsToSelector(objc_getMetaClass("UIColor"), "whiteColor"_sel));
  EXPECT_FALSE(class_respondsToSelector(objc_getClass("UIColor"), "CGColor"_sel));
}

TEST_F(Absences, OfAVariableLeaveTheOthers) {
  startWithout({"SBHUDView._backdropView"});
  EXPECT_EQ(class_getInstanceVariable(objc_getClass("SBHUDView"), "_backdropView"), nullptr);
  EXPECT_NE(class_getInstanceVariable(objc_getClass("SBControlCenterContentContainerView"),
                                      "_backdropView"),
            nullptr);
}

TEST_F(Absences, OfAClassHideItByName) {
  startWithout({"SBHUDView"});
  EXPECT_EQ(objc_getClass("SBHUDView"), nullptr);
  EXPECT_EQ(host::notHereYet(), std::vector<std::string>{});
}

TEST_F(Absences, OfWhatIsNotHereYetAreToldAndKept) {
  const std::string framework = host::ownFolder() / "Frameworks/MediaPlayerUI.so";
  startWithout({"-[MPUNowPlayingController isPlaying]", "MPUNowPlayingController.delegate_",
                "+[MPUNowPlayingController noSuchMethod]"});
  EXPECT_EQ(host::notHereYet(),
            (std::vector<std::string>{"-[MPUNowPlayingController isPlaying]",
                                      "MPUNowPlayingController.delegate_",
                                      "+[MPUNowPlayingController noSuchMethod]"}));
  host::loadLibrary(framework);
  Class controller = objc_getClass("MPUNowPlayingController");
  EXPECT_FALSE(class_respondsToSelector(controller, "isPlaying"_sel));
  EXPECT_TRUE(class_respondsToSelector(controller, "startUpdating"_sel));
  EXPECT_EQ(class_getInstanceVariable(controller, "delegate_"), nullptr);
}

TEST_F(Absences, OfAFunctionAreSeenByWhoAsksWeakly) {
  startWithout({"NSLog"});
  host::loadLibrary(VARNIX_WEAK_ASKER);
  EXPECT_EQ(*static_cast<int*>(host::librarySymbol(VARNIX_WEAK_ASKER, "asker_hasLog")), 0);
  // It is loaded already.
  host::loadLibrary(VARNIX_WEAK_ASKER);
  EXPECT_EQ(host::librarySymbol(VARNIX_WEAK_ASKER, "no_such_symbol"), nullptr);
}

TEST_F(Absences, OfOtherFunctionsAreNoMatter) {
  startWithout({"CFLog", "NSLogv"});
  host::loadLibrary(VARNIX_WEAK_ASKER);
  EXPECT_EQ(*static_cast<int*>(host::librarySymbol(VARNIX_WEAK_ASKER, "asker_hasLog")), 1);
}

TEST_F(Absences, OfAFunctionThatTheLibraryNeedsKeepItOut) {
  startWithout({"NSLog"});
  try {
    load();
    FAIL() << "it was loaded";
  } catch (const std::runtime_error& error) {
    const std::string words = error.what();
    EXPECT_TRUE(words.starts_with(VARNIX_LIBRARY ": symbol")) << words;
    EXPECT_TRUE(words.ends_with("NSLog")) << words;
  }
  EXPECT_EQ(objc_getClass("VNXManager"), nullptr);
}

// A daemon has loaded nothing that draws.
TEST_F(Absences, OfAFunctionLeaveTheLibraryItsNeighbours) {
  startWithout({"NSLog"}, host::ProcessKind::daemon);
  host::loadLibrary(VARNIX_WEAK_ASKER);
  EXPECT_EQ(*static_cast<int*>(host::librarySymbol(VARNIX_WEAK_ASKER, "asker_hasLog")), 0);
}

TEST_F(Absences, OfWhatIsNoLibraryAreRefused) {
  startWithout({"NSLog"});
  const std::string file = folder.path() + "/no-library";
  for (const std::string& bytes : {std::string(), std::string("\177ELF"), std::string(4096, 'x'),
                                   std::string(1 << 16, '\0')}) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    EXPECT_THROW(host::loadLibrary(file), std::runtime_error);
  }
  EXPECT_THROW(host::loadLibrary(folder.path() + "/nowhere"), std::runtime_error);
}

// A library that is cut off or damaged anywhere in the parts that locate its symbols.
TEST_F(Absences, OfFunctionsReadNothingBeyondADamagedLibrary) {
  startWithout({"NSLog"});
  const std::string whole = contentsOf(VARNIX_WEAK_ASKER);
  const std::string file = folder.path() + "/damaged.so";
  int refused = 0;
  for (std::size_t at = 16; at < 64; ++at) {
    std::string bytes = whole.substr(0, whole.size() / 2);
    bytes[at] = '\x7f';
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    try {
      host::loadLibrary(file);
    } catch (const std::runtime_error&) {
      ++refused;
    }
  }
  EXPECT_EQ(refused, 48);
}

TEST_F(Absences, OfAMethodThatTheClassDoesNotHave) {
  expectRefusal("-[SBApplication noSuchMethod]",
                "the class has no such method: -[SBApplication noSuchMethod]");
}
TEST_F(Absences, OfAnInheritedMethod) {
  expectRefusal("-[SBHUDView tintColor]",
                "the method is inherited from UIView: -[SBHUDView tintColor]");
}
TEST_F(Absences, OfAnInheritedClassMethod) {
  expectRefusal("+[SBHUDView alloc]", "the method is inherited from NSObject: +[SBHUDView alloc]");
}
TEST_F(Absences, OfAVariableThatTheClassDoesNotHave) {
  expectRefusal("SBHUDView._noSuchVariable",
                "the class has no such variable: SBHUDView._noSuchVariable");
}
TEST_F(Absences, OfWhatNamesNothing) {
  expectRefusal("", "not a class, method, variable or function: ");
}

TEST(AbsenceNames, AreToldApart) {
  using Kind = host::Absence::Kind;
  const auto read = [](const char* text) { return host::readAbsence(text).value(); };
  const auto method = read("-[A b:c:]");
  EXPECT_EQ(method.kind, Kind::instanceMethod);
  EXPECT_EQ(method.owner, "A");
  EXPECT_EQ(method.name, "b:c:");
  EXPECT_EQ(read("+[A b]").kind, Kind::classMethod);
  const auto variable = read("A._b");
  EXPECT_EQ(variable.kind, Kind::variable);
  EXPECT_EQ(variable.owner, "A");
  EXPECT_EQ(variable.name, "_b");
  EXPECT_EQ(read("A").kind, Kind::classOrFunction);
  EXPECT_EQ(read("_a").name, "_a");
  for (const char* text : {"", " ", "-[", "-[]", "-[ ]", "-[A]", "-[A ]", "-[ b]", "-[A b",
                           "-[A b c]", "-[A b]]", "+[A", "A.", ".b", "A.b.c", "A b", "[A b]"})
    EXPECT_FALSE(host::readAbsence(text)) << text;
}

}  // namespace
