// The stand-in's graphics context.
#pragma once

#include <EGL/egl.h>

#include <mutex>

#include "objc/define.h"
#include "platform/OpenGLES.h"

namespace host::gl {

/// EGL allows a context to be current on one thread only, and it is lost when that thread ends. The
/// device has neither limit. So EGL's context is bound only around each call, and the current
/// context here is a reference that the thread keeps.
struct Context : EAGLContext {
  /// Nil if there is no such API or no driver.
  Context* initWithApi(NSUInteger api);
  void dealloc();
  /// False, and nothing changes, for anything but an initialised context.
  static bool setCurrent(EAGLContext* context);
  static EAGLContext* current();
  NSUInteger api() { return kEAGLRenderingAPIOpenGLES2; }

  EGLContext handle;
  std::mutex mutex;
};

/// Binds the thread's current context for one scope; false if there is none.
class Bound {
 public:
  Bound();
  ~Bound();
  Bound(const Bound&) = delete;
  Bound& operator=(const Bound&) = delete;

  explicit operator bool() const { return context_ != nullptr; }

 private:
  Context* context_;
};

}  // namespace host::gl
