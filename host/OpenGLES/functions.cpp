// OpenGL ES 2.0: each function counts, binds the thread's context and calls the driver's.
#include <array>
#include <atomic>
#include <cstring>

#include "OpenGLES/EAGLContext.h"
#include "OpenGLES/gl.h"

namespace host::gl {

namespace {

std::atomic<GLenum> failingType = 0;
std::atomic<bool> linkFails = false;

struct Counter {
  const char* name;
  std::atomic<std::uint64_t> calls{0};
  Counter* next;
};
constinit std::atomic<Counter*> counters = nullptr;

/// The driver's function of that name, without arguments: the call casts it to its own type.
template <objc::FixedString Name>
class Function {
 public:
  template <class R, class... A>
  static R call(A... arguments) {
    counter().calls.fetch_add(1, std::memory_order_relaxed);
    const Bound bound;
    if (!bound) return R();
    static const auto driver = reinterpret_cast<R (*)(A...)>(eglGetProcAddress(Name.text));
    return driver(arguments...);
  }

 private:
  static Counter& counter() {
    static Counter* mine = [] {
      auto* made = new Counter{Name.text, {}, counters.load()};
      while (!counters.compare_exchange_weak(made->next, made)) {
      }
      return made;
    }();
    return *mine;
  }
};

}  // namespace

bool failsToCompile(GLuint shader) {
  if (failingType == 0) return false;
  constexpr GLenum kShaderType = 0x8B4F;
  GLint type = 0;
  Function<"glGetShaderiv">::call<void>(shader, kShaderType, &type);
  return type != 0 && static_cast<GLenum>(type) == failingType;
}

void failCompile(GLenum type) { failingType = type; }
void failLink(bool fails) { linkFails = fails; }

std::uint64_t callCount(std::string_view function) {
  for (Counter* counter = counters; counter != nullptr; counter = counter->next) {
    if (function == counter->name) return counter->calls;
  }
  return 0;
}

std::uint64_t callCount() {
  std::uint64_t sum = 0;
  for (Counter* counter = counters; counter != nullptr; counter = counter->next)
    sum += counter->calls;
  return sum;
}

}  // namespace host::gl

using host::gl::Function;

// A function of the driver under its own name: result, name, parameters, arguments.
#define GL_FUNCTION(Result, Name, Parameters, Arguments) \
  HOST_EXPORT Result Name Parameters { return Function<#Name>::call<Result> Arguments; }

extern "C" {
GL_FUNCTION(void, glActiveTexture, (GLenum texture), (texture))
GL_FUNCTION(void, glAttachShader, (GLuint program, GLuint shader), (program, shader))
GL_FUNCTION(void, glBindBuffer, (GLenum target, GLuint buffer), (target, buffer))
GL_FUNCTION(void, glBindFramebuffer, (GLenum target, GLuint framebuffer), (target, framebuffer))
GL_FUNCTION(void, glBindRenderbuffer, (GLenum target, GLuint renderbuffer), (target, renderbuffer))
GL_FUNCTION(void, glBindTexture, (GLenum target, GLuint texture), (target, texture))
GL_FUNCTION(void, glBlendFunc, (GLenum source, GLenum destination), (source, destination))
GL_FUNCTION(void, glBufferData, (GLenum target, GLsizeiptr size, const void* data, GLenum usage),
            (target, size, data, usage))
GL_FUNCTION(void, glClear, (GLbitfield mask), (mask))
GL_FUNCTION(void, glClearColor, (GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha),
            (red, green, blue, alpha))
GL_FUNCTION(void, glCompileShader, (GLuint shader), (shader))
GL_FUNCTION(GLuint, glCreateProgram, (), ())
GL_FUNCTION(GLuint, glCreateShader, (GLenum type), (type))
GL_FUNCTION(void, glDeleteProgram, (GLuint program), (program))
GL_FUNCTION(void, glDeleteShader, (GLuint shader), (shader))
GL_FUNCTION(void, glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices),
            (mode, count, type, indices))
GL_FUNCTION(void, glEnable, (GLenum capability), (capability))
GL_FUNCTION(void, glEnableVertexAttribArray, (GLuint index), (index))
GL_FUNCTION(void, glFramebufferRenderbuffer,
            (GLenum target, GLenum attachment, GLenum renderbufferTarget, GLuint renderbuffer),
            (target, attachment, renderbufferTarget, renderbuffer))
GL_FUNCTION(void, glGenBuffers, (GLsizei count, GLuint* buffers), (count, buffers))
GL_FUNCTION(void, glGenFramebuffers, (GLsizei count, GLuint* framebuffers), (count, framebuffers))
GL_FUNCTION(void, glGenRenderbuffers, (GLsizei count, GLuint* renderbuffers),
            (count, renderbuffers))
GL_FUNCTION(void, glGenTextures, (GLsizei count, GLuint* textures), (count, textures))
GL_FUNCTION(GLint, glGetAttribLocation, (GLuint program, const GLchar* name), (program, name))
GL_FUNCTION(void, glGetIntegerv, (GLenum name, GLint* values), (name, values))
GL_FUNCTION(void, glGetProgramInfoLog, (GLuint program, GLsizei size, GLsizei* length, GLchar* log),
            (program, size, length, log))
GL_FUNCTION(GLint, glGetUniformLocation, (GLuint program, const GLchar* name), (program, name))
GL_FUNCTION(GLboolean, glIsBuffer, (GLuint buffer), (buffer))
GL_FUNCTION(GLboolean, glIsProgram, (GLuint program), (program))
GL_FUNCTION(GLboolean, glIsRenderbuffer, (GLuint renderbuffer), (renderbuffer))
GL_FUNCTION(GLboolean, glIsShader, (GLuint shader), (shader))
GL_FUNCTION(GLboolean, glIsTexture, (GLuint texture), (texture))
GL_FUNCTION(void, glLinkProgram, (GLuint program), (program))
GL_FUNCTION(void, glReadPixels,
            (GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
             void* pixels),
            (x, y, width, height, format, type, pixels))
GL_FUNCTION(void, glRenderbufferStorage,
            (GLenum target, GLenum format, GLsizei width, GLsizei height),
            (target, format, width, height))
GL_FUNCTION(void, glShaderSource,
            (GLuint shader, GLsizei count, const GLchar* const* strings, const GLint* lengths),
            (shader, count, strings, lengths))
GL_FUNCTION(void, glTexImage2D,
            (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
             GLint border, GLenum format, GLenum type, const void* pixels),
            (target, level, internalFormat, width, height, border, format, type, pixels))
GL_FUNCTION(void, glTexParameteri, (GLenum target, GLenum name, GLint value), (target, name, value))
GL_FUNCTION(void, glUniform1i, (GLint location, GLint value), (location, value))
GL_FUNCTION(void, glUseProgram, (GLuint program), (program))
GL_FUNCTION(void, glValidateProgram, (GLuint program), (program))
GL_FUNCTION(void, glVertexAttribPointer,
            (GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride,
             const void* pointer),
            (index, size, type, normalized, stride, pointer))
GL_FUNCTION(void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height),
            (x, y, width, height))

HOST_EXPORT void glGetShaderiv(GLuint shader, GLenum name, GLint* value) {
  Function<"glGetShaderiv">::call<void>(shader, name, value);
  if (name == GL_COMPILE_STATUS && host::gl::failsToCompile(shader)) *value = 0;
}
HOST_EXPORT void glGetProgramiv(GLuint program, GLenum name, GLint* value) {
  Function<"glGetProgramiv">::call<void>(program, name, value);
  if (name == GL_LINK_STATUS && host::gl::linkFails) *value = 0;
}
}
