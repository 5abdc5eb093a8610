// Keyed archives: their structure, and what is read back from them.
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "Foundation/NSCoder.h"
#include "Foundation/keyed_archive_uid.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "platform/CoreFoundation.h"
#include "support/hosted.h"

namespace {

using namespace std::literals;
using test::string;

/// One value of every kind, and references to others.
struct Coded : NSObject {
  void encodeWithCoder(NSCoder* coder) {
    coder->encodeObject(other, "other"_ns);
    coder->encodeObject(nullptr, "nothing"_ns);
    coder->encodeObject(name, "$class"_ns);
    send<void>(coder, "encodeBool:forKey:"_sel, true, "bool"_ns);
    send<void>(coder, "encodeInt:forKey:"_sel, -7, "int"_ns);
    send<void>(coder, "encodeInt64:forKey:"_sel, 1LL << 40, "int64"_ns);
    coder->encodeInteger(NSInteger{9}, "integer"_ns);
    coder->encodeFloat(0.1F, "float"_ns);
    coder->encodeDouble(0.1, "double"_ns);
    coder->encodeBytes("a\0b", 3, "bytes"_ns);
    coder->encodeInteger(NSInteger{10}, "integer"_ns);
    keyed = send<bool>(coder, "allowsKeyedCoding"_sel);
  }
  NSObject* initWithCoder(NSCoder* coder) {
    other = Strong<NSObject>::retain(coder->decodeObject("other"_ns));
    name = Strong<NSString>::retain(objc::as<NSString>(coder->decodeObject("$class"_ns)));
    EXPECT_TRUE(coder->containsValue("nothing"_ns));
    EXPECT_EQ(coder->decodeObject("nothing"_ns), nullptr);
    EXPECT_TRUE(send<bool>(coder, "decodeBoolForKey:"_sel, "bool"_ns));
    EXPECT_EQ(coder->decodeInt("int"_ns), -7);
    EXPECT_EQ(send<int>(coder, "decodeInt32ForKey:"_sel, "int"_ns), -7);
    EXPECT_EQ(send<long long>(coder, "decodeInt64ForKey:"_sel, "int64"_ns), 1LL << 40);
    EXPECT_EQ(send<NSInteger>(coder, "decodeIntegerForKey:"_sel, "integer"_ns), 10);
    EXPECT_EQ(coder->decodeFloat("float"_ns), 0.1F);
    EXPECT_EQ(coder->decodeDouble("double"_ns), 0.1);
    EXPECT_EQ(coder->decodeDouble("int"_ns), -7);
    NSUInteger length = 0;
    const auto* bytes = send<const unsigned char*>(coder, "decodeBytesForKey:returnedLength:"_sel,
                                                   "bytes"_ns, &length);
    EXPECT_EQ(std::string(bytes, bytes + length), std::string("a\0b", 3));
    expectAbsent(coder);
    keyed = send<bool>(coder, "allowsKeyedCoding"_sel);
    return this;
  }
  static void expectAbsent(NSCoder* coder) {
    NSString* key = "absent"_ns;
    EXPECT_FALSE(coder->containsValue(key));
    EXPECT_EQ(coder->decodeObject(key), nullptr);
    EXPECT_FALSE(send<bool>(coder, "decodeBoolForKey:"_sel, key));
    EXPECT_EQ(coder->decodeInt(key), 0);
    EXPECT_EQ(coder->decodeFloat(key), 0);
    EXPECT_EQ(coder->decodeDouble(key), 0);
    EXPECT_EQ(coder->decodeObjects(key), nullptr);
    NSUInteger length = 5;
    EXPECT_EQ(
        send<const unsigned char*>(coder, "decodeBytesForKey:returnedLength:"_sel, key, &length),
        nullptr);
    EXPECT_EQ(length, 0u);
  }

  Strong<NSObject> other;
  Strong<NSString> name;
  bool keyed;
};

}  // namespace

OBJC_CLASS(Coded, NSObject, objc::Ivar<"other", &Coded::other>, objc::Ivar<"name", &Coded::name>,
           objc::Ivar<"keyed", &Coded::keyed>,
           objc::Method<"encodeWithCoder:", &Coded::encodeWithCoder>,
           objc::Method<"initWithCoder:", &Coded::initWithCoder>)

