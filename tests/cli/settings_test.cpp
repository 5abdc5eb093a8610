// varnix settings, as a process.
#include <sys/file.h>
#include <sys/stat.h>

#include <thread>

#include "Foundation/property_list.h"
#include "cli/command.h"

using test::varnix;
using test::Words;

namespace {

class Settings : public test::CommandTest {
 protected:
  static Words with(const char* verb, const Words& words) {
    Words all{"settings", verb};
    all.insert(all.end(), words.begin(), words.end());
    return all;
  }
  static void expectSet(const Words& words, const std::string& listed) {
    const auto outcome = varnix(with("set", words));
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(varnix({"settings", "get", words.front()}).status, 0);
    const auto list = varnix({"settings", "list"});
    EXPECT_NE(list.out.find(words.front() + " = " + listed + "\n"), list.out.npos) << list.out;
  }
  /// The command refuses the words with that message and changes nothing.
  void expectRefused(const Words& words, int status, const std::string& message) {
    const std::string before = test::contentsOf(settingsPath());
    const auto outcome = varnix(words);
    EXPECT_EQ(outcome.status, status) << words.back();
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: " + message + "\n");
    EXPECT_EQ(test::contentsOf(settingsPath()), before);
  }
};

TEST_F(Settings, NothingStoredListsNothing) {
  const auto outcome = varnix({"settings", "list"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.error, "");
  EXPECT_FALSE(std::filesystem::exists(settingsPath()));
}

TEST_F(Settings, SetWritesOnlyWhatWasSet) {
  expectSet({"statusbar_color_type", "2"}, "2");
  EXPECT_EQ(varnix({"settings", "list"}).out, "statusbar_color_type = 2\n");
  const std::string xml = test::contentsOf(settingsPath());
  EXPECT_TRUE(xml.starts_with("<?xml"));
  EXPECT_NE(xml.find("<integer>2</integer>"), xml.npos);
  EXPECT_EQ(xml.find("enabled"), xml.npos);
}

TEST_F(Settings, EveryKindRoundTrips) {
  expectSet({"enabled", "false"}, "false");
  expectSet({"use_album_art", "1"}, "1");
  expectSet({"global_color_type", "-3"}, "-3");
  expectSet({"global_color", "#1e88e5"}, "\"#1e88e5\"");
  expectSet({"com.example.app_enabled", "true"}, "true");
  expectSet({"com.example.app_scope_enabled", "true"}, "true");
  expectSet({"com.example.app_sms_color_type", "1"}, "1");
  EXPECT_EQ(varnix({"settings", "get", "global_color"}).out, "#1e88e5\n");
  EXPECT_EQ(varnix({"settings", "get", "enabled"}).out, "false\n");
  EXPECT_EQ(varnix({"settings", "get", "global_color_type"}).out, "-3\n");
}

TEST_F(Settings, ColoursOfEveryForm) {
  for (const char* color : {"#a1B2c3", "a1b2c3", "#abc", "#112233:0.5", "112233:1", "#123:0"}) {
    expectSet({"cc_color", color}, '"' + std::string(color) + '"');
  }
  // Digits alone are a colour here.
  expectSet({"cc_color", "112233"}, "\"112233\"");
  for (const char* color : {"",
                            "#",
                            "#12",
                            "12",
                            "abc",
                            "#1234",
                            "#12345",
                            "#1234567",
                            "#gggggg",
                            "red",
                            "##123456",
                            "#123456:",
                            "#123456:2",
                            "#123456:-1",
                            "#123456:1e-1",
                            "#123456:nan",
                            "#123456:.5.5",
                            "#123456:0.5 ",
                            " #123456",
                            "true",
                            "5"}) {
    expectRefused({"settings", "set", "cc_color", color}, 2,
                  "wrong value (wanted: #RRGGBB, RRGGBB or #RGB, optionally with :alpha from 0 to "
                  "1): " +
                      std::string(color));
  }
}

TEST_F(Settings, WrongKindsAreRefused) {
  settings("<key>enabled</key><true/>");
  const std::string whole = "wrong value (wanted: a whole number): ";
  const std::string truth = "wrong value (wanted: true or false): ";
  for (const char* text : {"", "x", "1.5", "true", "99999999999999999999", "1 ", "#123456"}) {
    expectRefused({"settings", "set", "nc_color_type", text}, 2, whole + text);
    expectRefused({"settings", "set", "a.b_nc_color_type", text}, 2, whole + text);
    expectRefused({"settings", "set", "global_color_type", text}, 2, whole + text);
  }
  for (const char* text : {"", "YES", "2", "maybe", "TRUE"}) {
    expectRefused({"settings", "set", "enabled", text}, 2, truth + text);
    expectRefused({"settings", "set", "a.b_enabled", text}, 2, truth + text);
    expectRefused({"settings", "set", "a.b_scope_enabled", text}, 2, truth + text);
  }
  expectRefused({"settings", "set", "cached_icon_color_a.b", "x"}, 2,
                "wrong value (wanted: the archive that the library writes): x");
}

TEST_F(Settings, UnknownKeysAreRefused) {
  settings("<key>enabled</key><true/>");
  for (const char* key : {"", "a.b_colour", "color", "cached_icon_color_", "a.b_"}) {
    expectRefused({"settings", "set", key, "true"}, 2, "no such setting: " + std::string(key));
  }
  for (const auto& [key, meant] :
       {std::pair("Enabled", "enabled"), std::pair("statusbar_colour", "statusbar_color"),
        std::pair("_enabled", "enabled"), std::pair("_cc_color", "cc_color"),
        std::pair("enabled ", "enabled")}) {
    expectRefused({"settings", "set", key, "true"}, 2,
                  std::string("no such setting: ") + key + " (did you mean " + meant + "?)");
  }
}

TEST_F(Settings, ForceOverrides) {
  expectSet({"anything", "true", "--force"}, "true");
  expectSet({"enabled", "maybe", "--force"}, "\"maybe\"");
  expectSet({"cached_icon_color_a.b", "x", "--force"}, "\"x\"");
  expectSet({"cc_color", "112233", "--force"}, "112233");
}

TEST_F(Settings, StringKeepsText) {
  expectSet({"nc_color_type", "2", "--string"}, "\"2\"");
  expectSet({"enabled", "false", "--string"}, "\"false\"");
  expectSet({"other", "12", "--force", "--string"}, "\"12\"");
  expectRefused({"settings", "set", "--string", "nc_color_type", "x"}, 2,
                "wrong value (wanted: a whole number): x");
}

TEST_F(Settings, OddIdentifiers) {
  for (const std::string& identifier :
       {std::string("100%@ %s %n"), std::string("with spaces"), std::string("\xF0\x9F\x8E\xA8"),
        std::string(10000, 'x'), std::string("under_scores_"), std::string("a<b>&\"c'")}) {
    expectSet({identifier + "_global_color", "#010203"}, "\"#010203\"");
    EXPECT_EQ(varnix({"settings", "get", identifier + "_global_color"}).out, "#010203\n");
    EXPECT_EQ(varnix({"settings", "unset", identifier + "_global_color"}).status, 0);
  }
  EXPECT_EQ(varnix({"settings", "list"}).out, "");
}

TEST_F(Settings, WhatAPropertyListCannotHoldIsRefused) {
  settings("<key>enabled</key><true/>");
  expectRefused({"settings", "set", "--force", "enabled", "a\x01z"}, 2,
                "a property list cannot hold this: a\\x01z");
  expectRefused({"settings", "set", "--force", "enabled", "\xff\xfe"}, 2, "not UTF-8: \\xff\\xfe");
  expectRefused({"settings", "set", "\xff_enabled", "true"}, 2, "not UTF-8: \\xff_enabled");
}

TEST_F(Settings, AbsentKeys) {
  expectRefused({"settings", "get", "enabled"}, 1, "not set: enabled");
  expectRefused({"settings", "unset", "enabled"}, 1, "not set: enabled");
  EXPECT_FALSE(std::filesystem::exists(settingsPath()));
  settings("<key>cc_color</key><string>#123456</string>");
  expectRefused({"settings", "get", "enabled"}, 1, "not set: enabled");
  expectRefused({"settings", "unset", "enabled"}, 1, "not set: enabled");
}

TEST_F(Settings, UnsetRemovesOneKey) {
  settings("<key>enabled</key><false/><key>cc_color_type</key><integer>1</integer>");
  EXPECT_EQ(varnix({"settings", "unset", "enabled"}).status, 0);
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 1\n");
}

TEST_F(Settings, OtherEntriesStayAsTheyAre) {
  settings(
      "<key>d</key><data>AQID</data><key>t</key><date>2015-01-02T03:04:05Z</date>"
      "<key>r</key><real>0.5</real><key>n</key><string>caf\xC3\xA9 \xF0\x9F\x8E\xA8</string>"
      "<key>a</key><array><integer>1</integer><dict><key>k</key><false/></dict></array>");
  EXPECT_EQ(varnix({"settings", "set", "enabled", "true"}).status, 0);
  EXPECT_EQ(varnix({"settings", "list"}).out,
            "a = [1,{\"k\":false}]\nd = <010203>\nenabled = true\n"
            "n = \"caf\xC3\xA9 \xF0\x9F\x8E\xA8\"\nr = 0.5\nt = \"2015-01-02T03:04:05Z\"\n");
}

TEST_F(Settings, AFileWithoutADictionaryIsLeftAlone) {
  for (const std::string& bytes :
       {std::string("garbage"), std::string(), std::string("<plist><array/></plist>"),
        std::string("<plist><string>x</string></plist>"), std::string("<plist><dict><key>")}) {
    writeSettings(bytes);
    const std::string message =
        "no settings can be read from: " + settingsPath() + " (move the file away to begin anew)";
    expectRefused({"settings", "set", "enabled", "true"}, 1, message);
    expectRefused({"settings", "set", "--force", "enabled", "true"}, 1, message);
    expectRefused({"settings", "unset", "enabled"}, 1, message);
    expectRefused({"settings", "get", "enabled"}, 1, message);
    expectRefused({"settings", "list"}, 1, message);
  }
}

/// A dictionary with that value under "a".
NSMutableDictionary* dictionaryWith(NSObject* value) {
  auto* entries = NSMutableDictionary::dictionary();
  send(entries, NSMutableDictionary::setObjectForKey, value, "a"_ns);
  return entries;
}

TEST_F(Settings, WhatXmlCannotHoldIsKeptInBinaryForm) {
  for (const char* text : {"x\x01y", "\x1f", "a\rb", "\xef\xbf\xbe", "z\xef\xbf\xbf"}) {
    auto* entries = dictionaryWith(test::string(text));
    writeSettings(*host::binaryFromPropertyList(entries));
    EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
    EXPECT_TRUE(test::contentsOf(settingsPath()).starts_with("bplist00"));
    send(entries, NSMutableDictionary::setObjectForKey, NSNumber::numberWithLongLong(2),
         "cc_color_type"_ns);
    NSObject* stored = host::propertyListFromFile(settingsPath());
    EXPECT_TRUE(send(entries, NSObject::isEqual, stored));
    // The text may be a key, or deep inside; it is removed with its entry.
    EXPECT_EQ(varnix({"settings", "unset", "a"}).status, 0);
    EXPECT_TRUE(test::contentsOf(settingsPath()).starts_with("<?xml"));
    auto* list = NSMutableArray::array();
    auto* inner = NSMutableDictionary::dictionary();
    send(inner, NSMutableDictionary::setObjectForKey, "b"_ns, test::string(text));
    send(list, NSMutableArray::addObject, inner);
    writeSettings(*host::binaryFromPropertyList(dictionaryWith(list)));
    EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
    EXPECT_TRUE(test::contentsOf(settingsPath()).starts_with("bplist00"));
  }
}

TEST_F(Settings, OrdinaryContentsOfABinaryFileBecomeXml) {
  writeSettings(
      *host::binaryFromPropertyList(dictionaryWith(test::string("tab\there\ncaf\xc3\xa9"))));
  EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
  EXPECT_TRUE(test::contentsOf(settingsPath()).starts_with("<?xml"));
  EXPECT_EQ(varnix({"settings", "list"}).out,
            "a = \"tab\\there\\ncaf\xc3\xa9\"\ncc_color_type = 2\n");
}

TEST_F(Settings, AYearHasFourDigits) {
  settings(
      "<key>a</key><date>0099-01-02T03:04:05Z</date>"
      "<key>b</key><date>2015-01-02T03:04:05Z</date>");
  EXPECT_EQ(varnix({"settings", "set", "enabled", "true"}).status, 0);
  const std::string xml = test::contentsOf(settingsPath());
  EXPECT_NE(xml.find("<date>0099-01-02T03:04:05Z</date>"), xml.npos) << xml;
  EXPECT_NE(xml.find("<date>2015-01-02T03:04:05Z</date>"), xml.npos) << xml;
  EXPECT_EQ(varnix({"settings", "get", "a"}).out, "0099-01-02T03:04:05Z\n");
}

TEST_F(Settings, OwnerAndModeOfTheFileStay) {
  if (geteuid() != 0) GTEST_SKIP() << "only root changes owners";
  settings("<key>enabled</key><true/>");
  ASSERT_EQ(chown(settingsPath().c_str(), 12345, 23456), 0);
  ASSERT_EQ(chmod(settingsPath().c_str(), 0640), 0);
  EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
  EXPECT_EQ(varnix({"settings", "unset", "enabled"}).status, 0);
  struct stat status{};
  ASSERT_EQ(stat(settingsPath().c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 12345U);
  EXPECT_EQ(status.st_gid, 23456U);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 2\n");
}

TEST_F(Settings, ALinkStaysAndItsTargetIsWritten) {
  settings("<key>enabled</key><true/>");
  const std::string target = folder.path() + "/elsewhere/real.plist";
  std::filesystem::create_directories(folder.path() + "/elsewhere");
  std::filesystem::rename(settingsPath(), target);
  // A link to a link; the second has a relative path.
  std::filesystem::create_symlink("real.plist", folder.path() + "/elsewhere/link");
  std::filesystem::create_symlink(folder.path() + "/elsewhere/link", settingsPath());
  EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(settingsPath()));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path() + "/elsewhere/link"));
  EXPECT_NE(test::contentsOf(target).find("cc_color_type"), std::string::npos);
  EXPECT_EQ(varnix({"settings", "list"}).out, "cc_color_type = 2\nenabled = true\n");
}

