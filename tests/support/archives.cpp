#include "support/archives.h"

namespace test {

NSObject* uid(std::uint32_t index) { return host::makeArchiveUid(index).autorelease(); }

NSObject* integer(long long value) { return NSNumber::numberWithLongLong(value); }

NSObject* real(double value) { return NSNumber::numberWithDouble(value); }

NSObject* boolean(bool value) { return NSNumber::numberWithBool(value); }

NSArray* list(const std::vector<NSObject*>& items) {
  return NSArray::arrayWithObjects(items.data(), items.size());
}

NSMutableDictionary* fields(const Entries& entries) {
  NSMutableDictionary* made = NSMutableDictionary::dictionary();
  for (const auto& [key, value] : entries) {
    if (value != nullptr) send(made, NSMutableDictionary::setObjectForKey, value, string(key));
  }
  return made;
}

NSObject* classNamed(const char* name) {
  return fields({{"$classname", string(name)}, {"$classes", list({string(name)})}});
}

NSData* binary(NSObject* tree) {
  return send<NSData*>(objc_getClass("NSPropertyListSerialization"),
                       "dataWithPropertyList:format:options:error:"_sel, tree, NSUInteger{200},
                       NSUInteger{0}, static_cast<NSObject**>(nullptr));
}

NSMutableDictionary* archiveAround(NSObject* objects, NSObject* root) {
  return fields({{"$archiver", string("NSKeyedArchiver")},
                 {"$version", integer(100000)},
                 {"$objects", objects},
                 {"$top", fields({{"root", root}})}});
}

NSData* archive(const std::vector<NSObject*>& objects, NSObject* root) {
  std::vector<NSObject*> all{string("$null")};
  all.insert(all.end(), objects.begin(), objects.end());
  return binary(archiveAround(list(all), root));
}

NSData* archiveOf(const char* className, const Entries& entries,
                  const std::vector<NSObject*>& others) {
  NSMutableDictionary* object = fields(entries);
  send(object, NSMutableDictionary::setObjectForKey, uid(2), string("$class"));
  std::vector<NSObject*> all{object, classNamed(className)};
  all.insert(all.end(), others.begin(), others.end());
  return archive(all);
}

NSData* nestedArrays(std::uint32_t count) {
  std::vector<NSObject*> objects{classNamed("NSArray")};
  for (std::uint32_t i = 0; i < count; ++i) {
    objects.push_back(fields({{"$class", uid(1)}, {"NS.objects", list({uid(i + 3)})}}));
  }
  objects.push_back(string("core"));
  return archive(objects, uid(2));
}

namespace {

std::vector<NamedArchive> brokenSurroundings() {
  NSArray* objects = list({string("$null"), string("text")});
  auto with = [&](const char* key, NSObject* value) {
    NSMutableDictionary* archive = archiveAround(objects);
    if (value == nullptr) send(archive, NSMutableDictionary::removeObjectForKey, string(key));
    else send(archive, NSMutableDictionary::setObjectForKey, value, string(key));
    return binary(archive);
  };
  return {{"empty", NSData::dataWithBytes("", 0)},
          {"no property list", NSData::dataWithBytes("archive", 7)},
          {"a property list of something else", binary(string("text"))},
          {"an empty dictionary", binary(fields({}))},
          {"no archiver", with("$archiver", nullptr)},
          {"another archiver", with("$archiver", string("NSArchiver"))},
          {"an archiver that is no text", with("$archiver", integer(1))},
          {"no version", with("$version", nullptr)},
          {"another version", with("$version", integer(100001))},
          {"a version that is no number", with("$version", string("100000"))},
          {"no top", with("$top", nullptr)},
          {"a top that is no dictionary", with("$top", uid(1))},
          {"a root that is no reference", with("$top", fields({{"root", string("text")}}))},
          {"a root that is a number", with("$top", fields({{"root", integer(1)}}))},
          {"a root out of range", with("$top", fields({{"root", uid(2)}}))},
          {"a root far out of range", with("$top", fields({{"root", uid(0xffffffffU)}}))},
          {"no objects", with("$objects", nullptr)},
          {"objects that are no array", with("$objects", fields({}))},
          {"an empty array of objects", with("$objects", list({}))}};
}

std::vector<NamedArchive> brokenObjects() {
  NSObject* color = classNamed("UIColor");
  auto object = [](NSObject* cls) { return fields({{"$class", cls}}); };
  return {
      {"a class as an object", archive({color})},
      {"an object without a class", archive({fields({{"UIRed", real(1)}})})},
      {"an array as an object", archive({list({uid(2)}), string("text")})},
      {"a reference as an object", archive({uid(2), string("text")})},
      {"a class out of range", archive({object(uid(3)), color})},
      {"a class that is no reference", archive({object(integer(2)), color})},
      {"a class that is a text", archive({object(uid(2)), string("UIColor")})},
      {"a class that is nil", archive({object(uid(0)), color})},
      {"a class that is the object itself", archive({object(uid(1))})},
      {"a class without a name", archive({object(uid(2)), fields({})})},
      {"a class whose name is a number",
       archive({object(uid(2)), fields({{"$classname", integer(1)}})})},
      {"a class that the process lacks", archiveOf("UINeverHeardOfIt", {})},
      {"a class without a name's letters", archiveOf("", {})},
      {"a class that does not decode", archiveOf("NSObject", {})},
      {"another one", archiveOf("NSNumber", {})},
      {"a red that is a text", archiveOf("UIColor", {{"UIRed", string("1")}})},
      {"a red that is a boolean", archiveOf("UIColor", {{"UIRed", boolean(true)}})},
      {"a red that is an object", archiveOf("UIColor", {{"UIRed", uid(3)}}, {real(1)})},
      {"an alpha that is data", archiveOf("UIColor", {{"UIAlpha", NSData::dataWithBytes("1", 1)}})},
      {"a white that is a list",
       archiveOf("UIColor", {{"UIColorComponentCount", integer(2)}, {"UIWhite", list({real(1)})}})},
      {"a fraction as a count", archiveOf("UIColor", {{"UIColorComponentCount", real(2.5)}})},
      {"a boolean as a count", archiveOf("UIColor", {{"UIColorComponentCount", boolean(true)}})},
      {"a large count", archiveOf("UIColor", {{"UIColorComponentCount", integer(1LL << 40)}})},
      {"a moment that is a text", archiveOf("NSDate", {{"NS.time", string("1")}})}};
}

std::vector<NamedArchive> brokenCollections() {
  NSObject* text = string("text");
  return {
      {"contents that are no list", archiveOf("NSArray", {{"NS.objects", text}})},
      {"contents that are a reference", archiveOf("NSArray", {{"NS.objects", uid(3)}}, {text})},
      {"contents in the list itself", archiveOf("NSArray", {{"NS.objects", list({text})}})},
      {"contents out of range", archiveOf("NSArray", {{"NS.objects", list({uid(3)})}})},
      {"contents that are nil", archiveOf("NSMutableArray", {{"NS.objects", list({uid(0)})}})},
      {"contents that cannot be decoded",
       archiveOf("NSArray", {{"NS.objects", list({uid(3), uid(2)})}}, {text})},
      {"an array in itself", archiveOf("NSArray", {{"NS.objects", list({uid(1)})}})},
      {"an array in one in itself",
       archiveOf("NSArray", {{"NS.objects", list({uid(3)})}},
                 {fields({{"$class", uid(2)}, {"NS.objects", list({uid(1)})}})})},
      {"a dictionary in itself",
       archiveOf("NSDictionary", {{"NS.keys", list({uid(3)})}, {"NS.objects", list({uid(1)})}},
                 {text})},
      {"keys without objects", archiveOf("NSDictionary", {{"NS.keys", list({uid(3)})}}, {text})},
      {"objects without keys",
       archiveOf("NSMutableDictionary", {{"NS.objects", list({uid(3)})}}, {text})},
      {"more keys than objects",
       archiveOf("NSDictionary",
                 {{"NS.keys", list({uid(3), uid(4)})}, {"NS.objects", list({uid(3)})}},
                 {text, text})},
      {"a key that is nil",
       archiveOf("NSDictionary", {{"NS.keys", list({uid(0)})}, {"NS.objects", list({uid(3)})}},
                 {text})},
      {"arrays nested too deeply", nestedArrays(513)},
      {"arrays nested much too deeply", nestedArrays(20000)}};
}

}  // namespace

std::vector<NamedArchive> brokenArchives() {
  std::vector<NamedArchive> all = brokenSurroundings();
  for (const auto& more : {brokenObjects(), brokenCollections()})
    all.insert(all.end(), more.begin(), more.end());
  return all;
}

NSData* richArchive() {
  NSObject* items[] = {rgb(0.1, 0.2, 0.3), UIColor::whiteColor(), string("text"),
                       integer(-7),        boolean(true),         real(0.5)};
  NSMutableDictionary* dictionary =
      fields({{"list", list({std::begin(items), std::end(items)})},
              {"date", NSDate::dateWithTimeIntervalSinceReferenceDate(1.5)},
              {"data", NSData::dataWithBytes("\0\1\2", 3)},
              {"color", items[0]}});
  NSObject* fixed = objc_autorelease(send<NSObject*>(dictionary, "copy"_sel));
  return NSKeyedArchiver::archivedDataWithRootObject(fixed);
}

NSData* colorArchive() { return NSKeyedArchiver::archivedDataWithRootObject(rgb(0.1, 0.2, 0.3)); }

std::string bytesOf(NSData* data) {
  return {static_cast<const char*>(send(data, NSData::bytes)), send(data, NSData::length)};
}

NSData* dataOf(const std::string& bytes) {
  return NSData::dataWithBytes(bytes.data(), bytes.size());
}

}  // namespace test
