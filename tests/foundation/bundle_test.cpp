// Bundles: where they are, their texts, and what they load.
#include "Foundation/strings_file.h"
#include "support/pane.h"

namespace {

using namespace test;

class Bundle : public Hosted {
 protected:
  void startIn(const std::string& tongue, std::optional<std::string> packages = "") {
    host::ProcessOptions options;
    options.bundle = "com.apple.Preferences";
    options.root = folder.path();
    options.language = tongue;
    options.installed = std::move(packages);
    host::startProcess(options);
  }
  void file(const std::string& path, const std::string& contents) const {
    const std::filesystem::path whole = folder.path() + path;
    std::filesystem::create_directories(whole.parent_path());
    std::ofstream(whole) << contents;
  }
  static NSBundle* bundle(const char* path) {
    return send<NSBundle*>(objc_getClass("NSBundle"), "bundleWithPath:"_sel, string(path));
  }
  static std::string words(NSObject* text) {
    return text == nullptr ? "nil" : std::string(host::text(static_cast<NSString*>(text)));
  }
  static std::string text(NSBundle* of, const char* key, const char* value = nullptr,
                          const char* table = "Table") {
    return words(send(of, NSBundle::localizedString, string(key),
                      value == nullptr ? nullptr : string(value),
                      table == nullptr ? nullptr : string(table)));
  }
  static std::string resource(NSBundle* of, const char* name, const char* type) {
    return words(send<NSString*>(of, "pathForResource:ofType:"_sel, string(name),
                                 type == nullptr ? nullptr : string(type)));
  }
};

TEST_F(Bundle, OfAFolderIsOne) {
  file("/Library/A.bundle/x", "");
  startIn("en");
  NSBundle* found = bundle("/Library/A.bundle");
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found, bundle("/Library/A.bundle/"));
  EXPECT_EQ(words(send<NSString*>(found, "bundlePath"_sel)), "/Library/A.bundle");
  for (const char* none : {"/Library/B.bundle", "/Library/A.bundle/x", "Library/A.bundle", ""})
    EXPECT_EQ(bundle(none), nullptr) << none;
  EXPECT_EQ(send<NSBundle*>(objc_getClass("NSBundle"), "bundleWithPath:"_sel,
                            static_cast<NSString*>(nullptr)),
            nullptr);
}

TEST_F(Bundle, HasItsInformation) {
  file("/A.bundle/Info.plist",
       "<plist><dict><key>CFBundleIdentifier</key><string>com.example.a</string><key>Odd</key>"
       "<integer>4</integer></dict></plist>");
  file("/B.bundle/Info.plist", "garbage");
  startIn("en");
  EXPECT_EQ(words(send(bundle("/A.bundle"), NSBundle::bundleIdentifier)), "com.example.a");
  EXPECT_EQ(
      words(send(send<NSObject*>(bundle("/A.bundle"), "objectForInfoDictionaryKey:"_sel, "Odd"_ns),
                 NSObject::description)),
      "4");
  EXPECT_EQ(send(bundle("/B.bundle"), NSBundle::bundleIdentifier), nullptr);
  EXPECT_EQ(words(send(NSBundle::mainBundle(), NSBundle::bundleIdentifier)),
            "com.apple.Preferences");
}

TEST_F(Bundle, FindsResourcesInTheUsersLanguage) {
  file("/A.bundle/plain.txt", "");
  file("/A.bundle/both.txt", "");
  file("/A.bundle/de.lproj/both.txt", "");
  file("/A.bundle/de.lproj/german.txt", "");
  file("/A.bundle/en.lproj/english.txt", "");
  startIn("de-AT");
  NSBundle* a = bundle("/A.bundle");
  EXPECT_EQ(resource(a, "plain", "txt"), "/A.bundle/plain.txt");
  EXPECT_EQ(resource(a, "plain.txt", nullptr), "/A.bundle/plain.txt");
  EXPECT_EQ(resource(a, "both", "txt"), "/A.bundle/both.txt");
  EXPECT_EQ(resource(a, "german", "txt"), "/A.bundle/de.lproj/german.txt");
  EXPECT_EQ(resource(a, "english", "txt"), "/A.bundle/en.lproj/english.txt");
  EXPECT_EQ(resource(a, "none", "txt"), "nil");
  EXPECT_EQ(resource(a, "", nullptr), "nil");
}

