#include "OpenGLES/EAGLContext.h"

#include <EGL/eglext.h>

#include <atomic>
#include <utility>

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
std::atomic<std::size_t> living = 0;

/// A plain pointer. Calls made while the thread ends find nil after the reference was released.
constinit thread_local Context* currentContext = nullptr;

void replaceCurrent(Context* context) {
  objc_retain(context);
  objc_release(std::exchange(currentContext, context));
}

/// Gives up the thread's reference when the thread ends.
struct Keeper {
  ~Keeper() { replaceCurrent(nullptr); }
};

bool bind(EGLContext handle) {
  return eglMakeCurrent(display(), EGL_NO_SURFACE, EGL_NO_SURFACE, handle) == EGL_TRUE;
}

}  // namespace

void setAvailable(bool isAvailable) { available = isAvailable; }
void failActivation(bool fails) { activationFails = fails; }
std::size_t contextCount() { return living; }

Context* Context::initWithApi(NSUInteger api) {
  constexpr EGLint kVersion2[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
  if (handle != EGL_NO_CONTEXT) return this;
  if (api == kEAGLRenderingAPIOpenGLES2 && available && display() != EGL_NO_DISPLAY) {
    eglBindAPI(EGL_OPENGL_ES_API);
    handle = eglCreateContext(display(), EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, kVersion2);
  }
  if (handle != EGL_NO_CONTEXT) {
    ++living;
    return this;
  }
  objc_release(this);
  return nullptr;
}

void Context::dealloc() {
  if (handle != EGL_NO_CONTEXT) {
    eglDestroyContext(display(), handle);
    --living;
  }
  object_dispose(this);
}

bool Context::setCurrent(EAGLContext* context) {
  auto* wanted = static_cast<Context*>(objc::as<EAGLContext>(context));
  if (context != nullptr) {
    if (activationFails || wanted == nullptr || wanted->handle == EGL_NO_CONTEXT) return false;
    static thread_local const Keeper keeper;
    static_cast<void>(keeper);
  }
  replaceCurrent(wanted);
  return true;
}

EAGLContext* Context::current() { return gl::currentContext; }

Bound::Bound() : context_(currentContext) {
  if (context_ == nullptr) return;
  context_->mutex.lock();
  if (bind(context_->handle)) return;
  std::exchange(context_, nullptr)->mutex.unlock();
}

Bound::~Bound() {
  if (context_ == nullptr) return;
  bind(EGL_NO_CONTEXT);
  context_->mutex.unlock();
}

}  // namespace host::gl
