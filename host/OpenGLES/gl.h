// Graphics for tests: makes calls fail, and counts them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "export.h"
#include "platform/OpenGLES.h"

namespace host::gl {

/// Whether new contexts can be made.
HOST_EXPORT void setAvailable(bool isAvailable);
/// Makes setCurrentContext: return NO for any context, and change nothing. Nil still works.
HOST_EXPORT void failActivation(bool fails);
/// Makes shaders of that type fail to compile; 0 for none.
HOST_EXPORT void failCompile(GLenum type);
HOST_EXPORT void failLink(bool fails);

/// How often the function of that name, or any, was called. Throws std::invalid_argument if there
/// is no function of that name.
HOST_EXPORT std::uint64_t callCount(std::string_view function);
HOST_EXPORT std::uint64_t callCount();

/// Contexts made and not yet destroyed.
HOST_EXPORT std::size_t contextCount();

}  // namespace host::gl