TEST_F(Settings, LinksThatLeadNowhereAreRefused) {
  writeSettings("");
  std::filesystem::remove(settingsPath());
  std::filesystem::create_symlink(settingsPath(), settingsPath());
  EXPECT_EQ(varnix({"settings", "set", "enabled", "true"}).status, 1);
  EXPECT_TRUE(std::filesystem::is_symlink(settingsPath()));
}

TEST_F(Settings, FilesOfKilledCommandsAreCleared) {
  settings("<key>enabled</key><true/>");
  const pid_t child = fork();
  if (child == 0) _exit(0);
  waitpid(child, nullptr, 0);
  const std::string gone = settingsPath() + "." + std::to_string(child) + ".0";
  // Files of a living process, and files that only look like temporary ones.
  const std::vector<std::string> others = {settingsPath() + "." + std::to_string(getpid()) + ".0",
                                           settingsPath() + "." + std::to_string(child),
                                           settingsPath() + "." + std::to_string(child) + ".x",
                                           settingsPath() + ".99999999999999999999.0",
                                           settingsPath() + ".-1.0",
                                           settingsPath() + ".0.0"};
  std::ofstream(gone) << "<plist";
  for (const std::string& other : others) std::ofstream(other) << "<plist";
  EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
  EXPECT_FALSE(std::filesystem::exists(gone));
  for (const std::string& other : others) EXPECT_TRUE(std::filesystem::exists(other)) << other;
}

