// Property lists that are damaged, or made to cause damage: nothing crashes, hangs or leaks.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "Foundation/property_list.h"
#include "objc/autorelease_pool.h"
#include "support/property_lists.h"

namespace {

std::string repeated(std::string_view words, std::size_t count) {
  std::string text;
  text.reserve(words.size() * count);
  while (count-- > 0) text += words;
  return text;
}

std::size_t depth(NSObject* object) {
  std::size_t deepest = 0;
  if (auto* array = objc::as<NSArray>(object)) {
    for (NSUInteger i = 0; i < send(array, NSArray::count); ++i)
      deepest = std::max(deepest, depth(send(array, NSArray::objectAtIndex, i)));
    return deepest + 1;
  }
  if (auto* dictionary = objc::as<NSDictionary>(object)) {
    NSArray* keys = send(dictionary, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      deepest = std::max(deepest, depth(send(dictionary, NSDictionary::objectForKey,
                                             send(keys, NSArray::objectAtIndex, i))));
    }
    return deepest + 1;
  }
  return 0;
}

bool isRead(const std::string& bytes) {
  objc::AutoreleasePool pool;
  return host::propertyListFromData(bytes) != nullptr;
}

/// Reads the bytes; the result is within the limits and can be written.
bool survives(const std::string& bytes) {
  objc::AutoreleasePool pool;
  NSObject* object = host::propertyListFromData(bytes);
  if (object == nullptr) return false;
  EXPECT_LE(depth(object), host::kMaximumDepth + 1);
  host::xmlFromPropertyList(object);
  return true;
}

/// Nothing that is refused may take long. The limit is generous, because sanitizers are slow.
class Seconds {
 public:
  ~Seconds() { EXPECT_LT(std::chrono::steady_clock::now() - start_, std::chrono::seconds(60)); }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

TEST(DamagedPropertyList, CutShort) {
  for (const std::string& whole :
       {std::string(test::kXmlPropertyList), test::binaryPropertyList()}) {
    ASSERT_TRUE(survives(whole));
    for (std::size_t length = 0; length < whole.size(); ++length) survives(whole.substr(0, length));
  }
}

/// The last tag must be there too, with nothing but comments before it.
TEST(DamagedPropertyList, CutWithinTheLastTag) {
  for (std::string_view contents :
       {"<dict><key>a</key><true/></dict>", "<dict/>", "<string>a</string>", "<array></array>"}) {
    const std::string open = "<plist version=\"1.0\">" + std::string(contents);
    for (std::string_view end : {"</plist>", " \n</plist >", "<!-- a --><?b?></plist>\n"})
      EXPECT_TRUE(isRead(open + std::string(end))) << open << end;
    for (std::string_view end : {"", "\n", "<", "</", "</p", "</plist", "</plist ", "</plists>",
                                 "<!-- a", "<?b", "<string>b</string></plist>", "b</plist>"})
      EXPECT_FALSE(isRead(open + std::string(end))) << open << end;
  }
  // A list that was never opened needs no such tag.
  EXPECT_TRUE(isRead("<dict></dict>"));
}

TEST(DamagedPropertyList, Utf16) {
  const std::string whole("\xff\xfe<\0t\0r\0u\0e\0/\0>\0", 16);
  EXPECT_TRUE(isRead(whole));
  EXPECT_FALSE(isRead(whole + "\n")) << "half a unit";
  for (std::string_view unit : {std::string_view("\x3d\xd8", 2), std::string_view("\x00\xde", 2)}) {
    const std::string open("\xff\xfe<\0s\0t\0r\0i\0n\0g\0>\0", 18);
    const std::string close("<\0/\0s\0t\0r\0i\0n\0g\0>\0", 18);
    EXPECT_TRUE(isRead(open + close));
    EXPECT_FALSE(isRead(open + std::string(unit) + close)) << "half a pair";
  }
  EXPECT_FALSE(isRead("\xff\xfe"));
  EXPECT_FALSE(isRead("\xfe\xff" + whole.substr(2))) << "the other order";
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(isRead(whole.substr(0, length)));
  // Three bytes each in UTF-8: the result has the same limit.
  std::string large("\xff\xfe<\0s\0t\0r\0i\0n\0g\0>\0", 18);
  for (std::size_t i = 0; i < host::kMaximumBytes / 2 - 20; ++i) large += "\x72\x82";
  large += std::string("<\0/\0s\0t\0r\0i\0n\0g\0>\0", 18);
  EXPECT_LE(large.size(), host::kMaximumBytes);
  EXPECT_FALSE(isRead(large));
}

TEST(DamagedPropertyList, EveryByteChanged) {
  for (const std::string& whole :
       {std::string(test::kXmlPropertyList), test::binaryPropertyList()}) {
    for (std::size_t i = 0; i < whole.size(); ++i) {
      for (char replacement : {'\0', '\xff', '<', '/', '"', static_cast<char>(whole[i] + 1)}) {
        std::string bytes = whole;
        bytes[i] = replacement;
        survives(bytes);
      }
    }
  }
}

/// Some bytes changed, removed, or copied to another place.
std::string mutated(std::string bytes, std::mt19937& random) {
  const auto below = [&](std::size_t limit) {
    return static_cast<std::size_t>(random() % std::max<std::size_t>(limit, 1));
  };
  for (std::size_t changes = 1 + below(4); changes > 0 && !bytes.empty(); --changes) {
    const std::size_t at = below(bytes.size());
    const std::size_t length = below(std::min<std::size_t>(bytes.size() - at, 40));
    switch (random() % 4) {
      case 0:
        bytes[at] = static_cast<char>(random());
        break;
      case 1:
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << (random() % 8)));
        break;
      case 2:
        bytes.erase(at, length);
        break;
      case 3:
        bytes.insert(below(bytes.size()), bytes.substr(at, length));
        break;
    }
  }
  return bytes;
}

