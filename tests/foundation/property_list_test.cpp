// Property lists: reading and writing.
#include "Foundation/property_list.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>

#include "Foundation/keyed_archive_uid.h"
#include "Foundation/text.h"
#include "objc/autorelease_pool.h"
#include "support/hosted.h"
#include "support/property_lists.h"

namespace {

using test::string;

class PropertyList : public testing::Test {
 protected:
  static NSDictionary* read(std::string_view bytes) {
    return objc::as<NSDictionary>(host::propertyListFromData(bytes));
  }
  /// The object in a list of a single element.
  static NSObject* element(const std::string& xml) {
    return host::propertyListFromData("<plist version=\"1.0\">" + xml + "</plist>");
  }
  static NSObject* writtenAndRead(NSObject* object) {
    const std::optional<std::string> xml = host::xmlFromPropertyList(object);
    return xml ? host::propertyListFromData(*xml) : nullptr;
  }
  static std::string type(NSObject* number) {
    const char* words = send<const char*>(number, "objCType"_sel);
    return words == nullptr ? "" : words;
  }

  test::Folder folder;
  objc::AutoreleasePool pool;
};

/// The contents of both samples.
void expectSample(NSDictionary* sample, const std::function<std::string(NSObject*)>& type) {
  ASSERT_NE(sample, nullptr);
  EXPECT_EQ(send(sample, NSDictionary::count), 13u);
  auto number = [&](const char* key) {
    return objc::as<NSNumber>(send(sample, NSDictionary::objectForKey, string(key)));
  };
  EXPECT_EQ(type(number("enabled")), "c");
  EXPECT_TRUE(send(number("enabled"), NSNumber::boolValue));
  EXPECT_EQ(type(number("off")), "c");
  EXPECT_FALSE(send(number("off"), NSNumber::boolValue));
  EXPECT_EQ(type(number("count")), "q");
  EXPECT_EQ(send(number("count"), NSNumber::intValue), 7);
  EXPECT_EQ(send(number("negative"), NSNumber::longLongValue), -5);
  EXPECT_EQ(type(number("big")), "Q");
  EXPECT_EQ(send<unsigned long long>(number("big"), "unsignedLongLongValue"_sel), (1ULL << 63) + 5);
  EXPECT_EQ(type(number("real")), "d");
  EXPECT_EQ(send(number("real"), NSNumber::doubleValue), 0.1);
  EXPECT_EQ(
      host::text(objc::as<NSString>(send(sample, NSDictionary::objectForKey, string("name")))),
      "Grün 色 😀");
  auto* blob = objc::as<NSData>(send(sample, NSDictionary::objectForKey, string("blob")));
  ASSERT_NE(blob, nullptr);
  ASSERT_EQ(send(blob, NSData::length), 4u);
  EXPECT_EQ(std::memcmp(send(blob, NSData::bytes), "\x00\x01\xfe\xff", 4), 0);
  auto* date = objc::as<NSDate>(send(sample, NSDictionary::objectForKey, string("date")));
  ASSERT_NE(date, nullptr);
  EXPECT_EQ(send(date, NSDate::timeIntervalSinceReferenceDate), 464115601);  // 2015-09-16 17:00:01
  auto* list = objc::as<NSArray>(send(sample, NSDictionary::objectForKey, string("list")));
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(send(list, NSArray::count), 3u);
  EXPECT_NE(objc::as<NSDictionary>(send(list, NSArray::objectAtIndex, 2)), nullptr);
  EXPECT_NE(
      objc::as<NSMutableDictionary>(send(sample, NSDictionary::objectForKey, string("empty"))),
      nullptr);
  EXPECT_NE(objc::as<NSMutableArray>(send(sample, NSDictionary::objectForKey, string("none"))),
            nullptr);
}

TEST_F(PropertyList, ReadsXml) { expectSample(read(test::kXmlPropertyList), type); }

TEST_F(PropertyList, ReadsBinary) { expectSample(read(test::binaryPropertyList()), type); }

TEST_F(PropertyList, ReadsBinaryWhoseTopIsNotTheFirstObject) {
  const std::string text = "\x53top", other = "\x55other";
  for (const auto& [top, expected] : {std::pair{0, "other"}, std::pair{1, "top"}}) {
    auto* read = objc::as<NSString>(host::propertyListFromData(
        test::binaryFromObjects({other, text}, static_cast<std::uint64_t>(top))));
    ASSERT_NE(read, nullptr) << top;
    EXPECT_STREQ(send(read, NSString::UTF8String), expected);
  }
}

TEST_F(PropertyList, ReadsReferencesOf32Bits) {
  auto* largest = host::propertyListFromData(test::binaryFromObjects({"\x83\xff\xff\xff\xff"}));
  ASSERT_TRUE(host::isArchiveUid(largest));
  EXPECT_EQ(host::archiveUidIndex(largest), 0xffffffffU);
  const std::string larger = "\x84" + test::bigEndian(1ULL << 32, 5);
  EXPECT_EQ(host::propertyListFromData(test::binaryFromObjects({larger})), nullptr);
  const std::string wide = "\x87" + test::bigEndian(1ULL << 32, 8);
  EXPECT_EQ(host::propertyListFromData(test::binaryFromObjects({wide})), nullptr);
  const std::string inXml = "<dict><key>CF$UID</key><integer>4294967295</integer></dict>";
  EXPECT_TRUE(send(element(inXml), NSObject::isEqual, largest));
  EXPECT_FALSE(
      host::isArchiveUid(element("<dict><key>CF$UID</key><integer>4294967296</integer></dict>")));
}

TEST_F(PropertyList, WritesWhatItReads) {
  NSDictionary* sample = read(test::binaryPropertyList());
  const std::optional<std::string> xml = host::xmlFromPropertyList(sample);
  ASSERT_TRUE(xml);
  EXPECT_TRUE(xml->starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
  EXPECT_NE(xml->find("<string>Grün 色 😀</string>"), std::string::npos);
  EXPECT_NE(xml->find("<date>2015-09-16T17:00:01Z</date>"), std::string::npos);
  EXPECT_NE(xml->find("<integer>9223372036854775813</integer>"), std::string::npos);
  NSDictionary* again = read(*xml);
  expectSample(again, type);
  EXPECT_TRUE(send(again, NSObject::isEqual, sample));
}

TEST_F(PropertyList, ReadsElementsOnTop) {
  EXPECT_EQ(host::text(objc::as<NSString>(element("<string>a &lt;&amp;&#x263a;&gt;</string>"))),
            "a <&☺>");
  EXPECT_EQ(host::text(objc::as<NSString>(element("<string><![CDATA[<b>]]></string>"))), "<b>");
  EXPECT_EQ(send(objc::as<NSNumber>(element("<integer>-12</integer>")), NSNumber::intValue), -12);
  EXPECT_EQ(
      send(objc::as<NSArray>(element("<array><string/><string></string></array>")), NSArray::count),
      2u);
  EXPECT_EQ(send(objc::as<NSData>(element("<data></data>")), NSData::length), 0u);
}

TEST_F(PropertyList, LaterOfTwoEqualKeysCounts) {
  auto* pair = objc::as<NSDictionary>(element(
      "<dict><key>a</key><string>first</string><key>a</key><string>second</string></dict>"));
  ASSERT_NE(pair, nullptr);
  EXPECT_EQ(send(pair, NSDictionary::count), 1u);
  EXPECT_EQ(host::text(objc::as<NSString>(send(pair, NSDictionary::objectForKey, string("a")))),
            "second");
}

TEST_F(PropertyList, ReadsCommentsInstructionsAndByteOrderMark) {
  EXPECT_EQ(
      send(read("\xef\xbb\xbf<?xml version=\"1.0\"?><!DOCTYPE plist PUBLIC \"-//a//b\" \"c.dtd\">\n"
                "<!-- <array> --><plist><dict><!-- </dict> --><key>a<!-- b "
                "--></key><true/></dict></plist>\n"),
           NSDictionary::count),
      1u);
}

TEST_F(PropertyList, ReadsUtf16) {
  const std::u16string whole =
      u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<plist><dict><key>Grün</key>"
      u"<string>色 😀</string></dict></plist>";
  std::string bigEndian = "\xfe\xff";
  std::string littleEndian = "\xff\xfe";
  for (const char16_t unit : whole) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xff);
    bigEndian += {high, low};
    littleEndian += {low, high};
  }
  for (const std::string& bytes : {bigEndian, littleEndian}) {
    NSDictionary* contents = read(bytes);
    ASSERT_NE(contents, nullptr);
    EXPECT_EQ(
        host::text(objc::as<NSString>(send(contents, NSDictionary::objectForKey, string("Grün")))),
        "色 😀");
  }
}

