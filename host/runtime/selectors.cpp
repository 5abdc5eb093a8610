// Selectors: one object per name, so that they can be compared by pointer.
#include <cstring>
#include <shared_mutex>

#include "internal.h"

namespace {

/// Aligned to a bucket of a method cache, which a selector's address indexes.
struct alignas(16) StoredSelector : objc_selector {};

struct SelectorTable {
  std::shared_mutex mutex;
  std::unordered_map<std::string_view, StoredSelector*> byName;
};

SelectorTable& selectorTable() {
  static auto* selectors = new SelectorTable;
  return *selectors;
}

}  // namespace

extern "C" {

SEL sel_registerName(const char* name) {
  host::runtime::countLookUp();
  if (name == nullptr) return nullptr;
  const std::string_view wanted(name);
  SelectorTable& selectors = selectorTable();
  {
    std::shared_lock reading(selectors.mutex);
    if (auto found = selectors.byName.find(wanted); found != selectors.byName.end())
      return found->second;
  }
  std::unique_lock writing(selectors.mutex);
  auto [slot, isNew] = selectors.byName.try_emplace(wanted, nullptr);
  if (isNew) {
    char* copy = strdup(name);
    auto* selector = new StoredSelector;
    selector->name = copy;
    selectors.byName.erase(slot);
    slot = selectors.byName.emplace(std::string_view(copy), selector).first;
  }
  return slot->second;
}

const char* sel_getName(SEL selector) {
  return selector == nullptr ? "<null selector>" : selector->name;
}
}
