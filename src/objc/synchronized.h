// The lock that the platform keeps for every object, held for one scope.
#pragma once

#include "objc/runtime.h"

namespace objc {

class Synchronized {
 public:
  explicit Synchronized(const void* object) : object_(object) { objc_sync_enter(object_); }
  ~Synchronized() { objc_sync_exit(object_); }
  Synchronized(const Synchronized&) = delete;
  Synchronized& operator=(const Synchronized&) = delete;

 private:
  const void* object_;
};

}  // namespace objc