TEST_F(PropertyList, LeavesOutWhatHasNoObject) {
  // Text that is not UTF-8.
  const std::string bytes =
      test::binaryFromObjects({test::binaryArray({1, 2}), "\x52\xff\xfe", "\x51q"});
  auto* list = objc::as<NSArray>(host::propertyListFromData(bytes));
  ASSERT_NE(list, nullptr);
  ASSERT_EQ(send(list, NSArray::count), 1u);
  EXPECT_EQ(host::text(objc::as<NSString>(send(list, NSArray::objectAtIndex, 0))), "q");
  auto* xml =
      objc::as<NSDictionary>(element("<dict><key>a\xff</key><true/><key>b</key><string>\xc0</"
                                     "string><key>c</key><integer>3</integer></dict>"));
  ASSERT_NE(xml, nullptr);
  EXPECT_EQ(send(xml, NSDictionary::count), 1u);
}

TEST_F(PropertyList, RefusesOtherFormats) {
  for (const char* bytes :
       {"", " ", "{ a = b; }", "{\"a\": 1}", "bplist", "bplist00",
        "bplist01xxxxxxxxxxxxxxxxxxxxxxxxxx", "plain", "<", "<plist>", "<plist></plist>", "<dict>",
        "<html></html>", "<plist><dict><key>a</key></plist>", "<plist><nothing/></plist>"}) {
    EXPECT_EQ(host::propertyListFromData(bytes), nullptr) << bytes;
  }
}

