// Declared properties: those of classes and categories, and their attributes.
#include <algorithm>
#include <cstring>
#include <string>

#include "internal.h"
#include "lists.h"

namespace host::runtime {

namespace {

/// What objc_property_attribute_t is: "T", "i". Attributes with longer names are in quotes.
struct Attribute {
  const char* name;
  const char* value;
};

struct AttributeText {
  std::string name, value;
};

/// The end of an attribute's value: a comma that is not inside a class's name or a structure.
std::size_t endOfValue(std::string_view text, std::size_t at) {
  bool isQuoted = false;
  for (; at < text.size() && (isQuoted || text[at] != ','); ++at)
    if (text[at] == '"') isQuoted = !isQuoted;
  return at;
}

std::vector<AttributeText> parseAttributes(std::string_view text) {
  std::vector<AttributeText> attributes;
  for (std::size_t at = 0; at < text.size();) {
    AttributeText one;
    if (text[at] == '"') {
      const std::size_t close = text.find('"', at + 1);
      one.name = text.substr(at + 1, close == text.npos ? text.npos : close - at - 1);
      at = close == text.npos ? text.size() : close + 1;
    } else {
      one.name = text.substr(at++, 1);
    }
    const std::size_t end = endOfValue(text, at);
    one.value = text.substr(at, end - at);
    attributes.push_back(std::move(one));
    at = end + 1;
  }
  return attributes;
}

objc::PropertyEntry* ownProperty(Class cls, const char* name) {
  const auto& properties = rw(cls)->properties;
  const auto found = std::ranges::find_if(properties, [&](const objc::PropertyEntry* one) {
    return std::strcmp(one->name, name) == 0;
  });
  return found == properties.end() ? nullptr : *found;
}

}  // namespace

std::string joinAttributes(const void* list, unsigned count) {
  const auto* attributes = static_cast<const Attribute*>(list);
  std::string text;
  for (unsigned i = 0; i < count; ++i) {
    const std::string name = attributes[i].name;
    const std::string value = attributes[i].value == nullptr ? "" : attributes[i].value;
    if (!text.empty()) text += ',';
    text.append(name.size() == 1 ? name : '"' + name + '"').append(value);
  }
  return text;
}

/// A category's come before those that the class has already.
void addProperties(Class cls, void* list) {
  std::vector<objc::PropertyEntry*> added;
  forEachEntry<objc::PropertyEntry>(list,
                                    [&](objc::PropertyEntry& entry) { added.push_back(&entry); });
  auto& properties = rw(cls)->properties;
  properties.insert(properties.begin(), added.begin(), added.end());
}

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

HOST_EXPORT objc::PropertyEntry* class_getProperty(Class cls, const char* name) {
  if (name == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  for (; cls != nullptr; cls = cls->superclass)
    if (auto* own = ownProperty(cls, name)) return own;
  return nullptr;
}

HOST_EXPORT objc::PropertyEntry** class_copyPropertyList(Class cls, unsigned* count) {
  std::scoped_lock guard(lock());
  return copyList(cls == nullptr ? std::vector<objc::PropertyEntry*>() : rw(cls)->properties,
                  count);
}

HOST_EXPORT bool class_addProperty(Class cls, const char* name, const Attribute* attributes,
                                   unsigned count) {
  if (cls == nullptr || name == nullptr) return false;
  std::scoped_lock guard(lock());
  if (ownProperty(cls, name) != nullptr) return false;
  rw(cls)->properties.push_back(
      new objc::PropertyEntry{keptName(name), keptName(joinAttributes(attributes, count))});
  return true;
}

HOST_EXPORT void class_replaceProperty(Class cls, const char* name, const Attribute* attributes,
                                       unsigned count) {
  if (cls == nullptr || name == nullptr) return;
  std::scoped_lock guard(lock());
  auto* own = ownProperty(cls, name);
  if (own == nullptr) class_addProperty(cls, name, attributes, count);
  else own->attributes = keptName(joinAttributes(attributes, count));
}

HOST_EXPORT const char* property_getName(const objc::PropertyEntry* property) {
  return property == nullptr ? nullptr : property->name;
}
HOST_EXPORT const char* property_getAttributes(const objc::PropertyEntry* property) {
  return property == nullptr ? nullptr : property->attributes;
}

HOST_EXPORT char* property_copyAttributeValue(const objc::PropertyEntry* property,
                                              const char* name) {
  if (property == nullptr || name == nullptr) return nullptr;
  for (const AttributeText& one : parseAttributes(property->attributes))
    if (one.name == name) return copyText(one.value);
  return nullptr;
}

/// One block of memory: the list, then its texts.
HOST_EXPORT Attribute* property_copyAttributeList(const objc::PropertyEntry* property,
                                                  unsigned* count) {
  const auto parsed =
      property == nullptr ? std::vector<AttributeText>() : parseAttributes(property->attributes);
  if (count != nullptr) *count = static_cast<unsigned>(parsed.size());
  if (parsed.empty()) return nullptr;
  std::size_t bytes = (parsed.size() + 1) * sizeof(Attribute);
  for (const AttributeText& one : parsed) bytes += one.name.size() + one.value.size() + 2;
  void* memory = std::calloc(1, bytes);
  if (memory == nullptr) throw std::bad_alloc();
  auto* attributes = static_cast<Attribute*>(memory);
  auto* text = reinterpret_cast<char*>(attributes + parsed.size() + 1);
  const auto store = [&](const std::string& word) {
    char* start = text;
    text = stpcpy(text, word.c_str()) + 1;
    return start;
  };
  for (std::size_t i = 0; i < parsed.size(); ++i) {
    attributes[i].name = store(parsed[i].name);
    attributes[i].value = store(parsed[i].value);
  }
  return attributes;
}
}
