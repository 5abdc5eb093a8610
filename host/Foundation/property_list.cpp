#include "Foundation/property_list.h"

#include <cstdint>
#include <cstdlib>

#include "Foundation/file_contents.h"
#include "Foundation/keyed_archive_uid.h"
#include "Foundation/property_list_guard.h"
#include "Foundation/property_list_node.h"
#include "Foundation/text.h"
#include "Foundation/utf16.h"
#include "objc/autorelease_pool.h"

namespace host {

namespace {

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Allocated = std::unique_ptr<T, FreeMemory>;

NSNumber* integer(plist_t node) {
  std::uint64_t value = 0;
  plist_get_uint_val(node, &value);
  const auto bits = static_cast<long long>(value);
  if (bits < 0 && plist::isUnsigned(node)) {
    return send<NSNumber*>(objc::classOf<NSNumber>(), "numberWithUnsignedLongLong:"_sel,
                           static_cast<unsigned long long>(value));
  }
  return NSNumber::numberWithLongLong(bits);
}

NSNumber* real(plist_t node) {
  double value = 0;
  plist_get_real_val(node, &value);
  return NSNumber::numberWithDouble(value);
}

NSNumber* boolean(plist_t node) {
  std::uint8_t value = 0;
  plist_get_bool_val(node, &value);
  return NSNumber::numberWithBool(value != 0);
}

NSData* data(plist_t node) {
  std::uint64_t length = 0;
  const char* bytes = plist_get_data_ptr(node, &length);
  return NSData::dataWithBytes(bytes == nullptr ? "" : bytes, bytes == nullptr ? 0 : length);
}

/// Nil for text that is not UTF-8.
Strong<NSObject> string(plist_t node) {
  std::uint64_t length = 0;
  const char* words = plist_get_string_ptr(node, &length);
  if (words == nullptr) return nullptr;
  return Strong<NSObject>::adopt(makeOwnedString({words, length}).leak());
}

/// Nil for a number that cannot occur in an archive.
Strong<NSObject> uid(plist_t node) {
  std::uint64_t index = 0;
  plist_get_uid_val(node, &index);
  if (index > UINT32_MAX) return nullptr;
  return makeArchiveUid(static_cast<std::uint32_t>(index));
}

/// Objects from the parsing library's nodes. Its recursion ends at kMaximumDepth: the guard has
/// seen to it.
class Reader {
 public:
  explicit Reader(PropertyListFormat format) : format_(format) {}

  /// Nil for what has no object: such an entry is left out.
  Strong<NSObject> object(plist_t node) {
    switch (plist_get_node_type(node)) {
      case PLIST_DICT:
        if (const auto index = referenceInXml(node)) return makeArchiveUid(*index);
        return Strong<NSObject>::retain(dictionary(node));
      case PLIST_ARRAY:
        return Strong<NSObject>::retain(array(node));
      case PLIST_STRING:
      case PLIST_KEY:
        return string(node);
      case PLIST_UINT:
        return Strong<NSObject>::retain(integer(node));
      case PLIST_REAL:
        return Strong<NSObject>::retain(real(node));
      case PLIST_BOOLEAN:
        return Strong<NSObject>::retain(boolean(node));
      case PLIST_DATA:
        return Strong<NSObject>::retain(data(node));
      case PLIST_DATE:
        if (const std::optional<double> moment = plist::seconds(node)) {
          return Strong<NSObject>::retain(NSDate::dateWithTimeIntervalSinceReferenceDate(*moment));
        }
        return nullptr;
      case PLIST_UID:
        return uid(node);
      default:
        return nullptr;
    }
  }

 private:
  NSMutableDictionary* dictionary(plist_t node) {
    auto* result = NSMutableDictionary::dictionaryWithCapacity(plist_dict_get_size(node));
    plist_dict_iter raw = nullptr;
    plist_dict_new_iter(node, &raw);
    const Allocated<void> iterator(raw);
    while (true) {
      char* rawKey = nullptr;
      plist_t value = nullptr;
      plist_dict_next_item(node, raw, &rawKey, &value);
      const Allocated<char> key(rawKey);
      if (value == nullptr) return result;
      if (key == nullptr) continue;
      const Strong<NSString> name = makeOwnedString(rawKey);
      if (const Strong<NSObject> contents = object(value);
          contents.get() != nullptr && name.get() != nullptr) {
        send(result, NSMutableDictionary::setObjectForKey, contents, name.get());
      }
    }
  }

  NSMutableArray* array(plist_t node) {
    NSMutableArray* result = NSMutableArray::array();
    plist_array_iter raw = nullptr;
    plist_array_new_iter(node, &raw);
    const Allocated<void> iterator(raw);
    while (true) {
      plist_t item = nullptr;
      plist_array_next_item(node, raw, &item);
      if (item == nullptr) return result;
      if (const Strong<NSObject> contents = object(item); contents.get() != nullptr)
        send(result, NSMutableArray::addObject, contents);
    }
  }

  /// The form that references take in XML, which the library does not know when it reads.
  std::optional<std::uint32_t> referenceInXml(plist_t dictionary) const {
    if (format_ != PropertyListFormat::xml || plist_dict_get_size(dictionary) != 1) return {};
    plist_t index = plist_dict_get_item(dictionary, "CF$UID");
    std::uint64_t value = 0;
    if (index == nullptr || plist_get_node_type(index) != PLIST_UINT) return {};
    plist_get_uint_val(index, &value);
    if (value > UINT32_MAX) return {};
    return static_cast<std::uint32_t>(value);
  }

  PropertyListFormat format_;
};

plist::Tree parse(std::string_view bytes, PropertyListFormat format) {
  plist_t root = nullptr;
  switch (format) {
    case PropertyListFormat::refused:
      break;
    case PropertyListFormat::binary:
      plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
      break;
    case PropertyListFormat::xml:
      bytes = withoutPreamble(bytes);
      plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
      break;
  }
  return plist::Tree(root);
}

}  // namespace

NSObject* propertyListFromData(std::string_view bytes) {
  std::optional<std::string> converted;
  if (isUtf16(bytes) && bytes.size() <= kMaximumBytes) {
    converted = utf8FromUtf16(bytes);
    if (!converted) return nullptr;
    bytes = *converted;
  }
  Strong<NSObject> result;
  {
    objc::AutoreleasePool pool;
    const PropertyListFormat format = guardPropertyList(bytes);
    if (const plist::Tree tree = parse(bytes, format)) result = Reader(format).object(tree.get());
  }
  return result.autorelease();
}

NSObject* propertyListFromFile(const std::string& path) {
  const std::optional<std::string> contents = fileContents(path, kMaximumBytes);
  return contents ? propertyListFromData(*contents) : nullptr;
}

}  // namespace host