namespace {

UIColor* red() { return test::rgb(1, 0, 0); }
UIColor* grey(CGFloat white, CGFloat alpha) {
  return send<UIColor*>(objc::classOf<UIColor>(), "colorWithWhite:alpha:"_sel, white, alpha);
}

struct FreePlist {
  void operator()(void* node) const { plist_free(node); }
};

class KeyedArchive : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  /// The archive's tree, as another reader sees it.
  void archive(NSObject* root) {
    NSData* data = NSKeyedArchiver::archivedDataWithRootObject(root);
    ASSERT_NE(data, nullptr);
    ASSERT_EQ(std::memcmp(send(data, NSData::bytes), "bplist00", 8), 0);
    plist_t parsed = nullptr;
    plist_from_bin(static_cast<const char*>(send(data, NSData::bytes)),
                   static_cast<std::uint32_t>(send(data, NSData::length)), &parsed);
    tree.reset(parsed);
    ASSERT_NE(tree, nullptr);
  }
  plist_t at(const char* key) { return plist_dict_get_item(tree.get(), key); }
  plist_t object(std::uint32_t index) { return plist_array_get_item(at("$objects"), index); }
  /// The tree below a node in short form: {key: value}, [item], "text", @reference.
  static std::string words(plist_t node) {
    char* text = nullptr;
    std::uint64_t number = 0;
    double real = 0;
    std::uint8_t flag = 0;
    switch (plist_get_node_type(node)) {
      case PLIST_STRING:
        plist_get_string_val(node, &text);
        break;
      case PLIST_UINT:
        plist_get_uint_val(node, &number);
        return std::to_string(static_cast<std::int64_t>(number));
      case PLIST_REAL:
        plist_get_real_val(node, &real);
        {
          char digits[32];
          std::snprintf(digits, sizeof digits, "%.9g", real);
          return digits;
        }
      case PLIST_BOOLEAN:
        plist_get_bool_val(node, &flag);
        return flag != 0 ? "yes" : "no";
      case PLIST_UID:
        plist_get_uid_val(node, &number);
        return "@" + std::to_string(number);
      case PLIST_DATA: {
        const char* bytes = plist_get_data_ptr(node, &number);
        return "<" + std::string(bytes, number) + ">";
      }
      case PLIST_ARRAY: {
        std::string all;
        for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i)
          all += (i == 0 ? "" : ", ") + words(plist_array_get_item(node, i));
        return "[" + all + "]";
      }
      case PLIST_DICT:
        return dictionaryWords(node);
      default:
        return "?";
    }
    const std::string result = "\"" + std::string(text) + "\"";
    std::free(text);
    return result;
  }
  static std::string dictionaryWords(plist_t node) {
    std::map<std::string, std::string> entries;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    while (true) {
      char* key = nullptr;
      plist_t value = nullptr;
      plist_dict_next_item(node, iterator, &key, &value);
      if (value == nullptr) break;
      entries[key] = words(value);
      std::free(key);
    }
    std::free(iterator);
    std::string all;
    for (const auto& [key, value] : entries) all += (all.empty() ? "" : ", ") + key + ": " + value;
    return "{" + all + "}";
  }

  static NSObject* roundTrip(NSObject* root) {
    return NSKeyedUnarchiver::unarchiveObjectWithData(
        NSKeyedArchiver::archivedDataWithRootObject(root));
  }

  std::unique_ptr<void, FreePlist> tree;
  objc::AutoreleasePool pool;
};

TEST_F(KeyedArchive, HasThePlatformsStructure) {
  archive(string("hello"));
  EXPECT_EQ(words(tree.get()),
            "{$archiver: \"NSKeyedArchiver\", $objects: [\"$null\", \"hello\"], $top: {root: @1}, "
            "$version: 100000}");
}

TEST_F(KeyedArchive, KeepsAColorAsThePlatformDoes) {
  archive(UIColor::colorWithRed(0.5, 0.25, 1, 0.75));
  EXPECT_EQ(words(object(1)),
            "{$class: @2, NSColorSpace: 2, NSRGB: <0.5 0.25 1>, UIAlpha: 0.75, UIBlue: 1, "
            "UIColorComponentCount: 4, UIGreen: 0.25, UIRed: 0.5}");
  EXPECT_EQ(words(object(2)), "{$classes: [\"UIColor\", \"NSObject\"], $classname: \"UIColor\"}");
  EXPECT_EQ(object(3), nullptr);
}

