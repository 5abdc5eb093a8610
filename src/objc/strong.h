// An owning reference. Its two factory functions say who owned the object before.
#pragma once

#include <utility>

#include "objc/object.h"

namespace objc {

/// Holds one reference to a T, or nil. Its empty state is all zeros, like the instance variables of
/// a new object.
template <class T>
class Strong {
 public:
  constexpr Strong() = default;
  constexpr Strong(std::nullptr_t) {}
  Strong(const Strong& other) : object_(other.object_) { objc_retain(object_); }
  Strong(Strong&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Strong& operator=(Strong other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Strong() { objc_release(object_); }

  /// Takes over a reference that the caller owns (the result of alloc, new, copy, Create).
  static Strong adopt(T* object) { return Strong(object); }

  /// Adds a reference of its own.
  static Strong retain(T* object) {
    objc_retain(object);
    return Strong(object);
  }

  T* get() const { return object_; }
  operator T*() const { return object_; }
  T* operator->() const { return object_; }

  /// Gives the reference to the caller.
  [[nodiscard]] T* leak() { return std::exchange(object_, nullptr); }

  /// Gives the reference to the innermost autorelease pool.
  T* autorelease() { return static_cast<T*>(objc_autorelease(leak())); }

 private:
  explicit Strong(T* object) : object_(object) {}

  T* object_ = nullptr;
};

/// A new object of T's class, initialised; nil in a process without it.
template <class T>
Strong<T> make() {
  return Strong<T>::adopt(
      static_cast<T*>(send(static_cast<NSObject*>(alloc<T>()), NSObject::init)));
}

}  // namespace objc

using objc::Strong;
