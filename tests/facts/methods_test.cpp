// The stand-in has no method that phones lack, and none with other arguments: each of its methods
// is compared with facts/methods.tsv. Necessary differences are in facts/stand-in-extra.tsv.
#include <filesystem>
#include <map>
#include <set>

#include "support/hosted.h"
#include "support/register_kinds.h"

namespace {

using namespace test;
using host::runtime::ListedMethod;

using Row = std::vector<std::string>;
using Names = std::set<std::string>;

/// A method's types by "-[Class selector]".
using Facts = std::map<std::string, std::string>;

std::vector<Row> readTable(const char* file) {
  std::vector<Row> rows;
  std::istringstream lines(contentsOf(VARNIX_FACTS "/" + std::string(file)));
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    std::istringstream fields(line);
    rows.emplace_back();
    for (std::string field; std::getline(fields, field, '\t');) rows.back().push_back(field);
  }
  return rows;
}

std::string nameOf(const std::string& className, const std::string& sign,
                   const std::string& selector) {
  return sign + "[" + className + " " + selector + "]";
}
std::string nameOf(const ListedMethod& method, const std::string& className) {
  return nameOf(className, method.classMethod ? "+" : "-", method.selector);
}

Facts readFacts() {
  Facts facts;
  for (const Row& row : readTable("methods.tsv")) {
    facts[nameOf(row.at(0), row.at(1), row.at(2))] = row.at(3);
    // A method of a class is also a method of the class that declares it.
    facts.emplace(nameOf(row.at(4), row.at(1), row.at(2)), row.at(3));
  }
  return facts;
}

Names readExtra() {
  Names extra;
  for (const Row& row : readTable("stand-in-extra.tsv")) {
    EXPECT_EQ(row.size(), 4U) << row.at(0) << ": class, sign, selector, reason";
    EXPECT_TRUE(extra.insert(nameOf(row.at(0), row.at(1), row.at(2))).second)
        << "twice: " << row.at(0) << " " << row.at(2);
  }
  return extra;
}

/// The types on phones, from the class or a superclass; nil if none has the method.
const std::string* factOf(const Facts& facts, const ListedMethod& method) {
  const auto own = facts.find(nameOf(method, method.className));
  if (own != facts.end()) return &own->second;
  for (const std::string& above : method.superclasses) {
    const auto inherited = facts.find(nameOf(method, above));
    if (inherited != facts.end()) return &inherited->second;
  }
  return nullptr;
}

/// Methods that the compiler makes for constructors, and those that only tests and our tools send.
bool isNoPhones(const std::string& selector) {
  return selector.starts_with(".cxx_") || selector.starts_with("standIn_");
}

/// What is wrong, one line each: methods that phones lack, methods with other types, and listed
/// methods that do not exist here or need not be listed.
Names differences(const std::vector<ListedMethod>& methods, const Facts& facts,
                  const Names& extra) {
  Names wrong;
  Names stale = extra;
  for (const ListedMethod& method : methods) {
    if (isNoPhones(method.selector)) continue;
    const std::string name = nameOf(method, method.className);
    const std::string* fact = factOf(facts, method);
    if (fact != nullptr && !areSameToRegisters(method.types, *fact))
      wrong.insert("other types: " + name + " " + method.types + ", phones have " + *fact);
    if (fact == nullptr && stale.erase(name) == 0) wrong.insert("phones lack it: " + name);
  }
  for (const std::string& name : stale) wrong.insert("listed for nothing: " + name);
  return wrong;
}

class StandIn : public Hosted {
 protected:
  /// A process with all frameworks, even those of single applications.
  void startWithAll() {
    start("com.apple.springboard", host::ProcessKind::springboard);
    for (const auto& file : std::filesystem::directory_iterator(frameworks()))
      host::loadLibrary(file.path());
  }
  static std::filesystem::path frameworks() { return host::ownFolder() / "Frameworks"; }

  /// The methods of the stand-in's own classes.
  static std::vector<ListedMethod> methods() {
    std::vector<ListedMethod> methods = host::runtime::allMethods();
    std::erase_if(methods, [](const ListedMethod& method) {
      const auto folder = std::filesystem::path(method.binary).parent_path();
      return folder != host::ownFolder() && folder != frameworks();
    });
    return methods;
  }
  static Names differencesWith(const std::string& more = {}) {
    Names extra = readExtra();
    if (!more.empty()) extra.insert(more);
    return differences(methods(), readFacts(), extra);
  }
};

IMP anything() {
  return reinterpret_cast<IMP>(+[](id, SEL) {});
}

TEST_F(StandIn, HasNoMethodThatPhonesLack) {
  startWithAll();
  EXPECT_EQ(differencesWith(), Names{});
}

