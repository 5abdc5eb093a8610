#include "prefs/scope_keys.h"

#include <cstdint>

namespace varnix {

namespace {

/// A kept pair. An entry is filled once, by the thread that claims it, and never changed or
/// removed: views are asked for their tint on other threads too.
struct Entry {
  enum State : int { empty, claimed, filled };
  int state;
  NSString* identifier;
  NSString* key;
  ScopeKeys keys;
};

constexpr std::size_t kEntries = 64;
constexpr std::size_t kProbes = 4;
constinit Entry entries[kEntries]{};

std::size_t slotOf(NSString* identifier, NSString* key) {
  auto mix =
      reinterpret_cast<std::uintptr_t>(identifier) * 31 + reinterpret_cast<std::uintptr_t>(key);
  return (mix >> 4 ^ mix >> 12) % kEntries;
}

ScopeKeys format(NSString* identifier, NSString* key) {
  return {NSString::stringWithFormat("%@_scope_enabled"_ns, identifier),
          NSString::stringWithFormat("%@_%@"_ns, identifier, key)};
}

/// Copying a mutable string gives another object, which no later call passes.
NSString* copyOf(NSString* string) { return static_cast<NSString*>(send(string, NSObject::copy)); }

}  // namespace

ScopeKeys scopeKeys(NSString* identifier, NSString* key) {
  const std::size_t first = slotOf(identifier, key);
  for (std::size_t probe = 0; probe < kProbes; ++probe) {
    Entry& entry = entries[(first + probe) % kEntries];
    int state = __atomic_load_n(&entry.state, __ATOMIC_ACQUIRE);
    if (state == Entry::filled && entry.identifier == identifier && entry.key == key) {
      return entry.keys;
    }
    if (state != Entry::empty) continue;
    if (!__atomic_compare_exchange_n(&entry.state, &state, Entry::claimed, false, __ATOMIC_ACQUIRE,
                                     __ATOMIC_RELAXED)) {
      continue;
    }
    const ScopeKeys made = format(identifier, key);
    entry.identifier = copyOf(identifier);
    entry.key = copyOf(key);
    entry.keys = {copyOf(made.switchKey), copyOf(made.overrideKey)};
    __atomic_store_n(&entry.state, Entry::filled, __ATOMIC_RELEASE);
    return entry.keys;
  }
  return format(identifier, key);
}

}  // namespace varnix
