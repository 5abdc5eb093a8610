// Finding methods, and the caches that the messengers read.
#include <cstdlib>
#include <cstring>
#include <new>

#include "internal.h"
#include "runtime.h"

extern "C" {
constinit objc_cache _objc_empty_cache{0, 0, {}};
/// The messengers call this when a cache has no entry. A nil cls means the receiver's own class.
[[gnu::visibility("hidden")]] IMP objc_resolve(const void* receiver, Class cls, SEL selector);
}

namespace host::runtime {

namespace {

/// Buckets after the last one that a selector's address can index. With at most that many entries
/// in a cache, probing always finds an empty bucket.
std::size_t tail(std::size_t buckets) { return buckets * 3 / 4 + 1; }

objc_cache* makeCache(std::size_t buckets) {
  const std::size_t bytes =
      offsetof(objc_cache, buckets) + (buckets + tail(buckets)) * sizeof(objc_cache::Bucket);
  void* memory = std::aligned_alloc(16, (bytes + 15) / 16 * 16);
  if (memory == nullptr) throw std::bad_alloc();
  std::memset(memory, 0, bytes);
  auto* cache = static_cast<objc_cache*>(memory);
  cache->byteMask = (buckets - 1) * sizeof(objc_cache::Bucket);
  return cache;
}

std::size_t bucketsOf(const objc_cache* cache) {
  return cache->byteMask / sizeof(objc_cache::Bucket) + 1;
}

void insert(objc_cache* cache, SEL selector, IMP implementation) {
  std::size_t i =
      (reinterpret_cast<std::uintptr_t>(selector) & cache->byteMask) / sizeof(objc_cache::Bucket);
  objc_cache::Bucket* bucket = &cache->buckets[0] + i;
  while (SEL there = bucket->selector.load(std::memory_order_relaxed)) {
    if (there == selector) return;
    ++bucket;
  }
  bucket->implementation.store(implementation, std::memory_order_relaxed);
  bucket->selector.store(selector, std::memory_order_release);
  ++cache->used;
}

/// Caches that were replaced. A messenger may still be reading one, so they are kept.
std::vector<objc_cache*>& retired() {
  static auto* caches = new std::vector<objc_cache*>;
  return *caches;
}

void publish(Class cls, objc_cache* cache) {
  if (cls->cache != &_objc_empty_cache) retired().push_back(cls->cache);
  __atomic_store_n(&cls->cache, cache, __ATOMIC_RELEASE);
}

void fill(Class cls, SEL selector, IMP implementation) {
  objc_cache* cache = cls->cache;
  constexpr std::size_t kFirst = 8;
  if (cache == &_objc_empty_cache) {
    cache = makeCache(kFirst);
    publish(cls, cache);
  } else if (cache->used + 1 > bucketsOf(cache) * 3 / 4) {
    objc_cache* larger = makeCache(bucketsOf(cache) * 2);
    for (std::size_t i = 0; i < bucketsOf(cache) + tail(bucketsOf(cache)); ++i) {
      objc_cache::Bucket* bucket = &cache->buckets[0] + i;
      if (SEL there = bucket->selector.load(std::memory_order_relaxed)) {
        insert(larger, there, bucket->implementation.load(std::memory_order_relaxed));
      }
    }
    publish(cls, larger);
    cache = larger;
  }
  insert(cache, selector, implementation);
}

/// The implementation of a method that a class does not have, for callers that ask for it by name.
void forward(const void* receiver, SEL selector) { raiseUnrecognizedSelector(receiver, selector); }

std::atomic<std::uint64_t> messages;
std::atomic<std::uint64_t> lookUps;
std::atomic<std::uint64_t> allocations;

void flushAll() {
  if (Class root = objc_getClass("NSObject")) {
    flushCaches(root);
    flushCaches(root->isa);
  }
}

std::function<void(const Message&)>& messageObserver() {
  static auto* observer = new std::function<void(const Message&)>;
  return *observer;
}

/// Whether every message must be looked up here.
bool isWatched() { return counting.load(std::memory_order_relaxed) || messageObserver(); }

void note(Class cls, SEL selector) {
  if (counting.load(std::memory_order_relaxed)) messages.fetch_add(1, std::memory_order_relaxed);
  if (messageObserver()) {
    messageObserver()({class_getName(cls), sel_getName(selector), class_isMetaClass(cls), cls});
  }
}

}  // namespace

std::atomic<bool> counting{false};

void countLookUp() {
  if (counting.load(std::memory_order_relaxed)) lookUps.fetch_add(1, std::memory_order_relaxed);
}
void countAllocation() {
  if (counting.load(std::memory_order_relaxed)) allocations.fetch_add(1, std::memory_order_relaxed);
}

void startCounting() {
  std::scoped_lock guard(lock());
  flushAll();
  messages = lookUps = allocations = 0;
  counting = true;
}

Counts stopCounting() {
  std::scoped_lock guard(lock());
  counting = false;
  return {messages, lookUps, allocations};
}

void observeMessages(std::function<void(const Message&)> observer) {
  std::scoped_lock guard(lock());
  flushAll();
  messageObserver() = std::move(observer);
}

std::recursive_mutex& lock() {
  static auto* mutex = new std::recursive_mutex;
  return *mutex;
}

objc_method* findMethod(Class cls, SEL selector) {
  for (; cls != nullptr; cls = cls->superclass) {
    auto& methods = rw(cls)->methods;
    if (auto found = methods.find(selector); found != methods.end()) return found->second;
  }
  return nullptr;
}

void flushCaches(Class cls) {
  if (cls->cache != &_objc_empty_cache) publish(cls, &_objc_empty_cache);
  for (Class subclass : rw(cls)->subclasses) flushCaches(subclass);
}

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

IMP objc_resolve(const void* receiver, Class cls, SEL selector) {
  if (cls == nullptr) cls = isaOf(receiver);
  std::scoped_lock guard(lock());
  objc_method* method = findMethod(cls, selector);
  // Raised here: after the jump, nothing tells which argument is the receiver of a stret message.
  if (method == nullptr && receiver != nullptr) raiseUnrecognizedSelector(receiver, selector);
  IMP implementation =
      method == nullptr ? reinterpret_cast<IMP>(&forward) : method->implementation.load();
  if (isWatched()) note(cls, selector);
  else fill(cls, selector, implementation);
  return implementation;
}

IMP class_getMethodImplementation(Class cls, SEL selector) {
  if (cls == nullptr || selector == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  objc_method* method = findMethod(cls, selector);
  return method == nullptr ? reinterpret_cast<IMP>(&forward) : method->implementation.load();
}

objc_method* class_getInstanceMethod(Class cls, SEL selector) {
  if (cls == nullptr || selector == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  return findMethod(cls, selector);
}

objc_method* class_getClassMethod(Class cls, SEL selector) {
  return cls == nullptr ? nullptr : class_getInstanceMethod(cls->isa, selector);
}

bool class_respondsToSelector(Class cls, SEL selector) {
  return class_getInstanceMethod(cls, selector) != nullptr;
}

SEL method_getName(objc_method* method) { return method == nullptr ? nullptr : method->name; }
IMP method_getImplementation(objc_method* method) {
  return method == nullptr ? nullptr : method->implementation.load();
}
const char* method_getTypeEncoding(objc_method* method) {
  return method == nullptr ? nullptr : method->types;
}

IMP method_setImplementation(objc_method* method, IMP implementation) {
  if (method == nullptr || implementation == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  IMP old = method->implementation.exchange(implementation);
  flushCaches(method->owner);
  return old;
}
}
