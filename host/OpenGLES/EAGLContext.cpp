#include "OpenGLES/EAGLContext.h"

#include <EGL/eglext.h>

#include <atomic>

#include "OpenGLES/display.h"
#include "OpenGLES/gl.h"

using host::gl::Context;

OBJC_CLASS_NAMED(EAGLContext, NSObject, Context, NSObject, objc::Ivar<"_handle", &Context::handle>,
                 objc::Ivar<"_mutex", &Context::mutex>,
                 objc::ClassMethod<"setCurrentContext:", &Context::setCurrent>,
                 objc::ClassMethod<"currentContext", &Context::current>,
                 objc::Method<"initWithAPI:", &Context::initWithApi>,
                 objc::Method<"API", &Context::api>, objc::Method<"dealloc", &Context::dealloc>)

namespace {

struct LayerImplementation : CAEAGLLayer {};

}  // namespace

OBJC_CLASS_NAMED(CAEAGLLayer, NSObject, LayerImplementation, NSObject)

namespace host::gl {

namespace {

std::atomic<bool> available = true;
std::atomic<bool> activationFails = false;
thread_local Strong<EAGLContext> currentContext;

}  // namespace

void setAvailable(bool isAvailable) { available = isAvailable; }
void failActivation(bool fails) { activationFails = fails; }

Context* Context::initWithApi(NSUInteger api) {
  constexpr EGLint kVersion2[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
  if (api == kEAGLRenderingAPIOpenGLES2 && available && display() != EGL_NO_DISPLAY) {
    eglBindAPI(EGL_OPENGL_ES_API);
    handle = eglCreateContext(display(), EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, kVersion2);
  }
  if (handle != EGL_NO_CONTEXT) return this;
  objc_release(this);
  return nullptr;
}

void Context::dealloc() {
  if (handle != EGL_NO_CONTEXT) eglDestroyContext(display(), handle);
  object_dispose(this);
}

bool Context::setCurrent(EAGLContext* context) {
  if (context != nullptr && activationFails) return false;
  currentContext = Strong<EAGLContext>::retain(context);
  return true;
}

EAGLContext* Context::current() { return currentContext; }

Bound::Bound() : context_(static_cast<Context*>(currentContext.get())) {
  if (context_ == nullptr) return;
  context_->mutex.lock();
  eglMakeCurrent(display(), EGL_NO_SURFACE, EGL_NO_SURFACE, context_->handle);
}

Bound::~Bound() {
  if (context_ == nullptr) return;
  eglMakeCurrent(display(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  context_->mutex.unlock();
}

}  // namespace host::gl