TEST_F(PropertyList, KeepsNumbers) {
  for (long long value : {0LL, 1LL, -1LL, 4294967296LL, std::numeric_limits<long long>::max(),
                          std::numeric_limits<long long>::min()}) {
    auto* back = objc::as<NSNumber>(writtenAndRead(NSNumber::numberWithLongLong(value)));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(send(back, NSNumber::longLongValue), value);
    EXPECT_EQ(type(back), "q");
  }
  for (double value : {0.0, 1.0, -0.25, 0.1, 1e-300, 1.7976931348623157e308, 123456789.123456789}) {
    auto* back = objc::as<NSNumber>(writtenAndRead(NSNumber::numberWithDouble(value)));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(send(back, NSNumber::doubleValue), value);
    EXPECT_EQ(type(back), "d");
  }
  EXPECT_EQ(type(writtenAndRead(NSNumber::numberWithBool(true))), "c");
}

TEST_F(PropertyList, KeepsDates) {
  // Before 1933 and after 2069, a count of seconds does not fit into 32 bits.
  for (double value : {0.0, -1.0, 464115601.0, -978307200.0, 1e10, -5e10, 63113904000.0}) {
    auto* back =
        objc::as<NSDate>(writtenAndRead(NSDate::dateWithTimeIntervalSinceReferenceDate(value)));
    ASSERT_NE(back, nullptr) << value;
    EXPECT_EQ(send(back, NSDate::timeIntervalSinceReferenceDate), value);
  }
  // XML stores whole seconds.
  auto* earlier =
      objc::as<NSDate>(writtenAndRead(NSDate::dateWithTimeIntervalSinceReferenceDate(-0.5)));
  ASSERT_NE(earlier, nullptr);
  EXPECT_EQ(send(earlier, NSDate::timeIntervalSinceReferenceDate), -1);
}