TEST_F(KeyedArchive, KeepsAGrey) {
  archive(grey(0.5, 0.25));
  EXPECT_EQ(words(object(1)),
            "{$class: @2, NSColorSpace: 4, NSWhite: <0.5>, UIAlpha: 0.25, "
            "UIColorComponentCount: 2, UIWhite: 0.5}");
}

TEST_F(KeyedArchive, BringsColorsBack) {
  for (UIColor* color : {UIColor::colorWithRed(0.5, 0.25, 1, 0.75), UIColor::whiteColor(),
                         grey(0.5, 0), UIColor::colorWithRed(0, 0, 0, 1)}) {
    NSObject* back = roundTrip(color);
    ASSERT_NE(back, nullptr);
    EXPECT_NE(back, color);
    EXPECT_TRUE(send(back, NSObject::isEqual, color));
  }
}

TEST_F(KeyedArchive, ColorsComeBackAsFloats) {
  auto* back = objc::as<UIColor>(roundTrip(UIColor::colorWithRed(0.1, 0.2, 0.7, 1.0 / 3)));
  ASSERT_NE(back, nullptr);
  CGFloat c[4] = {};
  send<bool>(back, "getRed:green:blue:alpha:"_sel, &c[0], &c[1], &c[2], &c[3]);
  EXPECT_EQ(c[0], static_cast<CGFloat>(0.1F));
  EXPECT_EQ(c[1], static_cast<CGFloat>(0.2F));
  EXPECT_EQ(c[2], static_cast<CGFloat>(0.7F));
  EXPECT_EQ(c[3], static_cast<CGFloat>(1.0F / 3));
}

TEST_F(KeyedArchive, CollectionsReferToTheirContents) {
  NSObject* items[] = {string("one"), NSNumber::numberWithBool(true)};
  archive(NSArray::arrayWithObjects(items, 2));
  EXPECT_EQ(
      words(at("$objects")),
      "[\"$null\", {$class: @4, NS.objects: [@2, @3]}, \"one\", yes, {$classes: [\"NSArray\", "
      "\"NSObject\"], $classname: \"NSArray\"}]");
  archive(NSDictionary::dictionaryWithObjectForKey(NSNumber::numberWithLongLong(-3), string("k")));
  EXPECT_EQ(words(at("$objects")),
            "[\"$null\", {$class: @4, NS.keys: [@2], NS.objects: [@3]}, \"k\", -3, {$classes: "
            "[\"NSDictionary\", \"NSObject\"], $classname: \"NSDictionary\"}]");
  archive(NSDate::dateWithTimeIntervalSinceReferenceDate(12.5));
  EXPECT_EQ(words(object(1)), "{$class: @2, NS.time: 12.5}");
}

TEST_F(KeyedArchive, BringsPlainValuesBack) {
  NSObject* values[] = {string(""),
                        string("Grün 色 😀"),
                        string("$null"),
                        NSNumber::numberWithBool(false),
                        NSNumber::numberWithLongLong(-5),
                        NSNumber::numberWithLongLong(1LL << 40),
                        NSNumber::numberWithDouble(0.1),
                        NSNumber::numberWithDouble(1e300),
                        NSData::dataWithBytes("\0\1", 2),
                        NSData::dataWithBytes("", 0),
                        NSDate::dateWithTimeIntervalSinceReferenceDate(-0.25),
                        NSMutableArray::array(),
                        NSMutableDictionary::dictionary()};
  for (NSObject* value : values) {
    NSObject* back = roundTrip(value);
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(send(back, NSObject::isEqual, value))
        << host::text(send(value, NSObject::description));
    EXPECT_EQ(CFGetTypeID(back), CFGetTypeID(value))
        << host::text(send(value, NSObject::description));
  }
  EXPECT_EQ(roundTrip(nullptr), nullptr);
  EXPECT_EQ(NSKeyedUnarchiver::unarchiveObjectWithData(nullptr), nullptr);
}