TEST_F(Settings, ALockIsNotWaitedForWithoutEnd) {
  settings("<key>enabled</key><true/>");
  const std::string holder = std::filesystem::path(settingsPath()).parent_path().string();
  const int held = open(holder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_EQ(flock(held, LOCK_EX), 0);
  expectRefused({"settings", "set", "cc_color_type", "2"}, 1,
                "another command has been changing a file for 10 s in: " + holder);
  close(held);
  EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "2"}).status, 0);
}

TEST_F(Settings, AFolderInItsPlaceIsLeftAlone) {
  std::filesystem::create_directories(settingsPath());
  EXPECT_EQ(varnix({"settings", "set", "enabled", "true"}).status, 1);
  EXPECT_TRUE(std::filesystem::is_directory(settingsPath()));
}

TEST_F(Settings, TheOldFileIsReplacedAtOnce) {
  settings("<key>enabled</key><true/>");
  // A process that has the old file open can still read all of it.
  std::ifstream old(settingsPath());
  const std::string before = test::contentsOf(settingsPath());
  EXPECT_EQ(varnix({"settings", "set", "cc_color", "#123456"}).status, 0);
  std::ostringstream still;
  still << old.rdbuf();
  EXPECT_EQ(still.str(), before);
  EXPECT_NE(test::contentsOf(settingsPath()), before);
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& entry :
       std::filesystem::directory_iterator(std::filesystem::path(settingsPath()).parent_path())) {
    ++files;
  }
  EXPECT_EQ(files, 1U) << "a temporary file was left behind";
}

