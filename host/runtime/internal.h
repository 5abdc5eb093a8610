// Shared by the files of the run-time: the mutable half of a class, methods, caches, the lock.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <vector>

#include "image.h"
#include "objc/metadata.h"
#include "runtime.h"

struct objc_selector {
  const char* name;
};

struct objc_method {
  SEL name;
  const char* types;
  std::atomic<IMP> implementation;
  Class owner;
};

struct objc_ivar {
  std::string name;
  std::string types;
  std::int32_t offset;
  std::uint32_t size;
  std::uint32_t log2Alignment;
};

/// A class's method cache: a power of two of buckets that a selector's address indexes, and a tail
/// so that probing never wraps. Entries are only ever added; a change of methods replaces the
/// whole cache, so that a messenger that still reads the old one sees a consistent state.
struct objc_cache {
  struct Bucket {
    std::atomic<SEL> selector;
    std::atomic<IMP> implementation;
  };
  std::uintptr_t byteMask;  ///< (buckets - 1) * sizeof(Bucket); selectors are aligned to a bucket
  std::uintptr_t used;
  Bucket buckets[1];
};
static_assert(sizeof(objc_cache::Bucket) == 2 * sizeof(void*) &&
              offsetof(objc_cache, buckets) == 2 * sizeof(void*));

