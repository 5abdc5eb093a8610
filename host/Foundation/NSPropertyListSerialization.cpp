// Property lists in memory.
#include <optional>
#include <string>

#include "Foundation/property_list.h"
#include "Foundation/property_list_guard.h"
#include "objc/define.h"

namespace {

constexpr NSUInteger kXmlFormat = 100;
constexpr NSUInteger kBinaryFormat = 200;

NSData* dataOf(const std::optional<std::string>& bytes) {
  return bytes ? NSData::dataWithBytes(bytes->data(), bytes->size()) : nullptr;
}

/// There are no error objects here: a caller that asks for one gets nil.
struct PropertyListSerialization : NSObject {
  static NSObject* read(NSData* data, NSUInteger, NSUInteger* format, NSObject** error) {
    if (error != nullptr) *error = nullptr;
    if (objc::as<NSData>(data) == nullptr) return nullptr;
    const std::string_view bytes(static_cast<const char*>(send(data, NSData::bytes)),
                                 send(data, NSData::length));
    NSObject* tree = host::propertyListFromData(bytes);
    if (tree != nullptr && format != nullptr)
      *format = host::isBinaryPropertyList(bytes) ? kBinaryFormat : kXmlFormat;
    return tree;
  }

  /// Nil for another format, and for an object that a property list cannot hold.
  static NSData* write(NSObject* tree, NSUInteger format, NSUInteger, NSObject** error) {
    if (error != nullptr) *error = nullptr;
    if (format == kBinaryFormat) return dataOf(host::binaryFromPropertyList(tree));
    return format == kXmlFormat ? dataOf(host::xmlFromPropertyList(tree)) : nullptr;
  }
};

}  // namespace

OBJC_CLASS_NAMED(NSPropertyListSerialization, NSObject, PropertyListSerialization, NSObject,
                 objc::ClassMethod<"propertyListWithData:options:format:error:",
                                   &PropertyListSerialization::read>,
                 objc::ClassMethod<"dataWithPropertyList:format:options:error:",
                                   &PropertyListSerialization::write>)
