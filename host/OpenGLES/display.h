// The one display of the process, and the driver's functions.
#pragma once

#include <EGL/egl.h>

namespace host::gl {

/// Opened at the first call; EGL_NO_DISPLAY if there is no driver.
EGLDisplay display();

}  // namespace host::gl
