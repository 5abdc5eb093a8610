// Rows: what they are made of, and how they are written in a property list.
#include "preferences/settings_app.h"
#include "runtime/runtime.h"

#include <dlfcn.h>

namespace {

using namespace test;

class Rows : public SettingsApp {
 protected:
  static std::string text(NSObject* object) {
    return object == nullptr ? "nil" : pages::Row::words(object);
  }
  static std::string property(PSSpecifier* row, const char* key) {
    return text(send(row, PSSpecifier::propertyForKey, string(key)));
  }
};

TEST_F(Rows, PropertiesHaveTheirWords) {
  for (auto [symbol, word] : {std::pair{"PSKeyNameKey", "key"},
                              {"PSDefaultValueKey", "default"},
                              {"PSEnabledKey", "enabled"},
                              {"PSFooterTextGroupKey", "footerText"},
                              {"PSTableCellClassKey", "cellClass"},
                              {"PSIconImageKey", "iconImage"},
                              {"PSValidValuesKey", "validValues"},
                              {"PSValidTitlesKey", "validTitles"},
                              {"PSButtonActionKey", "action"}}) {
    auto** found = static_cast<NSString**>(dlsym(RTLD_DEFAULT, symbol));
    ASSERT_NE(found, nullptr) << symbol;
    EXPECT_EQ(host::text(*found), word);
  }
}

TEST_F(Rows, GroupsHaveHeadersAndFooters) {
  Class cls = objc_getClass("PSSpecifier");
  PSSpecifier* empty = PSSpecifier::emptyGroupSpecifier();
  EXPECT_EQ(send(empty, PSSpecifier::cellType), PSGroupCell);
  EXPECT_EQ(text(send(empty, PSSpecifier::name)), "nil");
  EXPECT_EQ(text(send(empty, PSSpecifier::identifier)), "nil");
  PSSpecifier* both = PSSpecifier::groupSpecifierWithHeader("head"_ns, "foot"_ns);
  EXPECT_EQ(text(send(both, PSSpecifier::name)), "head");
  EXPECT_EQ(property(both, "footerText"), "foot");
  EXPECT_EQ(property(PSSpecifier::groupSpecifierWithHeader(nullptr, nullptr), "footerText"), "nil");
  auto* named = send<PSSpecifier*>(cls, "groupSpecifierWithName:"_sel, "name"_ns);
  EXPECT_EQ(text(send(named, PSSpecifier::name)), "name");
  auto* known = send<PSSpecifier*>(cls, "groupSpecifierWithID:"_sel, "id"_ns);
  EXPECT_EQ(text(send(known, PSSpecifier::identifier)), "id");
  auto* whole = send<PSSpecifier*>(cls, "groupSpecifierWithID:name:"_sel, "id"_ns, "name"_ns);
  EXPECT_EQ(text(send(whole, PSSpecifier::identifier)), "id");
  EXPECT_EQ(text(send(whole, PSSpecifier::name)), "name");
  EXPECT_EQ(send(whole, PSSpecifier::cellType), PSGroupCell);
}

TEST_F(Rows, KeepWhatIsSet) {
  PSSpecifier* row = makeRow("Row", nullptr, PSLinkCell);
  send(row, PSSpecifier::setName, "Other"_ns);
  EXPECT_EQ(text(send(row, PSSpecifier::name)), "Other");
  send(row, PSSpecifier::setIdentifier, "id"_ns);
  EXPECT_EQ(text(send(row, PSSpecifier::identifier)), "id");
  send(row, PSSpecifier::setIdentifier, nullptr);
  EXPECT_EQ(text(send(row, PSSpecifier::identifier)), "Other");
  send<void>(row, "setUserInfo:"_sel, "info"_ns);
  EXPECT_EQ(text(send<NSObject*>(row, "userInfo"_sel)), "info");
  send<void>(row, "setCellType:"_sel, PSSwitchCell);
  EXPECT_EQ(send(row, PSSpecifier::cellType), PSSwitchCell);
  send<void>(row, "setProperties:"_sel, NSDictionary::dictionaryWithObjectForKey("v"_ns, "k"_ns));
  send(row, PSSpecifier::setProperty, "w"_ns, "l"_ns);
  EXPECT_EQ(property(row, "k") + property(row, "l"), "vw");
  send(row, PSSpecifier::removeProperty, "k"_ns);
  EXPECT_EQ(property(row, "k"), "nil");
  EXPECT_THROW(send(row, PSSpecifier::setProperty, nullptr, "k"_ns), host::runtime::Exception);
  EXPECT_EQ(property(row, "none"), "nil");
}

TEST_F(Rows, KnowTheirChoices) {
  PSSpecifier* row = makeRow("Row", nullptr, PSLinkListCell);
  EXPECT_EQ(send(row, PSSpecifier::values), nullptr);
  EXPECT_EQ(send(row, PSSpecifier::titleDictionary), nullptr);
  send(row, PSSpecifier::setValues, listOf({"a"_ns, "b"_ns}), listOf({"A"_ns, "B"_ns}));
  EXPECT_EQ(send(send(row, PSSpecifier::values), NSArray::count), 2U);
  auto title = [&](NSString* value) {
    return text(send(send(row, PSSpecifier::titleDictionary), NSDictionary::objectForKey, value));
  };
  EXPECT_EQ(title("b"_ns), "B");
  EXPECT_EQ(title("c"_ns), "nil");
  EXPECT_THROW(send(row, PSSpecifier::setValues, listOf({"a"_ns}), listOf({})),
               host::runtime::Exception);
  EXPECT_EQ(title("b"_ns), "B");
  send(row, PSSpecifier::setValues, listOf({"x"_ns}), nullptr);
  EXPECT_EQ(title("x"_ns), "x");
}

TEST_F(Rows, CellTypesHaveNames) {
  Class cls = objc_getClass("PSTableCell");
  auto named = [&](const char* name) {
    return send<PSCellType>(cls, "cellTypeFromString:"_sel, string(name));
  };
  auto name = [&](PSCellType type) {
    return text(send<NSString*>(cls, "stringFromCellType:"_sel, type));
  };
  EXPECT_EQ(named("PSGroupCell"), PSGroupCell);
  EXPECT_EQ(named("PSSwitchCell"), PSSwitchCell);
  EXPECT_EQ(named("PSEditTextViewCell"), PSEditTextViewCell);
  EXPECT_EQ(named("PSNoCell"), -1);
  for (PSCellType type = PSGroupCell; type <= PSEditTextViewCell; ++type)
    EXPECT_EQ(named(name(type).c_str()), type);
  EXPECT_EQ(name(PSButtonCell), "PSButtonCell");
  EXPECT_EQ(name(15), "nil");
  EXPECT_EQ(name(-1), "nil");
}

/// A page whose bundle is one of the test's.
NSBundle* sampleBundle(NSObject*, SEL) {
  return send<NSBundle*>(objc_getClass("NSBundle"), "bundleWithPath:"_sel, "/Sample.bundle"_ns);
}

class WrittenRows : public Rows {
 protected:
  void SetUp() override {
    language = "de";
    startSettings();
    page = pageClass("WrittenPage", [](NSObject* self, SEL) {
      return keptRows(self, [&] {
        return send<NSArray*>(self, "loadSpecifiersFromPlistName:target:"_sel, "Root"_ns, self);
      });
    });
    method(page, "bundle"_sel, sampleBundle, "@@:");
    method(
        page, "run:"_sel, [](NSObject*, SEL, PSSpecifier*) { events().emplace_back("ran"); },
        "v@:@");
  }
  static std::string item(const std::string& type, const std::string& label,
                          const std::string& more = {}) {
    return "<dict><key>cell</key><string>" + type + "</string><key>label</key><string>" + label +
           "</string>" + more + "</dict>";
  }
  void root(const std::string& items) const {
    file("/Sample.bundle/Root.plist",
         list("<key>title</key><string>T</string><key>items</key><array>" + items + "</array>"));
  }
  Class page = nullptr;
};

TEST_F(WrittenRows, AreRead) {
  root(item("PSGroupCell", "G", "<key>footerText</key><string>F</string>") +
       item("PSSwitchCell", "S",
            "<key>key</key><string>s</string><key>default</key><true/><key>defaults</key>"
            "<string>com.example.s</string>") +
       item("PSButtonCell", "B", "<key>action</key><string>run:</string>") +
       item("PSLinkListCell", "L",
            "<key>id</key><string>l</string><key>default</key><integer>2</integer>"
            "<key>validValues</key><array><integer>1</integer><integer>2</integer></array>"
            "<key>validTitles</key><array><string>one</string><string>two</string></array>") +
       item("PSLinkCell", "Deep", "<key>detail</key><string>WrittenPage</string>") +
       item("PSOddCell", "O") + "<string>no row</string>");
  file("/Sample.bundle/de.lproj/Root.strings",
       "T = Titel; G = Gruppe; F = \"Fu\xc3\x9f\"; S = Schalter; two = zwei;");
  show(page);
  EXPECT_EQ(pages::titleOf(pages::topPage()), "Titel");
  const auto sections = pages::sections();
  ASSERT_EQ(sections.size(), 1U);
  EXPECT_EQ(sections[0].header, "Gruppe");
  EXPECT_EQ(sections[0].footer, "Fu\xc3\x9f");
  EXPECT_EQ(titles(), (std::vector<std::string>{"Schalter", "B", "L", "Deep"}));
  EXPECT_TRUE(row("s").isOn());
  EXPECT_EQ(row("l").detail(), "zwei");
  pages::press(row("B"));
  EXPECT_EQ(newEvents(), std::vector<std::string>{"ran"});
  pages::press(row("Deep"));
  EXPECT_EQ(pages::depth(), 3U);
}

TEST_F(WrittenRows, WithoutAListThereAreNone) {
  file("/Sample.bundle/x", "");
  show(page);
  EXPECT_EQ(titles(), std::vector<std::string>{});
}

TEST_F(WrittenRows, TheSystemStoresTheirValuesLate) {
  root(item("PSSwitchCell", "S",
            "<key>key</key><string>s</string><key>defaults</key><string>com.example.s</string>"));
  show(page);
  const std::string stored = "/var/mobile/Library/Preferences/com.example.s.plist";
  EXPECT_FALSE(row("s").isOn());
  pages::flip(row("s"));
  EXPECT_FALSE(std::filesystem::exists(folder.path() + stored));
  send<void>(pages::topPage(), "reloadSpecifiers"_sel);
  EXPECT_TRUE(row("s").isOn());
  host::MainRunLoop::instance().drain();
  NSDictionary* all = NSDictionary::dictionaryWithContentsOfFile(string(stored.c_str()));
  EXPECT_EQ(text(send(all, NSDictionary::objectForKey, "s"_ns)), "1");
}

TEST_F(WrittenRows, AnotherFoldersDomainIsNotStored) {
  root(item("PSSwitchCell", "S",
            "<key>key</key><string>s</string><key>defaults</key><string>../../s</string>"));
  show(page);
  pages::flip(row("s"));
  host::MainRunLoop::instance().drain();
  EXPECT_FALSE(std::filesystem::exists(folder.path() + "/var/mobile/s.plist"));
}

}  // namespace