TEST(DamagedPropertyList, Mutated) {
  std::mt19937 random(20150916);
  std::size_t read = 0;
  for (const std::string& whole :
       {std::string(test::kXmlPropertyList), test::binaryPropertyList()}) {
    for (int i = 0; i < 20000; ++i) read += survives(mutated(whole, random)) ? 1 : 0;
  }
  EXPECT_GT(read, 1000u);  // otherwise the changes only tried the first checks
}

TEST(DamagedPropertyList, MutatedNearTheDepthLimit) {
  std::mt19937 random(1);
  const std::string deep = "<plist><!-- \" --><array>" +
                           repeated("<array><string>a</string>", host::kMaximumDepth - 1) +
                           repeated("</array>", host::kMaximumDepth) + "</plist>";
  ASSERT_TRUE(survives(deep));
  for (int i = 0; i < 2000; ++i) survives(mutated(deep, random));
}

TEST(DamagedPropertyList, RandomBytes) {
  std::mt19937 random(7);
  for (int i = 0; i < 5000; ++i) {
    std::string bytes(random() % 300, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
    survives(bytes);
    survives("bplist00" + bytes);
    survives("<plist><dict>" + bytes);
  }
}

TEST(DamagedPropertyList, DeepXml) {
  Seconds limit;
  for (std::string_view tag : {"array", "dict"}) {
    const std::string open = "<" + std::string(tag) + ">" + (tag == "dict" ? "<key>a</key>" : "");
    const std::string close = "</" + std::string(tag) + ">";
    EXPECT_FALSE(
        survives("<plist>" + repeated(open, 200000) + repeated(close, 200000) + "</plist>"));
    EXPECT_FALSE(survives("<plist>" + repeated(open, 200000)));
  }
  const auto nested = [](std::size_t depth) {
    return "<plist>" + repeated("<array>", depth) + repeated("</array>", depth) + "</plist>";
  };
  EXPECT_TRUE(survives(nested(host::kMaximumDepth)));
  EXPECT_FALSE(survives(nested(host::kMaximumDepth + 1)));
  survives(repeated("<plist>", 200000));
}

/// Ways to hide tags from a scanner that is less careful than the parser.
TEST(DamagedPropertyList, DeepXmlInDisguise) {
  const std::string deep = repeated("<array>", 200000);
  for (std::string_view prefix : {"<array/><array></array>",
                                  "<array a=\"",
                                  "<array a=\">",
                                  "<array a='\"'>",
                                  "<?a \"?>\" ?>",
                                  "<?a \"?>",
                                  "<!---->",
                                  "<!-->-->",
                                  "<!--->",
                                  "<!DOCTYPE a \">\">",
                                  "<!DOCTYPE a [ <!-- ]> -->",
                                  "<!DOCTYPE \"[\">",
                                  "<![CDATA[",
                                  "<array><string><![CDATA[</string>]]></string>",
                                  "<array><string><!--</string>--></string>",
                                  "<array><true></true>",
                                  "<array><true >\n</true >",
                                  "<array/ ><array>",
                                  "<array / >",
                                  "<array\n/>",
                                  "<array></array ><array>",
                                  "<plist><array/></plist><plist>",
                                  "<array><key>a</key><dict><key>",
                                  "<array>\f"}) {
    for (std::string_view suffix : {"", "\"", "-->", "]]>", "\"-->]]></string></key>"}) {
      survives(std::string(prefix) + deep + std::string(suffix));
      survives("<plist>" + std::string(prefix) + std::string(suffix) + deep);
    }
  }
}

TEST(DamagedPropertyList, DeepBinary) {
  std::vector<std::string> objects;
  for (std::uint64_t i = 1; i < 60000; ++i) objects.push_back(test::binaryArray({i}));
  objects.push_back(test::binaryArray({}));
  EXPECT_FALSE(survives(test::binaryFromObjects(objects)));
  std::vector<std::string> deepest;
  for (std::uint64_t i = 1; i < host::kMaximumDepth; ++i) deepest.push_back(test::binaryArray({i}));
  deepest.push_back(test::binaryArray({}));
  EXPECT_TRUE(survives(test::binaryFromObjects(deepest)));
}

/// The depth is counted along the deepest path, even where a shorter path was there before.
TEST(DamagedPropertyList, DeepBinaryThroughSharedParts) {
  std::vector<std::string> objects{test::binaryArray({100, 1})};
  for (std::uint64_t i = 2; i <= 200; ++i) objects.push_back(test::binaryArray({i}));
  objects.push_back(test::binaryArray({}));
  EXPECT_FALSE(survives(test::binaryFromObjects(objects)));
}

TEST(DamagedPropertyList, BinaryThatHoldsItself) {
  EXPECT_FALSE(survives(test::binaryFromObjects({test::binaryArray({0})})));
  EXPECT_FALSE(survives(test::binaryFromObjects(
      {test::binaryArray({1}), test::binaryArray({2}), test::binaryArray({1})})));
  // A dictionary that is its own key and value.
  EXPECT_FALSE(survives(test::binaryFromObjects({std::string("\xd1\0\0\0\0", 5)})));
}

TEST(DamagedPropertyList, BinaryThatExpands) {
  Seconds limit;
  for (std::uint64_t width : {2, 10, 1000}) {
    std::vector<std::string> objects;
    for (std::uint64_t i = 1; i <= 60; ++i)
      objects.push_back(test::binaryArray(std::vector<std::uint64_t>(width, i)));
    objects.push_back(test::binaryArray({}));
    EXPECT_FALSE(survives(test::binaryFromObjects(objects)));
  }
  // A long text, many times.
  const std::string data = "\x4f\x12" + test::bigEndian(1 << 20, 4) + std::string(1 << 20, 'x');
  EXPECT_TRUE(survives(
      test::binaryFromObjects({test::binaryArray(std::vector<std::uint64_t>(10, 1)), data})));
  EXPECT_FALSE(survives(
      test::binaryFromObjects({test::binaryArray(std::vector<std::uint64_t>(60000, 1)), data})));
}

TEST(DamagedPropertyList, BinaryWithFalseCounts) {
  for (int kind : {0x4, 0x5, 0x6, 0xa, 0xc, 0xd}) {
    for (std::uint64_t count :
         {std::uint64_t{1} << 16, std::uint64_t{1} << 31, std::uint64_t{1} << 32,
          std::uint64_t{1} << 62, std::uint64_t{1} << 63, ~std::uint64_t{0}}) {
      const std::string object =
          static_cast<char>(kind << 4 | 0xf) + ("\x13" + test::bigEndian(count, 8));
      EXPECT_FALSE(survives(test::binaryFromObjects({object})));
    }
    for (int size = 0; size < 16; ++size) {
      survives(test::binaryFromObjects(
          {{static_cast<char>(kind << 4 | 0xf), static_cast<char>(0x10 | size)}}));
    }
  }
}

TEST(DamagedPropertyList, EveryTrailer) {
  const std::string whole = test::binaryPropertyList();
  for (std::size_t i = whole.size() - 32; i < whole.size(); ++i) {
    for (int value = 0; value < 256; ++value) {
      std::string bytes = whole;
      bytes[i] = static_cast<char>(value);
      survives(bytes);
    }
  }
}

/// A parser that asserts on such a key would end the process.
TEST(DamagedPropertyList, KeyWithAZeroInIt) {
  const std::string dictionary("\xd1\0\1\0\2", 5);
  EXPECT_FALSE(
      survives(test::binaryFromObjects({dictionary, std::string("\x62\0a\0\0", 5), "\x09"})));
  EXPECT_TRUE(
      survives(test::binaryFromObjects({dictionary, std::string("\x62\0a\0b", 5), "\x09"})));
  survives(test::binaryFromObjects({dictionary,
                                    std::string("\x52"
                                                "a\0",
                                                3),
                                    "\x09"}));
  survives(test::binaryFromObjects({std::string("\x62\0a\0\0", 5)}));
  survives(std::string("<plist><dict><key>a\0b</key><true/></dict></plist>", 49));
}

TEST(DamagedPropertyList, XmlThatKeepsTheParserBusy) {
  Seconds limit;
  // Each entity moves the rest of the text.
  isRead("<plist><string>" + repeated("&amp;", 3000000) + "</string></plist>");
  isRead("<plist><array>" + repeated("<string>" + repeated("&amp;", 1000) + "</string>", 3000) +
         "</array></plist>");
  // Each key is searched among those before it; these end alike, which defeats hashing.
  std::string keys;
  for (int i = 0; i < 400000; ++i) keys += "<key>" + std::to_string(i) + "zzzzzzzz</key><true/>";
  isRead("<plist><dict>" + keys + "</dict></plist>");
  EXPECT_FALSE(
      isRead("<plist><array>" + repeated("<true/>", host::kMaximumNodes) + "</array></plist>"));
}

TEST(DamagedPropertyList, OddDates) {
  for (const char* words : {"", "2015", "2015-13-01T00:00:00Z", "9999999999-01-01T00:00:00Z",
                            "-1-01-01T00:00:00Z", "2015-00-00T99:99:99Z", "0000-01-01T00:00:00Z",
                            "9999-12-31T23:59:59Z", "no date at all, this"}) {
    survives("<plist><dict><key>a</key><date>" + std::string(words) + "</date></dict></plist>");
    survives("<plist><array><date>2015-<!-- -->" + std::string(words) + "</date></array></plist>");
  }
}

}  // namespace
