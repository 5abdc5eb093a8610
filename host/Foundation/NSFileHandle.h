// The implementation of file handles and pipes.
#pragma once

#include <optional>

#include "objc/strong.h"
#include "platform/Foundation.h"

namespace host {

/// Owns its descriptor; absent once it is closed.
struct FileHandle : NSFileHandle {
  static FileHandle* owning(int descriptor);
  void dealloc();
  int fileDescriptor() { return descriptor.value_or(-1); }
  NSData* readToEnd();
  void close();

  std::optional<int> descriptor;
};

struct Pipe : NSPipe {
  static Pipe* make();
  Pipe* init();
  FileHandle* forWriting() { return writing; }

  Strong<FileHandle> reading;
  Strong<FileHandle> writing;
};

}  // namespace host
