// The calling thread's GL context, which belongs to the application.
#pragma once

#include "objc/strong.h"
#include "platform/OpenGLES.h"

namespace varnix::picker {

/// Restores the current context at the end of the scope.
class RestoredContext {
 public:
  RestoredContext() : before_(Strong<EAGLContext>::retain(EAGLContext::currentContext())) {}
  RestoredContext(const RestoredContext&) = delete;
  RestoredContext& operator=(const RestoredContext&) = delete;
  ~RestoredContext() {
    if (EAGLContext::currentContext() != before_) EAGLContext::setCurrentContext(before_);
  }

 private:
  Strong<EAGLContext> before_;
};

}  // namespace varnix::picker