TEST_F(Bundle, TextsAreInTheUsersLanguage) {
  file("/A.bundle/en.lproj/Table.strings", "\"a\" = \"English\"; \"b\" = \"Only English\";");
  file("/A.bundle/zh-Hans.lproj/Table.strings", "\"a\" = \"\xe4\xb8\xad\";");
  startIn("zh-Hans-CN");
  NSBundle* a = bundle("/A.bundle");
  EXPECT_EQ(text(a, "a"), "\xe4\xb8\xad");
  // A table that is there is asked alone.
  EXPECT_EQ(text(a, "b"), "b");
  EXPECT_EQ(text(a, "b", "instead"), "instead");
  EXPECT_EQ(text(a, "b", ""), "b");
  EXPECT_EQ(text(a, "a", nullptr, "Other"), "a");
  EXPECT_EQ(words(send(a, NSBundle::localizedString, nullptr, nullptr, nullptr)), "");
}

TEST_F(Bundle, WithoutTheUsersLanguageTextsAreInTheirFirst) {
  file("/A.bundle/Info.plist",
       "<plist><dict><key>CFBundleDevelopmentRegion</key><string>fr</string></dict></plist>");
  file("/A.bundle/fr.lproj/Localizable.strings", "\"a\" = \"Bonjour\";");
  startIn("ja");
  EXPECT_EQ(text(bundle("/A.bundle"), "a", nullptr, nullptr), "Bonjour");
  EXPECT_EQ(text(NSBundle::mainBundle(), "a"), "a");
}

TEST_F(Bundle, OfAClassIsTheOneThatDefinesIt) {
  startIn("en", std::nullopt);
  EXPECT_EQ(NSBundle::bundleForClass(objc_getClass("NSObject")), NSBundle::mainBundle());
  NSBundle* pane = bundle("/Library/PreferenceBundles/VarnixPrefs.bundle");
  ASSERT_NE(pane, nullptr);
  EXPECT_EQ(objc_getClass("VNXFrontPage"), nullptr);
  EXPECT_FALSE(send<bool>(pane, "isLoaded"_sel));
  EXPECT_TRUE(send<bool>(pane, "load"_sel));
  EXPECT_TRUE(send<bool>(pane, "load"_sel));
  EXPECT_TRUE(send<bool>(pane, "isLoaded"_sel));
  Class page = objc_getClass("VNXFrontPage");
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(NSBundle::bundleForClass(page), pane);
  EXPECT_EQ(send<Class>(pane, "principalClass"_sel), page);
}

TEST_F(Bundle, WithoutABinaryIsNotLoaded) {
  file("/A.bundle/x", "");
  startIn("en");
  EXPECT_FALSE(send<bool>(bundle("/A.bundle"), "load"_sel));
  EXPECT_EQ(send<Class>(bundle("/A.bundle"), "principalClass"_sel), nullptr);
  EXPECT_EQ(log().size(), 2U);
}

TEST_F(Bundle, InstalledFilesAreReadWhereTheRootHasNone) {
  const Folder package;
  std::filesystem::create_directories(package.path() + "/Library");
  std::ofstream(package.path() + "/Library/a.plist") << "<plist><dict><key>a</key><true/></dict>"
                                                        "</plist>";
  startIn("en", package.path());
  auto count = [] {
    return send(NSDictionary::dictionaryWithContentsOfFile("/Library/a.plist"_ns),
                NSDictionary::count);
  };
  EXPECT_EQ(count(), 1U);
  // Nothing is ever written there.
  EXPECT_TRUE(std::filesystem::create_directories(folder.path() + "/Library"));
  NSDictionary* empty = NSMutableDictionary::dictionary();
  EXPECT_TRUE(send(empty, NSDictionary::writeToFile, "/Library/a.plist"_ns, true));
  EXPECT_EQ(count(), 0U);
  EXPECT_GT(std::filesystem::file_size(package.path() + "/Library/a.plist"), 40U);
}

