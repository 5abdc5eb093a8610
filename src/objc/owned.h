// An owning reference to an object with a release function of its own.
#pragma once

#include <utility>

namespace objc {

/// Holds one reference from a function with Create in its name, or null.
template <class Reference, void (*Release)(Reference)>
class Owned {
 public:
  explicit Owned(Reference reference) : reference_(reference) {}
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() {
    if (reference_ != nullptr) Release(reference_);
  }

  operator Reference() const { return reference_; }

 private:
  Reference reference_;
};

}  // namespace objc
