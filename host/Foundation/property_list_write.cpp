// Objects to XML and binary property lists.
#include <cstring>
#include <string>
#include <string_view>

#include "Foundation/keyed_archive_uid.h"
#include "Foundation/property_list.h"
#include "Foundation/property_list_node.h"
#include "Foundation/text.h"
#include "objc/autorelease_pool.h"

namespace host {

namespace {

/// Builds the tree; empty results stand for something that a property list cannot hold.
class Writer {
 public:
  explicit Writer(std::size_t mostNodes) : mostNodes_(mostNodes) {}

  plist::Tree tree(NSObject* object) {
    // The limits also end a container that holds itself.
    if (object == nullptr || ++nodes_ > mostNodes_) return {};
    if (auto* string = objc::as<NSString>(object)) return stringNode(string);
    if (auto* number = objc::as<NSNumber>(object)) return numberNode(number);
    if (auto* date = objc::as<NSDate>(object))
      return plist::dateNode(send(date, NSDate::timeIntervalSinceReferenceDate));
    if (auto* data = objc::as<NSData>(object)) {
      return plist::Tree(plist_new_data(static_cast<const char*>(send(data, NSData::bytes)),
                                        send(data, NSData::length)));
    }
    if (isArchiveUid(object)) return plist::Tree(plist_new_uid(archiveUidIndex(object)));
    if (depth_ == kMaximumDepth) return {};
    ++depth_;
    plist::Tree result;
    if (auto* dictionary = objc::as<NSDictionary>(object)) result = dictionaryNode(dictionary);
    else if (auto* array = objc::as<NSArray>(object)) result = arrayNode(array);
    --depth_;
    return result;
  }

 private:
  /// Text with a zero in it would be cut short.
  static const char* wholeText(NSString* string) {
    const char* words = send(string, NSString::UTF8String);
    if (words == nullptr || std::strlen(words) != text(string).size()) return nullptr;
    return words;
  }

  static plist::Tree stringNode(NSString* string) {
    const char* words = wholeText(string);
    return plist::Tree(words == nullptr ? nullptr : plist_new_string(words));
  }

  static plist::Tree numberNode(NSNumber* number) {
    switch (*send<const char*>(number, "objCType"_sel)) {
      case 'B':
      case 'c':
        return plist::Tree(plist_new_bool(send(number, NSNumber::boolValue) ? 1 : 0));
      case 'd':
      case 'f':
        return plist::Tree(plist_new_real(send(number, NSNumber::doubleValue)));
      case 'Q':
        return plist::unsignedNode(send<unsigned long long>(number, "unsignedLongLongValue"_sel));
      default:
        return plist::Tree(
            plist_new_uint(static_cast<std::uint64_t>(send(number, NSNumber::longLongValue))));
    }
  }

  plist::Tree dictionaryNode(NSDictionary* dictionary) {
    plist::Tree result(plist_new_dict());
    NSArray* keys = send(dictionary, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      auto* key = objc::as<NSString>(send(keys, NSArray::objectAtIndex, i));
      const char* name = key == nullptr ? nullptr : wholeText(key);
      if (name == nullptr) return {};
      plist::Tree value = tree(send(dictionary, NSDictionary::objectForKey, key));
      if (value == nullptr) return {};
      plist_dict_set_item(result.get(), name, value.release());
    }
    return result;
  }

  plist::Tree arrayNode(NSArray* array) {
    plist::Tree result(plist_new_array());
    for (NSUInteger i = 0; i < send(array, NSArray::count); ++i) {
      plist::Tree item = tree(send(array, NSArray::objectAtIndex, i));
      if (item == nullptr) return {};
      plist_array_append_item(result.get(), item.release());
    }
    return result;
  }

  std::size_t mostNodes_;
  std::size_t depth_ = 0;
  std::size_t nodes_ = 0;
};

/// Has the parsing library write the tree, and frees what it wrote.
template <auto Write, auto Free>
std::optional<std::string> written(NSObject* root, std::size_t mostNodes) {
  struct FreeBytes {
    void operator()(char* bytes) const { Free(bytes); }
  };
  objc::AutoreleasePool pool;
  const plist::Tree tree = Writer(mostNodes).tree(root);
  if (tree == nullptr) return {};
  char* bytes = nullptr;
  std::uint32_t length = 0;
  Write(tree.get(), &bytes, &length);
  const std::unique_ptr<char, FreeBytes> owner(bytes);
  if (bytes == nullptr) return {};
  return std::string(bytes, length);
}

/// The parsing library gives a year as many digits as it needs; others read four.
void padYears(std::string& xml) {
  constexpr std::string_view kDate = "<date>";
  constexpr std::size_t kDigits = 4;
  for (std::size_t at = xml.find(kDate); at != xml.npos; at = xml.find(kDate, at)) {
    at += kDate.size();
    const std::size_t end = xml.find_first_not_of("0123456789", at);
    if (end != xml.npos && end - at < kDigits) xml.insert(at, kDigits - (end - at), '0');
  }
}

}  // namespace

std::optional<std::string> xmlFromPropertyList(NSObject* root) {
  auto xml = written<plist_to_xml, plist_to_xml_free>(root, kMaximumNodes);
  if (xml) padYears(*xml);
  return xml;
}

std::optional<std::string> binaryFromPropertyList(NSObject* root) {
  return written<plist_to_bin, plist_to_bin_free>(root, kMaximumBinaryNodes);
}

}  // namespace host
