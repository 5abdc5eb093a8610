// The table behind dictionaries: keeps insertion order, with open addressing over stored hashes.
#pragma once

#include <cstdint>
#include <vector>

#include "objc/strong.h"

namespace host {

class HashTable {
 public:
  struct Entry {
    Strong<NSObject> key;
    Strong<NSObject> value;
    std::size_t hash;
  };

  /// The entry's value, or nil.
  NSObject* find(NSObject* key) const;
  /// Stores the key as it is: the dictionary must copy it.
  void set(Strong<NSObject> key, Strong<NSObject> value);
  /// The other's entries replace those with the same key.
  void addAll(const HashTable& other);
  void remove(NSObject* key);
  void reserve(std::size_t count);

  const std::vector<Entry>& entries() const { return entries_; }

 private:
  std::size_t slotOf(NSObject* key, std::size_t hash) const;
  void rebuild(std::size_t slots);

  /// An entry's index and part of its hash: most misses end here.
  struct Slot {
    std::uint32_t hash;
    std::uint32_t index;
  };
  static constexpr std::uint32_t kEmpty = ~0U;
  std::vector<Entry> entries_;
  std::vector<Slot> slots_;  ///< a power of two, or none
};

}  // namespace host