class Strings : public Bundle {
 protected:
  void SetUp() override { startIn("en"); }
  static std::string read(std::string_view bytes, const char* key = "k") {
    NSDictionary* table = host::stringsFromData(bytes);
    if (table == nullptr) return "no table";
    return words(send(table, NSDictionary::objectForKey, string(key)));
  }
};

TEST_F(Strings, AreKeysAndTexts) {
  EXPECT_EQ(read("\"k\" = \"v\";"), "v");
  EXPECT_EQ(read("/* one */ \"j\"=\"x\"; // two\n \"k\" = \"v\" ;\n"), "v");
  EXPECT_EQ(read("\xef\xbb\xbf\"k\" = \"v\";"), "v");
  EXPECT_EQ(read("k = v;"), "v");
  EXPECT_EQ(read("\"k\";"), "k");
  EXPECT_EQ(read(""), "nil");
  EXPECT_EQ(read("// the end"), "nil");
  EXPECT_EQ(read("\"k\" = \"/* no // comment */\";"), "/* no // comment */");
}

TEST_F(Strings, KnowEscapes) {
  EXPECT_EQ(read(R"("k" = "a\nb\t\"c\"\\d";)"), "a\nb\t\"c\"\\d");
  EXPECT_EQ(read(R"("k" = "\U00e9\u4e2d";)"), "\xc3\xa9\xe4\xb8\xad");
  EXPECT_EQ(read(R"("k" = "\ud83d\ude00";)"), "\xf0\x9f\x98\x80");
  EXPECT_EQ(read(R"("\"k" = "v";)", "\"k"), "v");
}

TEST_F(Strings, MayBeUtf16) {
  const std::string text = "\"k\" = \"\xe9\";";
  for (const bool big : {false, true}) {
    std::string bytes = big ? "\xfe\xff" : "\xff\xfe";
    for (const char unit : text) {
      if (big) bytes += std::string("\0", 1) + unit;
      else bytes += unit + std::string("\0", 1);
    }
    EXPECT_EQ(read(bytes), "\xc3\xa9") << big;
  }
}

TEST_F(Strings, MayBeAPropertyList) {
  EXPECT_EQ(read("<plist><dict><key>k</key><string>v</string></dict></plist>"), "v");
  NSDictionary* table = NSDictionary::dictionaryWithObjectForKey("v"_ns, "k"_ns);
  NSData* data =
      send<NSData*>(objc_getClass("NSPropertyListSerialization"),
                    "dataWithPropertyList:format:options:error:"_sel, static_cast<NSObject*>(table),
                    NSUInteger{200}, NSUInteger{0}, static_cast<NSError**>(nullptr));
  EXPECT_EQ(read({static_cast<const char*>(send(data, NSData::bytes)), send(data, NSData::length)}),
            "v");
}

TEST_F(Strings, ThatBreakOffAreNone) {
  for (const char* broken :
       {"\"k\" = \"v\"", "\"k\" = \"v", "\"k\" =", "\"k", "\"k\" = ;", "= \"v\";", "/* \"k\";",
        "\"k\" = \"v\"; /*", "\"k\" \"v\";", "\"k\" = \"\\", R"("k" = "\u12";)",
        R"("k" = "\uzzzz";)", R"("k" = "\ud83d";)", R"("k" = "\ud83dx";)", R"("k" = "\ude00";)",
        "\"k\" = \"\xff\";", "{}", "\xff\xfe\"", "<plist><array/></plist>"})
    EXPECT_EQ(read(broken), "no table") << broken;
}

}  // namespace
