// An autorelease pool for one scope.
#pragma once

#include "objc/runtime.h"

namespace objc {

class AutoreleasePool {
 public:
  AutoreleasePool() : token_(objc_autoreleasePoolPush()) {}
  ~AutoreleasePool() { objc_autoreleasePoolPop(token_); }
  AutoreleasePool(const AutoreleasePool&) = delete;
  AutoreleasePool& operator=(const AutoreleasePool&) = delete;

 private:
  void* token_;
};

}  // namespace objc