TEST_F(Settings, CommandsAtTheSameTimeLoseNothing) {
  std::vector<std::thread> writers;
  for (int i = 0; i < 8; ++i) {
    writers.emplace_back([i] {
      EXPECT_EQ(
          varnix({"settings", "set", "app" + std::to_string(i) + "_cc_color_type", "1"}).status, 0);
    });
  }
  for (std::thread& writer : writers) writer.join();
  const std::string list = varnix({"settings", "list"}).out;
  EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 8) << list;
}

TEST_F(Settings, RootStandsBeforeOrBehindTheVerb) {
  test::Folder other;
  EXPECT_EQ(varnix({"settings", "--root", other.path(), "set", "enabled", "true"}).status, 0);
  EXPECT_EQ(varnix({"settings", "set", "cc_color_type", "1", "--root", other.path()}).status, 0);
  EXPECT_EQ(varnix({"settings", "list", "--root", other.path()}).out,
            "cc_color_type = 1\nenabled = true\n");
  EXPECT_FALSE(std::filesystem::exists(settingsPath()));
}

TEST_F(Settings, ARootThatCannotBeMade) {
  std::ofstream(folder.path() + "/file") << "x";
  const auto outcome =
      varnix({"settings", "set", "--root", folder.path() + "/file", "enabled", "1"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.error.starts_with("varnix: cannot make the container root: "))
      << outcome.error;
}

}  // namespace
