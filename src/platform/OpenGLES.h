// OpenGL ES 2.0 and its contexts.
#pragma once

#include <cstdint>

#include "platform/Foundation.h"

using GLbitfield = std::uint32_t;
using GLboolean = std::uint8_t;
using GLchar = char;
using GLclampf = float;
using GLenum = std::uint32_t;
using GLfloat = float;
using GLint = std::int32_t;
using GLintptr = std::intptr_t;
using GLsizei = std::int32_t;
using GLsizeiptr = std::intptr_t;
using GLubyte = std::uint8_t;
using GLuint = std::uint32_t;

inline constexpr NSUInteger kEAGLRenderingAPIOpenGLES2 = 2;

struct EAGLContext : objc::View<EAGLContext, NSObject> {
  /// Nil if there is no such API.
  static constexpr Message<"initWithAPI:", EAGLContext*(NSUInteger)> initWithAPI{};
  /// The context of the calling thread's GL calls; nil for none.
  static constexpr ClassMessage<"currentContext", EAGLContext*()> currentContext{};
  /// It is kept alive while it is current. NO if that fails.
  static constexpr ClassMessage<"setCurrentContext:", bool(EAGLContext*)> setCurrentContext{};
};

struct CAEAGLLayer : objc::View<CAEAGLLayer, NSObject> {};

inline constexpr GLboolean GL_FALSE = 0;
inline constexpr GLboolean GL_TRUE = 1;
inline constexpr GLenum GL_ZERO = 0;
inline constexpr GLenum GL_ONE = 1;
inline constexpr GLenum GL_TRIANGLES = 0x0004;
inline constexpr GLenum GL_BLEND = 0x0BE2;
inline constexpr GLenum GL_TEXTURE_2D = 0x0DE1;
inline constexpr GLenum GL_UNSIGNED_BYTE = 0x1401;
inline constexpr GLenum GL_FLOAT = 0x1406;
inline constexpr GLenum GL_RGBA = 0x1908;
inline constexpr GLenum GL_NEAREST = 0x2600;
inline constexpr GLenum GL_TEXTURE_MIN_FILTER = 0x2801;
inline constexpr GLbitfield GL_COLOR_BUFFER_BIT = 0x4000;
inline constexpr GLenum GL_RGBA8_OES = 0x8058;
inline constexpr GLenum GL_DEPTH_COMPONENT16 = 0x81A5;
inline constexpr GLenum GL_TEXTURE0 = 0x84C0;
inline constexpr GLenum GL_ARRAY_BUFFER = 0x8892;
inline constexpr GLenum GL_ELEMENT_ARRAY_BUFFER = 0x8893;
inline constexpr GLenum GL_STATIC_DRAW = 0x88E4;
inline constexpr GLenum GL_FRAGMENT_SHADER = 0x8B30;
inline constexpr GLenum GL_VERTEX_SHADER = 0x8B31;
inline constexpr GLenum GL_COMPILE_STATUS = 0x8B81;
inline constexpr GLenum GL_LINK_STATUS = 0x8B82;
inline constexpr GLenum GL_VALIDATE_STATUS = 0x8B83;
inline constexpr GLenum GL_INFO_LOG_LENGTH = 0x8B84;
inline constexpr GLenum GL_FRAMEBUFFER_BINDING = 0x8CA6;
inline constexpr GLenum GL_COLOR_ATTACHMENT0 = 0x8CE0;
inline constexpr GLenum GL_DEPTH_ATTACHMENT = 0x8D00;
inline constexpr GLenum GL_FRAMEBUFFER = 0x8D40;
inline constexpr GLenum GL_RENDERBUFFER = 0x8D41;

// Without a current context every call does nothing, and every query returns 0.
#pragma GCC visibility push(default)
extern "C" {
void glActiveTexture(GLenum texture);
void glAttachShader(GLuint program, GLuint shader);
void glBindBuffer(GLenum target, GLuint buffer);
void glBindFramebuffer(GLenum target, GLuint framebuffer);
void glBindRenderbuffer(GLenum target, GLuint renderbuffer);
void glBindTexture(GLenum target, GLuint texture);
void glBlendFunc(GLenum source, GLenum destination);
void glBufferData(GLenum target, GLsizeiptr size, const void* data, GLenum usage);
void glClear(GLbitfield mask);
void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha);
void glCompileShader(GLuint shader);
GLuint glCreateProgram();
GLuint glCreateShader(GLenum type);
void glDeleteProgram(GLuint program);
void glDeleteShader(GLuint shader);
void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices);
void glEnable(GLenum capability);
void glEnableVertexAttribArray(GLuint index);
void glFramebufferRenderbuffer(GLenum target, GLenum attachment, GLenum renderbufferTarget,
                               GLuint renderbuffer);
void glGenBuffers(GLsizei count, GLuint* buffers);
void glGenFramebuffers(GLsizei count, GLuint* framebuffers);
void glGenRenderbuffers(GLsizei count, GLuint* renderbuffers);
void glGenTextures(GLsizei count, GLuint* textures);
GLint glGetAttribLocation(GLuint program, const GLchar* name);
void glGetIntegerv(GLenum name, GLint* values);
void glGetProgramInfoLog(GLuint program, GLsizei size, GLsizei* length, GLchar* log);
void glGetProgramiv(GLuint program, GLenum name, GLint* value);
void glGetShaderiv(GLuint shader, GLenum name, GLint* value);
GLint glGetUniformLocation(GLuint program, const GLchar* name);
GLboolean glIsBuffer(GLuint buffer);
GLboolean glIsProgram(GLuint program);
GLboolean glIsRenderbuffer(GLuint renderbuffer);
GLboolean glIsShader(GLuint shader);
GLboolean glIsTexture(GLuint texture);
void glLinkProgram(GLuint program);
void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                  void* pixels);
void glRenderbufferStorage(GLenum target, GLenum format, GLsizei width, GLsizei height);
void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* strings,
                    const GLint* lengths);
void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void* pixels);
void glTexParameteri(GLenum target, GLenum name, GLint value);
void glUniform1i(GLint location, GLint value);
void glUseProgram(GLuint program);
void glValidateProgram(GLuint program);
void glVertexAttribPointer(GLuint index, GLint size, GLenum type, GLboolean normalized,
                           GLsizei stride, const void* pointer);
void glViewport(GLint x, GLint y, GLsizei width, GLsizei height);
}
#pragma GCC visibility pop