TEST_F(KeyedArchive, BringsCollectionsBack) {
  NSMutableDictionary* dictionary = NSMutableDictionary::dictionary();
  NSMutableArray* list = NSMutableArray::array();
  send(list, NSMutableArray::addObject, red());
  send(list, NSMutableArray::addObject, NSDate::dateWithTimeIntervalSinceReferenceDate(1));
  send(dictionary, NSMutableDictionary::setObjectForKey, list, string("list"));
  send(dictionary, NSMutableDictionary::setObjectForKey, string("text"),
       NSNumber::numberWithLongLong(3));
  NSObject* fixed = send<NSObject*>(dictionary, "copy"_sel);
  for (NSObject* value : {static_cast<NSObject*>(dictionary), objc_autorelease(fixed)}) {
    NSObject* back = roundTrip(value);
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(send(back, NSObject::isEqual, value));
    EXPECT_EQ(back->isa, value->isa);
  }
}

TEST_F(KeyedArchive, EveryTypedValue) {
  auto* coded = test::make<Coded>("Coded");
  coded->name = Strong<NSString>::retain(string("name"));
  auto* back = static_cast<Coded*>(roundTrip(coded));
  ASSERT_NE(back, nullptr);
  EXPECT_TRUE(send(back->name, NSString::isEqualToString, string("name")));
  EXPECT_TRUE(coded->keyed && back->keyed);
  archive(coded);
  EXPECT_EQ(words(object(1)),
            "{$$class: @2, $class: @3, bool: yes, bytes: <a\0b>, double: 0.1, float: "
            "0.100000001, int: -7, int64: 1099511627776, integer: 10, nothing: @0, other: "
            "@0}"sv);
}

TEST_F(KeyedArchive, StoresASharedObjectOnce) {
  UIColor* color = red();
  NSObject* items[] = {color, color, red()};
  archive(NSArray::arrayWithObjects(items, 3));
  EXPECT_EQ(words(plist_dict_get_item(object(1), "NS.objects")), "[@2, @2, @4]");
  EXPECT_EQ(plist_array_get_size(at("$objects")), 6u);  // null, array, two colours, two classes
  auto* back = static_cast<NSArray*>(roundTrip(NSArray::arrayWithObjects(items, 3)));
  EXPECT_EQ(send(back, NSArray::objectAtIndex, 0), send(back, NSArray::objectAtIndex, 1));
  EXPECT_NE(send(back, NSArray::objectAtIndex, 0), send(back, NSArray::objectAtIndex, 2));
}

TEST_F(KeyedArchive, FollowsCycles) {
  auto* first = test::make<Coded>("Coded");
  auto* second = test::make<Coded>("Coded");
  first->other = Strong<NSObject>::retain(second);
  second->other = Strong<NSObject>::retain(first);
  auto* back = static_cast<Coded*>(roundTrip(first));
  ASSERT_NE(back, nullptr);
  auto* other = static_cast<Coded*>(back->other.get());
  EXPECT_NE(other, back);
  EXPECT_EQ(other->other.get(), back);
  other->other = nullptr;
  second->other = nullptr;
  NSMutableArray* itself = NSMutableArray::array();
  send(itself, NSMutableArray::addObject, itself);
  auto* list = static_cast<NSArray*>(roundTrip(itself));
  EXPECT_EQ(send(list, NSArray::objectAtIndex, 0), list);
  for (NSArray* each : {static_cast<NSArray*>(itself), list})
    send<void>(each, "removeObjectAtIndex:"_sel, NSUInteger{0});
}

