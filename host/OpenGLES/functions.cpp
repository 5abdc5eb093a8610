// OpenGL ES 2.0 under its own names.
#include <atomic>

#include "OpenGLES/call.h"
#include "OpenGLES/gl.h"

namespace host::gl {

namespace {

std::atomic<GLenum> failingType = 0;
std::atomic<bool> linkFails = false;

bool failsToCompile(GLuint shader) {
  constexpr GLenum kShaderType = 0x8B4F;
  if (failingType == 0) return false;
  GLint type = 0;
  uncounted<"glGetShaderiv">(shader, kShaderType, &type);
  return type != 0 && static_cast<GLenum>(type) == failingType;
}

bool failsToLink(GLuint program) {
  return linkFails && uncounted<"glIsProgram", GLboolean>(program) != GL_FALSE;
}

}  // namespace

void failCompile(GLenum type) { failingType = type; }
void failLink(bool fails) { linkFails = fails; }

}  // namespace host::gl

using host::gl::call;

void glActiveTexture(GLenum texture) { call<"glActiveTexture">(texture); }
void glAttachShader(GLuint program, GLuint shader) { call<"glAttachShader">(program, shader); }
void glBindBuffer(GLenum target, GLuint buffer) { call<"glBindBuffer">(target, buffer); }
void glBindFramebuffer(GLenum target, GLuint framebuffer) {
  call<"glBindFramebuffer">(target, framebuffer);
}
void glBindRenderbuffer(GLenum target, GLuint renderbuffer) {
  call<"glBindRenderbuffer">(target, renderbuffer);
}
void glBindTexture(GLenum target, GLuint texture) { call<"glBindTexture">(target, texture); }
void glBlendFunc(GLenum source, GLenum destination) { call<"glBlendFunc">(source, destination); }
void glBufferData(GLenum target, GLsizeiptr size, const void* data, GLenum usage) {
  call<"glBufferData">(target, size, data, usage);
}
void glClear(GLbitfield mask) { call<"glClear">(mask); }
void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha) {
  call<"glClearColor">(red, green, blue, alpha);
}
void glCompileShader(GLuint shader) { call<"glCompileShader">(shader); }
GLuint glCreateProgram() { return call<"glCreateProgram", GLuint>(); }
GLuint glCreateShader(GLenum type) { return call<"glCreateShader", GLuint>(type); }
void glDeleteProgram(GLuint program) { call<"glDeleteProgram">(program); }
void glDeleteShader(GLuint shader) { call<"glDeleteShader">(shader); }
void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
  call<"glDrawElements">(mode, count, type, indices);
}
void glEnable(GLenum capability) { call<"glEnable">(capability); }
void glEnableVertexAttribArray(GLuint index) { call<"glEnableVertexAttribArray">(index); }
void glFramebufferRenderbuffer(GLenum target, GLenum attachment, GLenum renderbufferTarget,
                               GLuint renderbuffer) {
  call<"glFramebufferRenderbuffer">(target, attachment, renderbufferTarget, renderbuffer);
}
void glGenBuffers(GLsizei count, GLuint* buffers) { call<"glGenBuffers">(count, buffers); }
void glGenFramebuffers(GLsizei count, GLuint* framebuffers) {
  call<"glGenFramebuffers">(count, framebuffers);
}
void glGenRenderbuffers(GLsizei count, GLuint* renderbuffers) {
  call<"glGenRenderbuffers">(count, renderbuffers);
}
void glGenTextures(GLsizei count, GLuint* textures) { call<"glGenTextures">(count, textures); }
GLint glGetAttribLocation(GLuint program, const GLchar* name) {
  return call<"glGetAttribLocation", GLint>(program, name);
}
void glGetIntegerv(GLenum name, GLint* values) { call<"glGetIntegerv">(name, values); }
void glGetProgramInfoLog(GLuint program, GLsizei size, GLsizei* length, GLchar* log) {
  call<"glGetProgramInfoLog">(program, size, length, log);
}
GLint glGetUniformLocation(GLuint program, const GLchar* name) {
  return call<"glGetUniformLocation", GLint>(program, name);
}
GLboolean glIsBuffer(GLuint buffer) { return call<"glIsBuffer", GLboolean>(buffer); }
GLboolean glIsProgram(GLuint program) { return call<"glIsProgram", GLboolean>(program); }
GLboolean glIsRenderbuffer(GLuint renderbuffer) {
  return call<"glIsRenderbuffer", GLboolean>(renderbuffer);
}
GLboolean glIsShader(GLuint shader) { return call<"glIsShader", GLboolean>(shader); }
GLboolean glIsTexture(GLuint texture) { return call<"glIsTexture", GLboolean>(texture); }
void glLinkProgram(GLuint program) { call<"glLinkProgram">(program); }
void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                  void* pixels) {
  call<"glReadPixels">(x, y, width, height, format, type, pixels);
}
void glRenderbufferStorage(GLenum target, GLenum format, GLsizei width, GLsizei height) {
  call<"glRenderbufferStorage">(target, format, width, height);
}
void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* strings,
                    const GLint* lengths) {
  call<"glShaderSource">(shader, count, strings, lengths);
}
void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void* pixels) {
  call<"glTexImage2D">(target, level, internalFormat, width, height, border, format, type, pixels);
}
void glTexParameteri(GLenum target, GLenum name, GLint value) {
  call<"glTexParameteri">(target, name, value);
}
void glUniform1i(GLint location, GLint value) { call<"glUniform1i">(location, value); }
void glUseProgram(GLuint program) { call<"glUseProgram">(program); }
void glValidateProgram(GLuint program) { call<"glValidateProgram">(program); }
void glVertexAttribPointer(GLuint index, GLint size, GLenum type, GLboolean normalized,
                           GLsizei stride, const void* pointer) {
  call<"glVertexAttribPointer">(index, size, type, normalized, stride, pointer);
}
void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
  call<"glViewport">(x, y, width, height);
}

void glGetShaderiv(GLuint shader, GLenum name, GLint* value) {
  call<"glGetShaderiv">(shader, name, value);
  if (name == GL_COMPILE_STATUS && host::gl::failsToCompile(shader)) *value = GL_FALSE;
}

void glGetProgramiv(GLuint program, GLenum name, GLint* value) {
  call<"glGetProgramiv">(program, name, value);
  if (name == GL_LINK_STATUS && host::gl::failsToLink(program)) *value = GL_FALSE;
}
