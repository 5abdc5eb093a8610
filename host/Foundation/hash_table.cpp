#include "Foundation/hash_table.h"

#include "Foundation/text.h"

namespace host {

namespace {

std::size_t hashOfKey(NSObject* key) {
  return isString(key) ? hashOf(static_cast<NSString*>(key)) : send(key, NSObject::hash);
}

bool sameKey(NSObject* left, NSObject* right) {
  if (left == right) return true;
  const bool leftIsString = isString(left);
  if (leftIsString != isString(right)) return false;
  if (leftIsString)
    return text(static_cast<NSString*>(left)) == text(static_cast<NSString*>(right));
  return send(left, NSObject::isEqual, right);
}

}  // namespace

std::size_t HashTable::slotOf(NSObject* key, std::size_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  while (slots_[slot].index != kEmpty) {
    if (slots_[slot].hash == static_cast<std::uint32_t>(hash)) {
      const Entry& entry = entries_[slots_[slot].index];
      if (entry.hash == hash && sameKey(entry.key, key)) break;
    }
    slot = (slot + 1) & mask;
  }
  return slot;
}

NSObject* HashTable::find(NSObject* key) const {
  if (key == nullptr || entries_.empty()) return nullptr;
  const std::uint32_t index = slots_[slotOf(key, hashOfKey(key))].index;
  return index == kEmpty ? nullptr : entries_[index].value.get();
}

void HashTable::set(Strong<NSObject> key, Strong<NSObject> value) {
  const std::size_t hash = hashOfKey(key);
  if (slots_.size() < (entries_.size() + 1) * 2) rebuild(slots_.empty() ? 8 : slots_.size() * 2);
  const std::size_t slot = slotOf(key, hash);
  if (slots_[slot].index != kEmpty) {
    entries_[slots_[slot].index].value = std::move(value);
    return;
  }
  slots_[slot] = {static_cast<std::uint32_t>(hash), static_cast<std::uint32_t>(entries_.size())};
  entries_.push_back({std::move(key), std::move(value), hash});
}

void HashTable::addAll(const HashTable& other) {
  if (entries_.size() >= other.entries_.size()) {
    for (const Entry& entry : other.entries_) set(entry.key, entry.value);
    return;
  }
  // The larger table is taken over whole, and the smaller one's entries are added to it.
  HashTable merged = other;
  for (const Entry& entry : entries_) {
    if (other.find(entry.key) == nullptr) merged.set(entry.key, entry.value);
  }
  *this = std::move(merged);
}

void HashTable::remove(NSObject* key) {
  if (key == nullptr || entries_.empty()) return;
  const std::uint32_t index = slots_[slotOf(key, hashOfKey(key))].index;
  if (index == kEmpty) return;
  Entry gone = std::move(entries_[index]);  // released at the end: a dealloc may use this table
  entries_.erase(entries_.begin() + index);
  rebuild(slots_.size());
}

void HashTable::reserve(std::size_t count) {
  entries_.reserve(count);
  std::size_t slots = 8;
  while (slots < count * 2) slots *= 2;
  if (slots > slots_.size()) rebuild(slots);
}

void HashTable::rebuild(std::size_t slots) {
  slots_.assign(slots, {0, kEmpty});
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    std::size_t slot = entries_[i].hash & (slots - 1);
    while (slots_[slot].index != kEmpty) slot = (slot + 1) & (slots - 1);
    slots_[slot] = {static_cast<std::uint32_t>(entries_[i].hash), static_cast<std::uint32_t>(i)};
  }
}

}  // namespace host
