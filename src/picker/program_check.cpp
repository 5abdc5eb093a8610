// Whether a program could draw in the present state: a diagnostic.
#include <cstdlib>

#include "objc/owned.h"
#include "picker/CQColorPicker_object.h"

namespace varnix {

bool ColorPicker::validateProgram(GLuint program) {
  if (!isContextCurrent()) return false;
  glValidateProgram(program);
  GLint length = 0;
  glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
  if (length >= 1) {
    // The log is fetched and discarded.
    const objc::Owned<void*, &std::free> log(std::malloc(static_cast<std::size_t>(length)));
    if (log != nullptr)
      glGetProgramInfoLog(program, length, nullptr, static_cast<GLchar*>(static_cast<void*>(log)));
  }
  GLint valid = 0;
  glGetProgramiv(program, GL_VALIDATE_STATUS, &valid);
  return valid != 0;
}

}  // namespace varnix
