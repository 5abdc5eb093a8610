// Associated objects, kept beside their owners.
#include <utility>

#include "internal.h"
#include "objc/object.h"

namespace host::runtime {

namespace {

struct Association {
  id value;
  AssociationPolicy policy;
};
using Associations = std::unordered_map<const void*, Association>;

struct Table {
  std::mutex mutex;
  std::unordered_map<id, Associations> byOwner;
};

Table& table() {
  static auto* associations = new Table;
  return *associations;
}

bool keeps(AssociationPolicy policy) { return policy != AssociationPolicy::assign; }
bool copies(AssociationPolicy policy) {
  return policy == AssociationPolicy::copy || policy == AssociationPolicy::copyNonatomic;
}

/// An atomic value is returned with a reference for the reader, since another thread may replace
/// it.
bool isAtomic(AssociationPolicy policy) {
  return policy == AssociationPolicy::retain || policy == AssociationPolicy::copy;
}

}  // namespace

void removeAssociations(id owner) {
  Associations gone;
  {
    std::scoped_lock guard(table().mutex);
    auto found = table().byOwner.find(owner);
    if (found == table().byOwner.end()) return;
    gone = std::move(found->second);
    table().byOwner.erase(found);
  }
  for (auto& [key, association] : gone) {
    if (keeps(association.policy)) objc_release(association.value);
  }
}

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

void objc_setAssociatedObject(id owner, const void* key, id value, AssociationPolicy policy) {
  if (owner == nullptr) return;
  if (value != nullptr && copies(policy)) value = send(value, NSObject::copy);
  else if (value != nullptr && keeps(policy)) objc_retain(value);
  Association old{nullptr, AssociationPolicy::assign};
  {
    std::scoped_lock guard(table().mutex);
    if (value == nullptr) {
      auto found = table().byOwner.find(owner);
      if (found == table().byOwner.end()) return;
      if (auto entry = found->second.find(key); entry != found->second.end()) {
        old = entry->second;
        found->second.erase(entry);
      }
    } else {
      Association& entry = table().byOwner[owner][key];
      old = std::exchange(entry, Association{value, policy});
      if (hasHeader(owner)) header(owner)->hasAssociations.store(1, std::memory_order_relaxed);
    }
  }
  if (keeps(old.policy)) objc_release(old.value);
}

id objc_getAssociatedObject(id owner, const void* key) {
  if (owner == nullptr) return nullptr;
  id value = nullptr;
  {
    std::scoped_lock guard(table().mutex);
    auto found = table().byOwner.find(owner);
    if (found == table().byOwner.end()) return nullptr;
    auto entry = found->second.find(key);
    if (entry == found->second.end()) return nullptr;
    value = entry->second.value;
    if (!isAtomic(entry->second.policy)) return value;
    objc_retain(value);
  }
  return objc_autorelease(value);
}
}
