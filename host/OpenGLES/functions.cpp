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

extern "C" {
HOST_EXPORT void glActiveTexture(GLenum texture) {
  Function<"glActiveTexture">::call<void>(texture);
}
HOST_EXPORT void glAttachShader(GLuint program, GLuint shader) {
  Function<"glAttachShader">::call<void>(program, shader);
}
HOST_EXPORT void glBindBuffer(GLenum target, GLuint buffer) {
  Function<"glBindBuffer">::call<void>(target, buffer);
}
HOST_EXPORT void glBindFramebuffer(GLenum target, GLuint framebuffer) {
  Function<"glBindFramebuffer">::call<void>(target, framebuffer);
}
HOST_EXPORT void glBindRenderbuffer(GLenum target, GLuint renderbuffer) {
  Function<"glBindRenderbuffer">::call<void>(target, renderbuffer);
}
HOST_EXPORT void glBindTexture(GLenum target, GLuint texture) {
  Function<"glBindTexture">::call<void>(target, texture);
}
HOST_EXPORT void glBlendFunc(GLenum source, GLenum destination) {
  Function<"glBlendFunc">::call<void>(source, destination);
}
HOST_EXPORT void glBufferData(GLenum target, GLsizeiptr size, const void* data, GLenum usage) {
  Function<"glBufferData">::call<void>(target, size, data, usage);
}
HOST_EXPORT void glClear(GLbitfield mask) { Function<"glClear">::call<void>(mask); }
HOST_EXPORT void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha) {
  Function<"glClearColor">::call<void>(red, green, blue, alpha);
}
HOST_EXPORT void glCompileShader(GLuint shader) { Function<"glCompileShader">::call<void>(shader); }
HOST_EXPORT GLuint glCreateProgram() { return Function<"glCreateProgram">::call<GLuint>(); }
HOST_EXPORT GLuint glCreateShader(GLenum type) {
  return Function<"glCreateShader">::call<GLuint>(type);
}
HOST_EXPORT void glDeleteProgram(GLuint program) {
  Function<"glDeleteProgram">::call<void>(program);
}
HOST_EXPORT void glDeleteShader(GLuint shader) { Function<"glDeleteShader">::call<void>(shader); }
HOST_EXPORT void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
  Function<"glDrawElements">::call<void>(mode, count, type, indices);
}
HOST_EXPORT void glEnable(GLenum capability) { Function<"glEnable">::call<void>(capability); }
HOST_EXPORT void glEnableVertexAttribArray(GLuint index) {
  Function<"glEnableVertexAttribArray">::call<void>(index);
}
HOST_EXPORT void glFramebufferRenderbuffer(GLenum target, GLenum attachment,
                                           GLenum renderbufferTarget, GLuint renderbuffer) {
  Function<"glFramebufferRenderbuffer">::call<void>(target, attachment, renderbufferTarget,
                                                    renderbuffer);
}
HOST_EXPORT void glGenBuffers(GLsizei count, GLuint* buffers) {
  Function<"glGenBuffers">::call<void>(count, buffers);
}
HOST_EXPORT void glGenFramebuffers(GLsizei count, GLuint* framebuffers) {
  Function<"glGenFramebuffers">::call<void>(count, framebuffers);
}
HOST_EXPORT void glGenRenderbuffers(GLsizei count, GLuint* renderbuffers) {
  Function<"glGenRenderbuffers">::call<void>(count, renderbuffers);
}
HOST_EXPORT void glGenTextures(GLsizei count, GLuint* textures) {
  Function<"glGenTextures">::call<void>(count, textures);
}
HOST_EXPORT GLint glGetAttribLocation(GLuint program, const GLchar* name) {
  return Function<"glGetAttribLocation">::call<GLint>(program, name);
}
HOST_EXPORT void glGetIntegerv(GLenum name, GLint* values) {
  Function<"glGetIntegerv">::call<void>(name, values);
}
HOST_EXPORT void glGetProgramInfoLog(GLuint program, GLsizei size, GLsizei* length, GLchar* log) {
  Function<"glGetProgramInfoLog">::call<void>(program, size, length, log);
}
HOST_EXPORT void glGetProgramiv(GLuint program, GLenum name, GLint* value) {
  Function<"glGetProgramiv">::call<void>(program, name, value);
  if (name == GL_LINK_STATUS && host::gl::linkFails) *value = 0;
}
HOST_EXPORT void glGetShaderiv(GLuint shader, GLenum name, GLint* value) {
  Function<"glGetShaderiv">::call<void>(shader, name, value);
  if (name == GL_COMPILE_STATUS && host::gl::failsToCompile(shader)) *value = 0;
}
HOST_EXPORT GLint glGetUniformLocation(GLuint program, const GLchar* name) {
  return Function<"glGetUniformLocation">::call<GLint>(program, name);
}
HOST_EXPORT GLboolean glIsBuffer(GLuint buffer) {
  return Function<"glIsBuffer">::call<GLboolean>(buffer);
}
HOST_EXPORT GLboolean glIsProgram(GLuint program) {
  return Function<"glIsProgram">::call<GLboolean>(program);
}
HOST_EXPORT GLboolean glIsRenderbuffer(GLuint renderbuffer) {
  return Function<"glIsRenderbuffer">::call<GLboolean>(renderbuffer);
}
HOST_EXPORT GLboolean glIsShader(GLuint shader) {
  return Function<"glIsShader">::call<GLboolean>(shader);
}
HOST_EXPORT GLboolean glIsTexture(GLuint texture) {
  return Function<"glIsTexture">::call<GLboolean>(texture);
}
HOST_EXPORT void glLinkProgram(GLuint program) { Function<"glLinkProgram">::call<void>(program); }
HOST_EXPORT void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format,
                              GLenum type, void* pixels) {
  Function<"glReadPixels">::call<void>(x, y, width, height, format, type, pixels);
}
HOST_EXPORT void glRenderbufferStorage(GLenum target, GLenum format, GLsizei width,
                                       GLsizei height) {
  Function<"glRenderbufferStorage">::call<void>(target, format, width, height);
}
HOST_EXPORT void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* strings,
                                const GLint* lengths) {
  Function<"glShaderSource">::call<void>(shader, count, strings, lengths);
}
HOST_EXPORT void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                              GLsizei height, GLint border, GLenum format, GLenum type,
                              const void* pixels) {
  Function<"glTexImage2D">::call<void>(target, level, internalFormat, width, height, border, format,
                                       type, pixels);
}
HOST_EXPORT void glTexParameteri(GLenum target, GLenum name, GLint value) {
  Function<"glTexParameteri">::call<void>(target, name, value);
}
HOST_EXPORT void glUniform1i(GLint location, GLint value) {
  Function<"glUniform1i">::call<void>(location, value);
}
HOST_EXPORT void glUseProgram(GLuint program) { Function<"glUseProgram">::call<void>(program); }
HOST_EXPORT void glValidateProgram(GLuint program) {
  Function<"glValidateProgram">::call<void>(program);
}
HOST_EXPORT void glVertexAttribPointer(GLuint index, GLint size, GLenum type, GLboolean normalized,
                                       GLsizei stride, const void* pointer) {
  Function<"glVertexAttribPointer">::call<void>(index, size, type, normalized, stride, pointer);
}
HOST_EXPORT void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
  Function<"glViewport">::call<void>(x, y, width, height);
}
}