/// The classes that a settings page is made of: pages may send them whatever phones have.
TEST_F(StandIn, HasAllThatSettingsPagesHave) {
  startWithAll();
  std::map<std::string, int> missing;
  int asked = 0;
  for (const Row& row : readTable("methods.tsv")) {
    if (!row.at(0).starts_with("PS")) continue;
    ++asked;
    Class cls =
        row.at(1) == "+" ? objc_getMetaClass(row.at(0).c_str()) : objc_getClass(row.at(0).c_str());
    if (!class_respondsToSelector(cls, sel_registerName(row.at(2).c_str())))
      ++missing[nameOf(row.at(0), row.at(1), row.at(2))];
  }
  EXPECT_EQ(missing, (std::map<std::string, int>{}));
  EXPECT_GT(asked, 100);
}

TEST_F(StandIn, IsAskedWhole) {
  startWithAll();
  Names asked;
  Names all{"libvarnix-graphics.so", "libvarnix-host.so"};
  for (const ListedMethod& method : methods())
    asked.insert(std::filesystem::path(method.binary).filename());
  for (const auto& file : std::filesystem::directory_iterator(frameworks()))
    all.insert(file.path().filename());
  // It has only a category of UIColor.
  all.erase("Twitter.so");
  EXPECT_EQ(asked, all);
  EXPECT_GE(all.size(), 11U);
}

TEST_F(StandIn, AMethodThatPhonesLackIsSeen) {
  startWithAll();
  class_addMethod(objc_getClass("UISwitch"), "blink"_sel, anything(), "v@:");
  class_addMethod(objc_getMetaClass("SBHUDView"), "tintColor"_sel, anything(), "@@:");
  EXPECT_EQ(differencesWith(),
            (Names{"phones lack it: +[SBHUDView tintColor]", "phones lack it: -[UISwitch blink]"}));
}

TEST_F(StandIn, OtherTypesThanPhonesHaveAreSeen) {
  startWithAll();
  // Compared with facts about its own class, and about its superclasses.
  class_addMethod(objc_getClass("SBHUDView"), "setTintColor:"_sel, anything(), "v@:i");
  class_addMethod(objc_getClass("SBApplication"), "hash"_sel, anything(), "v@:");
  EXPECT_EQ(differencesWith(),
            (Names{"other types: -[SBApplication hash] v@:, phones have I",
                   "other types: -[SBHUDView setTintColor:] v@:i, phones have v@"}));
}

TEST_F(StandIn, WhatOnlyTestsSendIsNoMatter) {
  startWithAll();
  class_addMethod(objc_getClass("UISwitch"), "standIn_blink"_sel, anything(), "v@:");
  EXPECT_EQ(differencesWith(), Names{});
}

TEST_F(StandIn, AListedMethodThatIsNotThereIsSeen) {
  startWithAll();
  EXPECT_EQ(differencesWith("-[UISwitch blink]"), Names{"listed for nothing: -[UISwitch blink]"});
}

TEST_F(StandIn, AListedMethodThatPhonesHaveIsSeen) {
  startWithAll();
  EXPECT_EQ(differencesWith("-[UIView tintColor]"),
            Names{"listed for nothing: -[UIView tintColor]"});
}

TEST(RegisterKinds, TellWhatRegistersTellApart) {
  for (const auto& [here, facts] : std::vector<std::pair<std::string, std::string>>{
           {"v@:", "v"},
           {"v16@0:8", "v"},
           {"@@:@", "@^"},
           {"@@:r^vI", "@^I"},
           {"@@:^{CGColor=}i", "@@i"},
           {"B@:@?", "c@?"},
           {"{CGRect={CGPoint=ff}{CGSize=ff}}@:", "{CGRect}"},
           {"v@:^@f", "v^f"},
           {"d@:", "d"}})
    EXPECT_TRUE(areSameToRegisters(here, facts)) << here << " " << facts;
  for (const auto& [here, facts] :
       std::vector<std::pair<std::string, std::string>>{{"v@:", "@"},
                                                        {"@@:", "v"},
                                                        {"v@:@", "v"},
                                                        {"v@:", "v@"},
                                                        {"v@:i", "v@"},
                                                        {"v@:B", "vi"},
                                                        {"v@:f", "vd"},
                                                        {"v@:{CGPoint=ff}", "v{CGSize}"},
                                                        {"v@:@", "v@@"},
                                                        {"v", "v"},
                                                        {"", ""}})
    EXPECT_FALSE(areSameToRegisters(here, facts)) << here << " " << facts;
  // A type that is wider on a wider system differs on other systems.
  EXPECT_EQ(areSameToRegisters("q@:d", "if"), sizeof(void*) == 8);
  EXPECT_FALSE(areSameToRegisters("d@:", "i"));
}

}  // namespace