TEST_F(PropertyList, ReadsDatesOfBinaryFilesToTheFraction) {
  const auto read = [](double seconds) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &seconds, sizeof bits);
    return host::propertyListFromData(test::binaryFromObjects({"\x33" + test::bigEndian(bits, 8)}));
  };
  for (double value : {0.5, -0.5, -1.25, 1e10 + 0.125, 464115601.0}) {
    auto* date = objc::as<NSDate>(read(value));
    ASSERT_NE(date, nullptr) << value;
    EXPECT_EQ(send(date, NSDate::timeIntervalSinceReferenceDate), value);
  }
  EXPECT_EQ(read(std::nan("")), nullptr);
  EXPECT_EQ(read(1e300), nullptr);
}

TEST_F(PropertyList, KeepsDataOfEverySize) {
  std::string bytes;
  for (int size = 0; size < 400; ++size) {
    NSMutableDictionary* holder = NSMutableDictionary::dictionary();
    send(holder, NSMutableDictionary::setObjectForKey,
         NSData::dataWithBytes(bytes.data(), bytes.size()), string("data"));
    auto* back = objc::as<NSDictionary>(writtenAndRead(holder));
    ASSERT_NE(back, nullptr) << size;
    ASSERT_TRUE(send(back, NSObject::isEqual, holder)) << size;
    bytes += static_cast<char>(size * 37);
  }
}

TEST_F(PropertyList, WritesTextThatXmlWouldTakeForTags) {
  NSString* words = string("<a> & \"b\" 'c' ]]> &amp; \t\n é");
  EXPECT_EQ(host::text(objc::as<NSString>(writtenAndRead(words))), host::text(words));
}

TEST_F(PropertyList, WritesNothingWhereAnObjectHasNoForm) {
  EXPECT_FALSE(host::xmlFromPropertyList(nullptr));
  NSMutableArray* list = NSMutableArray::array();
  send(list, NSMutableArray::addObject, test::make<NSObject>("NSObject"));
  EXPECT_FALSE(host::xmlFromPropertyList(list));
  NSMutableDictionary* numbers = NSMutableDictionary::dictionary();
  send(numbers, NSMutableDictionary::setObjectForKey, string("a"), NSNumber::numberWithBool(true));
  EXPECT_FALSE(host::xmlFromPropertyList(numbers));
  EXPECT_FALSE(host::xmlFromPropertyList(host::makeString(std::string_view("a\0b", 3))));
  EXPECT_FALSE(
      host::xmlFromPropertyList(NSDate::dateWithTimeIntervalSinceReferenceDate(std::nan(""))));
}

TEST_F(PropertyList, WritesToTheDepthThatItReads) {
  const auto nested = [](std::size_t depth) {
    NSMutableArray* outer = NSMutableArray::array();
    for (std::size_t i = 1; i < depth; ++i) {
      NSMutableArray* next = NSMutableArray::array();
      send(next, NSMutableArray::addObject, outer);
      outer = next;
    }
    return outer;
  };
  const std::optional<std::string> deepest = host::xmlFromPropertyList(nested(host::kMaximumDepth));
  ASSERT_TRUE(deepest);
  EXPECT_NE(host::propertyListFromData(*deepest), nullptr);
  EXPECT_FALSE(host::xmlFromPropertyList(nested(host::kMaximumDepth + 1)));
}

/// Larger ones would take the binary form too long.
TEST_F(PropertyList, WritesSoManyNodesInBinaryForm) {
  const auto numbers = [](std::size_t count) {
    const std::vector<NSObject*> items(count, NSNumber::numberWithLongLong(7));
    return NSArray::arrayWithObjects(items.data(), items.size());
  };
  const auto most = numbers(host::kMaximumBinaryNodes - 1);
  const auto binary = host::binaryFromPropertyList(most);
  ASSERT_TRUE(binary);
  EXPECT_TRUE(send(most, NSObject::isEqual, host::propertyListFromData(*binary)));
  NSArray* tooMany = numbers(host::kMaximumBinaryNodes);
  EXPECT_FALSE(host::binaryFromPropertyList(tooMany));
  EXPECT_TRUE(host::xmlFromPropertyList(tooMany));
}