namespace host::runtime {

/// How far a class is with its +initialize.
enum class Initialized : std::uint8_t { no, running, yes };

/// The mutable half of a class; objc_class::data points to it once the class is mapped.
struct ClassRw {
  std::uint32_t flags = 0;
  int version = 0;
  /// Of a metaclass: the class whose metaclass it is.
  Class instanceClass = nullptr;
  std::atomic<Initialized> initialized = Initialized::no;
  std::thread::id initializer;  ///< the thread that runs +initialize
  /// The class or one above it, the root aside, has a retain, release or autorelease of its own.
  std::atomic<bool> customReferenceCounting = false;
  /// Of a metaclass: the same for +allocWithZone:, which +alloc then sends.
  std::atomic<bool> customAllocation = false;
  std::uint32_t instanceStart = 0;  ///< bytes: where the class's own variables begin
  std::uint32_t instanceSize = 0;   ///< bytes, without the padding at the end
  std::string name;
  std::unordered_map<SEL, objc_method*> methods;
  std::vector<objc_ivar*> ivars;
  std::vector<objc_protocol*> protocols;  ///< those that it adopts itself
  std::vector<objc::PropertyEntry*> properties;
  const std::uint8_t* ivarLayout = nullptr;      ///< which variables are strong references
  const std::uint8_t* weakIvarLayout = nullptr;  ///< which are weak ones
  std::vector<Class> subclasses;
  IMP construct = nullptr;  ///< this class's own .cxx_construct
  IMP destruct = nullptr;   ///< this class's own .cxx_destruct
};

/// The header before every instance. A negative count does not change: the object is never freed,
/// or is just being freed.
struct ObjectHeader {
  std::atomic<std::int64_t> references;
  std::atomic<std::uint32_t> hasAssociations;
  std::atomic<std::uint32_t> isWeaklyReferenced;
};

/// The count while dealloc runs, which may retain and release the object.
inline constexpr std::int64_t kDeallocating = INT64_MIN;

inline ClassRw* rw(Class cls) { return static_cast<ClassRw*>(cls->data); }
inline ObjectHeader* header(const void* object) {
  return static_cast<ObjectHeader*>(const_cast<void*>(object)) - 1;
}
inline Class isaOf(const void* object) { return *static_cast<const Class*>(object); }

/// Guards classes, methods and the filling of caches. Messengers read caches without it.
std::recursive_mutex& lock();

/// The method that instances of the class have, inherited ones included; nil if there is none. The
/// lock is held.
objc_method* findMethod(Class cls, SEL selector);

/// The same, after the class was asked to add a method that it lacks (+resolveInstanceMethod: and
/// +resolveClassMethod:). The lock is not held.
objc_method* findOrResolveMethod(Class cls, SEL selector);

/// What handles a message that the receiver has no method for: an implementation, and the receiver
/// that it gets. Raises if nothing does. The lock is not held.
struct Handler {
  IMP implementation;
  const void* receiver;
};
Handler forwardingHandler(const void* receiver, SEL selector);
/// What a message to the receiver calls, looked up in cls, or in its own class if that is nil. The
/// lock is not held.
Handler handlerOf(const void* receiver, Class cls, SEL selector);
/// The class's method of that name, inherited or not, unless it is just NSObject's; else nil. The
/// lock is not held.
IMP overridden(Class cls, SEL selector);

/// Sends +initialize to the superclasses and to the class, unless that has been done. Waits for
/// another thread that does so. False while this thread is still in the class's +initialize. The
/// lock is not held.
bool initializeClass(Class cls);

/// Adds a method to the class. The lock is held, and the class has none of that name itself.
objc_method* insertMethod(Class cls, SEL selector, const char* types, IMP implementation);

/// Takes over classes of a binary. One whose superclass is missing is left out. The lock is held.
void mapClasses(std::span<Class> classes);
bool isMapped(Class cls);
/// Forgets a class that was made at run time. The lock is held.
void unmapClass(Class cls);
/// Adds the methods, properties and protocols of a category to its class, if that is there. The
/// lock is held.
void mapCategory(const objc::CategoryData& category, void* classProperties);

/// Calls each with every entry of a list of methods, variables or properties as a binary stores it.
template <class Entry, class Each>
void forEachEntry(void* list, Each each) {
  if (list == nullptr) return;
  const auto* header = static_cast<objc::ListHeader*>(list);
  auto* entries = reinterpret_cast<Entry*>(static_cast<char*>(list) + sizeof(objc::ListHeader));
  for (std::uint32_t i = 0; i < header->count; ++i) each(entries[i]);
}

/// The one protocol of that name: a binary's own copy stands for it once it is registered. The lock
/// is held.
objc_protocol* registerProtocol(objc_protocol* protocol);
void addProtocols(Class cls, void* list);
void addProperties(Class cls, void* list);
/// The text of a property's attributes: pairs of C strings, a name and a value.
std::string joinAttributes(const void* attributes, unsigned count);

/// Every class that was mapped or registered. The lock is held.
std::vector<Class> allClasses();

/// The path of the class's binary; "?" for a class that was made at run time.
std::string binaryOf(Class cls);

/// Notifies the observer of changes, if there is one. The lock is not held.
void report(Change::Kind kind, Class cls, SEL selector, const char* types);

/// Empties the caches of the class and of all its subclasses. The lock is held.
void flushCaches(Class cls);

/// The root's own way of counting, for an object that has a header.
void addReference(id object);
void dropReference(id object);
/// Has the thread's innermost pool release the object.
void releaseWithPool(id object);

/// Classes, and objects that compilers write, have no header and are never freed.
bool hasHeader(id object);

/// Whether references are counted by message. That includes objects without a header: classes, and
/// objects that the compiler emitted.
bool countsItself(Class cls);

/// Keeps an object alive that a weak reference leads to; false if it is being freed.
bool retainFromWeak(id object);
/// Whether the object is being freed. Those without a header never are.
bool isBeingFreed(id object);
/// Sets the weak references to an object that is being freed to nil.
void clearWeakReferences(id object);

/// Removes the associations of an object that is being freed.
void removeAssociations(id object);

/// Raises "unrecognized selector", as the platform does.
[[noreturn]] void raiseUnrecognizedSelector(const void* receiver, SEL selector);

/// Whether messages are being counted. If so, no cache is filled, and each message is looked up.
extern std::atomic<bool> counting;
void countLookUp();
void countAllocation();

}  // namespace host::runtime
