// A file descriptor that is closed at the end of its scope.
#pragma once

#include <unistd.h>

#include <utility>

namespace host {

class Descriptor {
 public:
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { closeNow(); }

  explicit operator bool() const { return descriptor_ >= 0; }
  int get() const { return descriptor_; }

  /// False if the last of the written data could not be stored.
  bool closeNow() {
    const int descriptor = std::exchange(descriptor_, -1);
    return descriptor < 0 || close(descriptor) == 0;
  }

 private:
  int descriptor_;
};

}  // namespace host
