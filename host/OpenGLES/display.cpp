#include "OpenGLES/display.h"

#include <EGL/eglext.h>

#include <cstdlib>
#include <cstring>

#include "Foundation/log.h"

namespace host::gl {

namespace {

bool wantsGpu() {
  const char* choice = std::getenv("VARNIX_GL");
  if (choice == nullptr || std::strcmp(choice, "software") == 0) return false;
  if (std::strcmp(choice, "gpu") == 0) return true;
  log(LogLevel::error, std::string("VARNIX_GL is neither gpu nor software: ") + choice);
  return false;
}

/// Keeps a value that the user has set.
void setDefault(const char* name, const char* value) { setenv(name, value, 0); }

EGLDisplay open() {
  setDefault("EGL_LOG_LEVEL", "fatal");
  const bool gpu = wantsGpu();
  if (!gpu) {
    setDefault("LIBGL_ALWAYS_SOFTWARE", "1");
#if defined(__x86_64__)
    // Without newer instructions, whose results differ between processors.
    setDefault("GALLIUM_OVERRIDE_CPU_CAPS", "sse4.1");
#endif
  }
  auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
      eglGetProcAddress("eglGetPlatformDisplayEXT"));
  EGLDisplay found = EGL_NO_DISPLAY;
  if (getPlatformDisplay != nullptr)
    found = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  if (found != EGL_NO_DISPLAY && eglInitialize(found, nullptr, nullptr)) return found;
  if (!gpu) return EGL_NO_DISPLAY;
  found = eglGetDisplay(EGL_DEFAULT_DISPLAY);
  return found != EGL_NO_DISPLAY && eglInitialize(found, nullptr, nullptr) ? found : EGL_NO_DISPLAY;
}

}  // namespace

EGLDisplay display() {
  static EGLDisplay opened = open();
  return opened;
}

}  // namespace host::gl
