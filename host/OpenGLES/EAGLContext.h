// The stand-in's graphics context.
#pragma once

#include <EGL/egl.h>

#include <mutex>

#include "objc/define.h"
#include "platform/OpenGLES.h"

namespace host::gl {

/// EGL lets a context be current on one thread alone, and a thread that ends takes it along. The
/// device knows neither, so EGL's is bound around each call only, and what is current here is a
/// reference that the thread keeps.
struct Context : EAGLContext {
  /// Nil where there is no such API or no driver.
  Context* initWithApi(NSUInteger api);
  void dealloc();
  /// False, and nothing changes, for what is no context or was never initialised.
  static bool setCurrent(EAGLContext* context);
  static EAGLContext* current();
  NSUInteger api() { return kEAGLRenderingAPIOpenGLES2; }

  EGLContext handle;
  std::mutex mutex;
};

/// Binds the thread's current context for one scope; false where there is none.
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
