// Protocols: one object for each name, and which classes adopt them.
#include <algorithm>
#include <cstring>

#include "internal.h"
#include "lists.h"
#include "objc/define.h"

namespace {

/// A protocol as an object: a binary's, or one that was made at run time. Neither is ever freed.
struct ProtocolObject : NSObject {
  ProtocolObject* keep() { return this; }
  void let() {}
};

}  // namespace

OBJC_CLASS_NAMED(Protocol, NSObject, ProtocolObject, NSObject,
                 objc::Method<"retain", &ProtocolObject::keep>,
                 objc::Method<"release", &ProtocolObject::let>,
                 objc::Method<"autorelease", &ProtocolObject::keep>,
                 objc::Method<"copy", &ProtocolObject::keep>)

namespace host::runtime {

namespace {

using Method = objc::MethodEntry<IMP>;
/// What objc_method_description is: two words.
struct Description {
  SEL name;
  const char* types;
};

/// What the run-time knows of a protocol.
struct ProtocolRw {
  std::vector<objc_protocol*> protocols;
  std::vector<Description> methods[2][2];           ///< by required, then by of instances
  std::vector<objc::PropertyEntry*> properties[2];  ///< by of instances
  bool isRegistered = true;
};

struct Protocols {
  std::unordered_map<std::string_view, objc_protocol*> byName;
  std::unordered_map<const objc_protocol*, ProtocolRw> known;
};

Protocols& protocols() {
  static auto* all = new Protocols;
  return *all;
}

/// A list of protocols as a binary stores it.
struct ListedProtocols {
  std::uintptr_t count;
  objc_protocol* entries[1];
};

template <class Each>
void forEachProtocol(void* list, Each each) {
  if (list == nullptr) return;
  auto* protocols = static_cast<ListedProtocols*>(list);
  for (std::uintptr_t i = 0; i < protocols->count; ++i) each((&protocols->entries[0])[i]);
}

ProtocolRw* dataOf(const objc_protocol* protocol) {
  const auto found = protocols().known.find(protocol);
  return found == protocols().known.end() ? nullptr : &found->second;
}

/// The one of that name, for a binary's own copy.
objc_protocol* canonical(objc_protocol* protocol) {
  if (protocol == nullptr || dataOf(protocol) != nullptr) return protocol;
  const auto found = protocols().byName.find(protocol->name);
  return found == protocols().byName.end() ? protocol : found->second;
}

bool conforms(objc_protocol* protocol, const objc_protocol* wanted) {
  if (protocol == wanted) return true;
  const ProtocolRw* data = dataOf(protocol);
  return data != nullptr && std::ranges::any_of(data->protocols, [&](objc_protocol* adopted) {
           return conforms(adopted, wanted);
         });
}

const Description* findDescription(objc_protocol* protocol, SEL selector, bool isRequired,
                                   bool isOfInstances) {
  const ProtocolRw* data = dataOf(protocol);
  if (data == nullptr) return nullptr;
  for (const Description& one : data->methods[isRequired][isOfInstances])
    if (one.name == selector) return &one;
  for (objc_protocol* adopted : data->protocols)
    if (const Description* found = findDescription(adopted, selector, isRequired, isOfInstances))
      return found;
  return nullptr;
}

objc::PropertyEntry* findIn(const std::vector<objc::PropertyEntry*>& properties, const char* name) {
  const auto found = std::ranges::find_if(properties, [&](const objc::PropertyEntry* one) {
    return std::strcmp(one->name, name) == 0;
  });
  return found == properties.end() ? nullptr : *found;
}

objc::PropertyEntry* findProperty(objc_protocol* protocol, const char* name, bool isOfInstances) {
  const ProtocolRw* data = dataOf(protocol);
  if (data == nullptr) return nullptr;
  if (auto* own = findIn(data->properties[isOfInstances], name)) return own;
  for (objc_protocol* adopted : data->protocols)
    if (auto* found = findProperty(adopted, name, isOfInstances)) return found;
  return nullptr;
}

}  // namespace

objc_protocol* registerProtocol(objc_protocol* protocol) {
  const auto [slot, isNew] = protocols().byName.try_emplace(protocol->name, protocol);
  if (!isNew) return slot->second;
  protocol->isa = &objc_class_Protocol;
  ProtocolRw& data = protocols().known[protocol];
  const auto addMethods = [&](void* list, bool isRequired, bool isOfInstances) {
    forEachEntry<Method>(list, [&](const Method& method) {
      data.methods[isRequired][isOfInstances].push_back(
          {sel_registerName(method.name), method.types});
    });
  };
  addMethods(protocol->instanceMethods, true, true);
  addMethods(protocol->classMethods, true, false);
  addMethods(protocol->optionalInstanceMethods, false, true);
  addMethods(protocol->optionalClassMethods, false, false);
  const auto addProperties = [&](void* list, bool isOfInstances) {
    forEachEntry<objc::PropertyEntry>(list, [&](objc::PropertyEntry& property) {
      data.properties[isOfInstances].push_back(&property);
    });
  };
  addProperties(protocol->instanceProperties, true);
  if (protocol->size >= sizeof(objc_protocol)) addProperties(protocol->classProperties, false);
  std::vector<objc_protocol*> adopted;
  forEachProtocol(protocol->protocols,
                  [&](objc_protocol* one) { adopted.push_back(registerProtocol(one)); });
  protocols().known[protocol].protocols = std::move(adopted);
  return protocol;
}

void addProtocols(Class cls, void* list) {
  forEachProtocol(list, [&](objc_protocol* protocol) {
    objc_protocol* one = registerProtocol(protocol);
    auto& adopted = rw(cls)->protocols;
    if (std::ranges::find(adopted, one) == adopted.end()) adopted.push_back(one);
  });
}

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

HOST_EXPORT objc_protocol* objc_getProtocol(const char* name) {
  if (name == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  const auto found = protocols().byName.find(name);
  return found == protocols().byName.end() ? nullptr : found->second;
}

HOST_EXPORT objc_protocol** objc_copyProtocolList(unsigned* count) {
  std::scoped_lock guard(lock());
  std::vector<objc_protocol*> all;
  for (const auto& [name, protocol] : protocols().byName) all.push_back(protocol);
  return copyList(all, count);
}

HOST_EXPORT const char* protocol_getName(objc_protocol* protocol) {
  return protocol == nullptr ? "nil" : protocol->name;
}

HOST_EXPORT bool protocol_isEqual(objc_protocol* one, objc_protocol* other) {
  if (one == nullptr || other == nullptr) return one == other;
  std::scoped_lock guard(lock());
  return canonical(one) == canonical(other);
}

HOST_EXPORT bool protocol_conformsToProtocol(objc_protocol* protocol, objc_protocol* wanted) {
  if (protocol == nullptr || wanted == nullptr) return false;
  std::scoped_lock guard(lock());
  return conforms(canonical(protocol), canonical(wanted));
}

HOST_EXPORT objc_protocol** protocol_copyProtocolList(objc_protocol* protocol, unsigned* count) {
  std::scoped_lock guard(lock());
  const ProtocolRw* data = dataOf(canonical(protocol));
  return copyList(data == nullptr ? std::vector<objc_protocol*>() : data->protocols, count);
}

HOST_EXPORT Description protocol_getMethodDescription(objc_protocol* protocol, SEL selector,
                                                      bool isRequired, bool isOfInstances) {
  if (protocol == nullptr) return {nullptr, nullptr};
  std::scoped_lock guard(lock());
  const Description* found =
      findDescription(canonical(protocol), selector, isRequired, isOfInstances);
  return found == nullptr ? Description{nullptr, nullptr} : *found;
}

HOST_EXPORT Description* protocol_copyMethodDescriptionList(objc_protocol* protocol,
                                                            bool isRequired, bool isOfInstances,
                                                            unsigned* count) {
  std::scoped_lock guard(lock());
  const ProtocolRw* data = dataOf(canonical(protocol));
  return copyList(
      data == nullptr ? std::vector<Description>() : data->methods[isRequired][isOfInstances],
      count);
}

/// Only required properties of instances are in older binaries.
HOST_EXPORT objc::PropertyEntry* protocol_getProperty(objc_protocol* protocol, const char* name,
                                                      bool isRequired, bool isOfInstances) {
  if (protocol == nullptr || name == nullptr || !isRequired) return nullptr;
  std::scoped_lock guard(lock());
  return findProperty(canonical(protocol), name, isOfInstances);
}

HOST_EXPORT objc::PropertyEntry** protocol_copyPropertyList2(objc_protocol* protocol,
                                                             unsigned* count, bool isRequired,
                                                             bool isOfInstances) {
  std::scoped_lock guard(lock());
  const ProtocolRw* data = dataOf(canonical(protocol));
  return copyList(data == nullptr || !isRequired ? std::vector<objc::PropertyEntry*>()
                                                 : data->properties[isOfInstances],
                  count);
}

HOST_EXPORT objc::PropertyEntry** protocol_copyPropertyList(objc_protocol* protocol,
                                                            unsigned* count) {
  return protocol_copyPropertyList2(protocol, count, true, true);
}

// Protocols that are made at run time. One is changed only before it is registered.

HOST_EXPORT objc_protocol* objc_allocateProtocol(const char* name) {
  std::scoped_lock guard(lock());
  if (name == nullptr || protocols().byName.contains(name)) return nullptr;
  auto* protocol = new objc_protocol{};
  protocol->isa = &objc_class_Protocol;
  protocol->name = keptName(name);
  protocol->size = sizeof(objc_protocol);
  protocols().known[protocol].isRegistered = false;
  return protocol;
}

HOST_EXPORT void objc_registerProtocol(objc_protocol* protocol) {
  std::scoped_lock guard(lock());
  ProtocolRw* data = dataOf(protocol);
  if (data == nullptr || data->isRegistered) return;
  data->isRegistered = protocols().byName.try_emplace(protocol->name, protocol).second;
}

HOST_EXPORT void protocol_addMethodDescription(objc_protocol* protocol, SEL selector,
                                               const char* types, bool isRequired,
                                               bool isOfInstances) {
  std::scoped_lock guard(lock());
  ProtocolRw* data = dataOf(protocol);
  if (data == nullptr || data->isRegistered || selector == nullptr) return;
  data->methods[isRequired][isOfInstances].push_back(
      {selector, keptName(types == nullptr ? "" : types)});
}

HOST_EXPORT void protocol_addProtocol(objc_protocol* protocol, objc_protocol* adopted) {
  std::scoped_lock guard(lock());
  ProtocolRw* data = dataOf(protocol);
  if (data == nullptr || data->isRegistered || adopted == nullptr) return;
  data->protocols.push_back(canonical(adopted));
}

/// Only required properties are kept. The attributes are names and values, as for a class.
HOST_EXPORT void protocol_addProperty(objc_protocol* protocol, const char* name,
                                      const void* attributes, unsigned count, bool isRequired,
                                      bool isOfInstances) {
  std::scoped_lock guard(lock());
  ProtocolRw* data = dataOf(protocol);
  if (data == nullptr || data->isRegistered || name == nullptr || !isRequired) return;
  data->properties[isOfInstances].push_back(
      new objc::PropertyEntry{keptName(name), keptName(joinAttributes(attributes, count))});
}

HOST_EXPORT bool class_addProtocol(Class cls, objc_protocol* protocol) {
  if (cls == nullptr || protocol == nullptr) return false;
  std::scoped_lock guard(lock());
  objc_protocol* one = canonical(protocol);
  auto& adopted = rw(cls)->protocols;
  if (std::ranges::find(adopted, one) != adopted.end()) return false;
  adopted.push_back(one);
  return true;
}

/// The class's own, not its superclasses'.
HOST_EXPORT bool class_conformsToProtocol(Class cls, objc_protocol* protocol) {
  if (cls == nullptr || protocol == nullptr) return false;
  std::scoped_lock guard(lock());
  const objc_protocol* wanted = canonical(protocol);
  return std::ranges::any_of(rw(cls)->protocols,
                             [&](objc_protocol* one) { return conforms(one, wanted); });
}

HOST_EXPORT objc_protocol** class_copyProtocolList(Class cls, unsigned* count) {
  std::scoped_lock guard(lock());
  return copyList(cls == nullptr ? std::vector<objc_protocol*>() : rw(cls)->protocols, count);
}
}
