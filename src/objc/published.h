// A reference that may be replaced while other threads read it, without a lock.
#pragma once

#include <cstdlib>

#include "objc/strong.h"

namespace objc {

namespace detail {

/// An object that was replaced while a thread was reading.
struct Retired {
  id object;
  Retired* next;
};

/// The number of threads that have read a published reference but do not hold their own yet.
inline constinit int publishedReaders = 0;
inline constinit Retired* retiredObjects = nullptr;

inline void putBack(Retired* first, Retired* last) {
  last->next = __atomic_load_n(&retiredObjects, __ATOMIC_SEQ_CST);
  while (!__atomic_compare_exchange_n(&retiredObjects, &last->next, first, true, __ATOMIC_SEQ_CST,
                                      __ATOMIC_SEQ_CST)) {
  }
}

/// Releases what was replaced: now if no thread is reading, otherwise at a later replacement. A
/// thread that read a replaced reference was counted before the replacement.
[[gnu::noinline]] inline void retire(id object) {
  if (object == nullptr) return;
  auto* kept = static_cast<Retired*>(std::malloc(sizeof(Retired)));
  if (kept == nullptr) return;
  *kept = {object, nullptr};
  putBack(kept, kept);
  Retired* all = __atomic_exchange_n(&retiredObjects, nullptr, __ATOMIC_SEQ_CST);
  if (all == nullptr) return;
  if (__atomic_load_n(&publishedReaders, __ATOMIC_SEQ_CST) != 0) {
    Retired* last = all;
    while (last->next != nullptr) last = last->next;
    return putBack(all, last);
  }
  while (all != nullptr) {
    Retired* next = all->next;
    objc_release(all->object);
    std::free(all);
    all = next;
  }
}

}  // namespace detail

/// Holds one reference to a T, or nil. Any thread may read and replace it. Its empty state is all
/// zeros.
template <class T>
class Published {
 public:
  constexpr Published() = default;
  Published(const Published&) = delete;
  Published& operator=(const Published&) = delete;
  ~Published() { objc_release(object_); }

  Strong<T> read() const {
    __atomic_add_fetch(&detail::publishedReaders, 1, __ATOMIC_SEQ_CST);
    auto kept = Strong<T>::retain(__atomic_load_n(&object_, __ATOMIC_SEQ_CST));
    __atomic_sub_fetch(&detail::publishedReaders, 1, __ATOMIC_SEQ_CST);
    return kept;
  }

  void replace(Strong<T> object) {
    detail::retire(__atomic_exchange_n(&object_, object.leak(), __ATOMIC_SEQ_CST));
  }

  /// Replaces the object if it is still the expected one. Otherwise does nothing and returns no.
  bool replaceIf(const Strong<T>& expected, Strong<T> object) {
    T* old = expected.get();
    T* replacement = object.get();
    if (!__atomic_compare_exchange_n(&object_, &old, replacement, false, __ATOMIC_SEQ_CST,
                                     __ATOMIC_SEQ_CST)) {
      return false;
    }
    static_cast<void>(object.leak());
    detail::retire(old);
    return true;
  }

 private:
  T* object_ = nullptr;
};

}  // namespace objc

using objc::Published;