TEST_F(KeyedArchive, RefusesWhatCannotBeEncoded) {
  auto name = [](NSObject* root) {
    try {
      NSKeyedArchiver::archivedDataWithRootObject(root);
    } catch (const host::runtime::Exception& exception) {
      return exception.name();
    }
    return std::string();
  };
  NSObject* plain = test::make<NSObject>("NSObject");
  EXPECT_EQ(name(plain), "NSInvalidArgumentException");
  EXPECT_EQ(name(NSArray::arrayWithObjects(&plain, 1)), "NSInvalidArgumentException");
  EXPECT_EQ(name(host::makeString(std::string_view("a\0b", 3))), "NSInvalidArgumentException");
  // Nesting up to the limit and beyond it.
  NSObject* nested = string("core");
  for (int i = 0; i < 512; ++i) nested = NSArray::arrayWithObjects(&nested, 1);
  EXPECT_EQ(name(nested), "");
  NSObject* back = roundTrip(nested);
  for (int i = 0; i < 512; ++i) back = send(static_cast<NSArray*>(back), NSArray::objectAtIndex, 0);
  EXPECT_TRUE(send(back, NSObject::isEqual, string("core")));
  EXPECT_EQ(name(NSArray::arrayWithObjects(&nested, 1)), "NSInvalidArgumentException");
  for (int i = 0; i < 10000; ++i) nested = NSArray::arrayWithObjects(&nested, 1);
  EXPECT_EQ(name(nested), "NSInvalidArgumentException");
  // A coder that was made directly has no archive.
  auto* coder = test::make<NSCoder>("NSKeyedArchiver");
  EXPECT_THROW(coder->encodeFloat(1, "key"_ns), host::runtime::Exception);
  EXPECT_THROW(coder->encodeFloat(1, nullptr), host::runtime::Exception);
  EXPECT_THROW(test::make<NSCoder>("NSKeyedUnarchiver")->decodeFloat("key"_ns),
               host::runtime::Exception);
}

TEST_F(KeyedArchive, TypeNumbersTellKindsApart) {
  NSObject* values[] = {string("a"),
                        NSNumber::numberWithLongLong(1),
                        NSNumber::numberWithBool(true),
                        NSData::dataWithBytes("", 0),
                        NSDate::dateWithTimeIntervalSinceReferenceDate(0),
                        NSMutableArray::array(),
                        NSMutableDictionary::dictionary(),
                        host::makeArchiveUid(1).autorelease(),
                        red()};
  std::set<CFTypeID> types;
  for (NSObject* value : values) types.insert(CFGetTypeID(value));
  EXPECT_EQ(types.size(), std::size(values));
  EXPECT_EQ(CFGetTypeID("constant"_ns), CFGetTypeID(values[0]));
  EXPECT_EQ(CFGetTypeID(NSNumber::numberWithDouble(0.5)), CFGetTypeID(values[1]));
  EXPECT_EQ(CFGetTypeID(values[7]), _CFKeyedArchiverUIDGetTypeID());
  EXPECT_EQ(_CFKeyedArchiverUIDGetValue(host::makeArchiveUid(0xffffffffU).autorelease()),
            0xffffffffU);
}

TEST_F(KeyedArchive, SerializationReadsAndWritesReferences) {
  NSObject* uid = host::makeArchiveUid(300).autorelease();
  EXPECT_EQ(objc::as<NSNumber>(uid), nullptr);
  EXPECT_TRUE(send(uid, NSObject::isEqual, host::makeArchiveUid(300).autorelease()));
  EXPECT_FALSE(send(uid, NSObject::isEqual, host::makeArchiveUid(301).autorelease()));
  Class serialization = objc_getClass("NSPropertyListSerialization");
  NSObject* root = NSDictionary::dictionaryWithObjectForKey(uid, string("uid"));
  auto data = [&](NSUInteger format) {
    return send<NSData*>(serialization, "dataWithPropertyList:format:options:error:"_sel, root,
                         format, NSUInteger{0}, static_cast<NSObject**>(nullptr));
  };
  for (NSUInteger format : {100UL, 200UL}) {
    NSUInteger found = 0;
    NSObject* error = root;
    auto* back = objc::as<NSDictionary>(
        send<NSObject*>(serialization, "propertyListWithData:options:format:error:"_sel,
                        data(format), NSUInteger{0}, &found, &error));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(
        send(send(back, NSDictionary::objectForKey, string("uid")), NSObject::isEqual, uid));
    EXPECT_EQ(found, format);
    EXPECT_EQ(error, nullptr);
  }
  EXPECT_EQ(data(1), nullptr);
  root = test::make<NSObject>("NSObject");
  EXPECT_EQ(data(200), nullptr);
  EXPECT_EQ(NSPropertyListSerialization::propertyListWithData(NSData::dataWithBytes("x", 1), 0,
                                                              nullptr, nullptr),
            nullptr);
  EXPECT_EQ(NSPropertyListSerialization::propertyListWithData(nullptr, 0, nullptr, nullptr),
            nullptr);
}

}  // namespace
