// The graphics as tests see them: made to fail, and counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "export.h"
#include "platform/OpenGLES.h"

namespace host::gl {

/// Whether a new context can be had.
HOST_EXPORT void setAvailable(bool isAvailable);
/// Makes setCurrentContext: answer NO for any context, and change nothing. Nil still works.
HOST_EXPORT void failActivation(bool fails);
/// Makes shaders of that type fail to compile; 0 for none.
HOST_EXPORT void failCompile(GLenum type);
HOST_EXPORT void failLink(bool fails);

/// How often the function of that name, or any, was called. Throws std::invalid_argument where
/// there is none of that name.
HOST_EXPORT std::uint64_t callCount(std::string_view function);
HOST_EXPORT std::uint64_t callCount();

/// Contexts made and not yet destroyed.
HOST_EXPORT std::size_t contextCount();

}  // namespace host::gl