TEST_F(PropertyList, WritingEndsForAContainerThatHoldsItself) {
  NSMutableArray* list = NSMutableArray::array();
  send(list, NSMutableArray::addObject, list);
  send(list, NSMutableArray::addObject, list);
  EXPECT_FALSE(host::xmlFromPropertyList(list));
  send<void>(list, "removeObjectAtIndex:"_sel, NSUInteger{0});
  send<void>(list, "removeObjectAtIndex:"_sel, NSUInteger{0});
}

using PropertyListFile = PropertyList;

TEST_F(PropertyListFile, ReadsFilesAndNothingElse) {
  const std::string path = folder.path() + "/a.plist";
  ASSERT_TRUE(host::writeFile(path, test::kXmlPropertyList, false));
  EXPECT_NE(host::propertyListFromFile(path), nullptr);
  std::filesystem::create_symlink("a.plist", folder.path() + "/link");
  EXPECT_NE(host::propertyListFromFile(folder.path() + "/link"), nullptr);
  EXPECT_EQ(host::propertyListFromFile(folder.path()), nullptr);
  EXPECT_EQ(host::propertyListFromFile(folder.path() + "/none"), nullptr);
  EXPECT_EQ(host::propertyListFromFile(""), nullptr);
  EXPECT_EQ(host::propertyListFromFile("/dev/zero"), nullptr);
  ASSERT_EQ(mkfifo((folder.path() + "/pipe").c_str(), 0644), 0);
  EXPECT_EQ(host::propertyListFromFile(folder.path() + "/pipe"), nullptr);
}

TEST_F(PropertyListFile, RefusesLargeFilesUnread) {
  const std::string path = folder.path() + "/large";
  std::string bytes(test::kXmlPropertyList);
  ASSERT_TRUE(host::writeFile(path, bytes, false));
  std::filesystem::resize_file(path,
                               50 << 20);  // a sparse file: it costs nothing unless it is read
  EXPECT_EQ(host::propertyListFromFile(path), nullptr);
  bytes.resize(host::kMaximumBytes, ' ');
  EXPECT_NE(host::propertyListFromData(bytes), nullptr);
  bytes += ' ';
  EXPECT_EQ(host::propertyListFromData(bytes), nullptr);
}

TEST_F(PropertyListFile, WritesInPlace) {
  const std::string path = folder.path() + "/a";
  ASSERT_TRUE(host::writeFile(path, "a longer text", false));
  std::filesystem::create_hard_link(path, folder.path() + "/b");
  ASSERT_TRUE(host::writeFile(path, "text", false));
  EXPECT_EQ(test::contentsOf(path), "text");
  EXPECT_EQ(test::contentsOf(folder.path() + "/b"), "text");  // the same file
}

TEST_F(PropertyListFile, WritesAtomically) {
  const std::string path = folder.path() + "/a";
  ASSERT_TRUE(host::writeFile(path, "old", true));
  std::filesystem::permissions(
      path, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  std::filesystem::create_hard_link(path, folder.path() + "/b");
  ASSERT_TRUE(host::writeFile(path, "new", true));
  EXPECT_EQ(test::contentsOf(path), "new");
  EXPECT_EQ(test::contentsOf(folder.path() + "/b"), "old");  // another file took its name
  struct stat status{};
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(PropertyListFile, LeavesNothingBehindAfterFailure) {
  std::filesystem::create_directories(folder.path() + "/a/full");
  for (bool atomically : {false, true}) {
    EXPECT_FALSE(host::writeFile(folder.path() + "/a", "text", atomically));
    EXPECT_FALSE(host::writeFile(folder.path() + "/none/a", "text", atomically));
    EXPECT_FALSE(host::writeFile("", "text", atomically));
  }
  ASSERT_EQ(mkfifo((folder.path() + "/pipe").c_str(), 0644), 0);
  EXPECT_FALSE(
      host::writeFile(folder.path() + "/pipe", "text", false));  // instead of waiting for a reader
  std::size_t entries = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path()))
    ++entries;
  EXPECT_EQ(entries, 2u);
}

}  // namespace
