#include "Foundation/NSFileHandle.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "objc/define.h"
#include "runtime/runtime.h"

using host::FileHandle;
using host::Pipe;

OBJC_CLASS_NAMED(NSFileHandle, NSObject, FileHandle, NSObject,
                 objc::Ivar<"_descriptor", &FileHandle::descriptor>,
                 objc::Method<"dealloc", &FileHandle::dealloc>,
                 objc::Method<"fileDescriptor", &FileHandle::fileDescriptor>,
                 objc::Method<"readDataToEndOfFile", &FileHandle::readToEnd>,
                 objc::Method<"closeFile", &FileHandle::close>)

OBJC_CLASS_NAMED(NSPipe, NSObject, Pipe, NSObject,
                 objc::Readable<"fileHandleForReading", &Pipe::reading, "_reading">,
                 objc::Ivar<"_writing", &Pipe::writing>, objc::ClassMethod<"pipe", &Pipe::make>,
                 objc::Method<"init", &Pipe::init>,
                 objc::Method<"fileHandleForWriting", &Pipe::forWriting>)

namespace host {

FileHandle* FileHandle::owning(int descriptor) {
  auto* handle = static_cast<FileHandle*>(class_createInstance(&objc_class_NSFileHandle, 0));
  handle->descriptor = descriptor;
  return handle;
}

void FileHandle::dealloc() {
  close();
  sendSuper<NSFileHandle>(this, NSObject::dealloc);
}

NSData* FileHandle::readToEnd() {
  if (!descriptor) {
    throw runtime::Exception("NSFileHandleOperationException", "the file handle is closed");
  }
  std::string bytes;
  char part[65536];
  for (;;) {
    const ssize_t count = ::read(*descriptor, part, sizeof part);
    if (count > 0) bytes.append(part, static_cast<std::size_t>(count));
    else if (count == 0 || errno != EINTR) break;
  }
  return NSData::dataWithBytes(bytes.data(), bytes.size());
}

void FileHandle::close() {
  if (descriptor) ::close(*descriptor);
  descriptor.reset();
}

Pipe* Pipe::make() {
  auto* made = static_cast<Pipe*>(class_createInstance(&objc_class_NSPipe, 0));
  return static_cast<Pipe*>(objc_autorelease(made->init()));
}

/// Nil if the process has no descriptor left. Children inherit an end only if it is passed to them.
Pipe* Pipe::init() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    objc_release(this);
    return nullptr;
  }
  reading = Strong<FileHandle>::adopt(FileHandle::owning(ends[0]));
  writing = Strong<FileHandle>::adopt(FileHandle::owning(ends[1]));
  return this;
}

}  // namespace host
