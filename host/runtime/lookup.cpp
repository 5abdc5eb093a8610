// Finding methods, and the caches that the messengers read.
#include <cstdlib>
#include <cstring>
#include <new>

#include "internal.h"
#include "runtime.h"

extern "C" {
constinit objc_cache _objc_empty_cache{0, 0, {}};
/// Older compilers write it into every class; nothing reads it.
HOST_EXPORT extern IMP _objc_empty_vtable;
constinit IMP _objc_empty_vtable = nullptr;
/// Where the class of every object is, in bytes.
HOST_EXPORT extern long objc_offsetOfIsa asm("OBJC_IVAR_$_NSObject.isa");
constinit long objc_offsetOfIsa = 0;

/// An implementation and the receiver that it gets, in the two registers of a result.
#if defined(__arm__)
using Resolved = std::uint64_t;
#else
using Resolved = host::runtime::Handler;
#endif

/// The messengers call this when a cache has no entry. A nil cls means the receiver's own class.
[[gnu::visibility("hidden")]] Resolved objc_resolve(const void* receiver, Class cls, SEL selector);
/// The same for a message that is forwarded although there may be a method.
[[gnu::visibility("hidden")]] Resolved objc_resolveForward(const void* receiver, Class cls,
                                                           SEL selector);

/// The implementations that forward a message.
HOST_EXPORT void _objc_msgForward();
#if !defined(__aarch64__)
HOST_EXPORT void _objc_msgForward_stret();
#endif
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

/// What a stub calls if the superclass has no such method any more.
void raise(const void* receiver, SEL selector) { raiseUnrecognizedSelector(receiver, selector); }

Resolved resolved(Handler handler) {
#if defined(__arm__)
  return reinterpret_cast<std::uintptr_t>(handler.implementation) |
         static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(handler.receiver)) << 32;
#else
  return handler;
#endif
}

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

Handler handlerOf(const void* receiver, Class cls, SEL selector) {
  if (cls == nullptr) cls = isaOf(receiver);
  const bool isInitialized = receiver == nullptr || initializeClass(cls);
  {
    std::scoped_lock guard(lock());
    if (objc_method* method = findMethod(cls, selector)) {
      IMP implementation = method->implementation.load();
      // Other threads must wait until the class is initialised: none finds its methods in a cache.
      if (isWatched()) note(cls, selector);
      else if (isInitialized) fill(cls, selector, implementation);
      return {implementation, receiver};
    }
  }
  if (receiver == nullptr) return {reinterpret_cast<IMP>(&raise), nullptr};
  if (objc_method* method = findOrResolveMethod(cls, selector))
    return {method->implementation.load(), receiver};
  return forwardingHandler(receiver, selector);
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

Resolved objc_resolve(const void* receiver, Class cls, SEL selector) {
  return resolved(handlerOf(receiver, cls, selector));
}

Resolved objc_resolveForward(const void* receiver, Class, SEL selector) {
  return resolved(forwardingHandler(receiver, selector));
}

IMP class_getMethodImplementation(Class cls, SEL selector) {
  if (cls == nullptr || selector == nullptr) return nullptr;
  objc_method* method = findOrResolveMethod(cls, selector);
  return method == nullptr ? &_objc_msgForward : method->implementation.load();
}

#if !defined(__aarch64__)
HOST_EXPORT IMP class_getMethodImplementation_stret(Class cls, SEL selector) {
  if (cls == nullptr || selector == nullptr) return nullptr;
  objc_method* method = findOrResolveMethod(cls, selector);
  return method == nullptr ? &_objc_msgForward_stret : method->implementation.load();
}
#endif

objc_method* class_getInstanceMethod(Class cls, SEL selector) {
  if (cls == nullptr || selector == nullptr) return nullptr;
  return findOrResolveMethod(cls, selector);
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
