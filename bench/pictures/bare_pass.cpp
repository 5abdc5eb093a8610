#include "bare_pass.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <bit>
#include <cstddef>

#include "picker/frame_size.h"
#include "picker/quad.h"
#include "picker/shaders.h"

namespace bench {

/// The driver's functions, with the types that the platform declares.
struct BarePass::Driver {
  template <class F>
  static F* find(const char* name) {
    return reinterpret_cast<F*>(eglGetProcAddress(name));
  }
#define DRIVER_FUNCTION(name) decltype(::name)* name = find<decltype(::name)>(#name)
  DRIVER_FUNCTION(glActiveTexture);
  DRIVER_FUNCTION(glAttachShader);
  DRIVER_FUNCTION(glBindBuffer);
  DRIVER_FUNCTION(glBindFramebuffer);
  DRIVER_FUNCTION(glBindRenderbuffer);
  DRIVER_FUNCTION(glBindTexture);
  DRIVER_FUNCTION(glBlendFunc);
  DRIVER_FUNCTION(glBufferData);
  DRIVER_FUNCTION(glCompileShader);
  DRIVER_FUNCTION(glCreateProgram);
  DRIVER_FUNCTION(glCreateShader);
  DRIVER_FUNCTION(glDrawElements);
  DRIVER_FUNCTION(glEnable);
  DRIVER_FUNCTION(glEnableVertexAttribArray);
  DRIVER_FUNCTION(glFramebufferRenderbuffer);
  DRIVER_FUNCTION(glGenBuffers);
  DRIVER_FUNCTION(glGenFramebuffers);
  DRIVER_FUNCTION(glGenRenderbuffers);
  DRIVER_FUNCTION(glGenTextures);
  DRIVER_FUNCTION(glGetAttribLocation);
  DRIVER_FUNCTION(glGetProgramiv);
  DRIVER_FUNCTION(glGetUniformLocation);
  DRIVER_FUNCTION(glLinkProgram);
  DRIVER_FUNCTION(glReadPixels);
  DRIVER_FUNCTION(glRenderbufferStorage);
  DRIVER_FUNCTION(glShaderSource);
  DRIVER_FUNCTION(glTexImage2D);
  DRIVER_FUNCTION(glTexParameteri);
  DRIVER_FUNCTION(glUniform1i);
  DRIVER_FUNCTION(glUseProgram);
  DRIVER_FUNCTION(glVertexAttribPointer);
  DRIVER_FUNCTION(glViewport);
#undef DRIVER_FUNCTION

  GLuint shader(GLenum type, const char* source) const {
    const GLuint made = glCreateShader(type);
    glShaderSource(made, 1, &source, nullptr);
    glCompileShader(made);
    return made;
  }
  void storage(GLenum format, GLenum attachment) const {
    GLuint buffer = 0;
    glGenRenderbuffers(1, &buffer);
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorage(GL_RENDERBUFFER, format, kTotalWidth, kTotalWidth);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
  }
  template <class Table>
  void buffer(GLenum target, const Table& table) const {
    GLuint made = 0;
    glGenBuffers(1, &made);
    glBindBuffer(target, made);
    glBufferData(target, sizeof table, &table, GL_STATIC_DRAW);
  }
  void attribute(const char* name, GLint components, std::size_t offset) const {
    const GLint slot = glGetAttribLocation(program, name);
    if (slot < 0) return;  // optimised away
    glEnableVertexAttribArray(static_cast<GLuint>(slot));
    glVertexAttribPointer(static_cast<GLuint>(slot), components, GL_FLOAT, GL_FALSE, sizeof(Vertex),
                          std::bit_cast<const void*>(offset));
  }

  GLuint program = 0;
};

BarePass::BarePass()
    : frame_(static_cast<std::size_t>(kTotalWidth) * kTotalWidth * sizeof(std::uint32_t)) {}

std::unique_ptr<BarePass> BarePass::make() {
  std::unique_ptr<BarePass> pass(new BarePass);
  if (!pass->setUp()) return nullptr;
  return pass;
}

bool BarePass::setUp() {
  const auto getDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
      eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (getDisplay == nullptr) return false;
  display_ = getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  if (eglInitialize(display_, nullptr, nullptr) == EGL_FALSE) return false;
  eglBindAPI(EGL_OPENGL_ES_API);
  const EGLint attributes[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
  context_ = eglCreateContext(display_, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, attributes);
  if (context_ == EGL_NO_CONTEXT || !bind()) return false;

  driver_ = std::make_unique<Driver>();
  const Driver& gl = *driver_;
  GLuint framebuffer = 0;
  gl.glGenFramebuffers(1, &framebuffer);
  gl.glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
  gl.storage(GL_RGBA8_OES, GL_COLOR_ATTACHMENT0);
  gl.storage(GL_DEPTH_COMPONENT16, GL_DEPTH_ATTACHMENT);
  driver_->program = gl.glCreateProgram();
  gl.glAttachShader(gl.program, gl.shader(GL_VERTEX_SHADER, kDominantVertexShaderString));
  gl.glAttachShader(gl.program, gl.shader(GL_FRAGMENT_SHADER, kDominantFragmentShaderString));
  gl.glLinkProgram(gl.program);
  GLint isLinked = 0;
  gl.glGetProgramiv(gl.program, GL_LINK_STATUS, &isLinked);
  gl.glUseProgram(gl.program);
  gl.buffer(GL_ARRAY_BUFFER, Vertices);
  gl.buffer(GL_ELEMENT_ARRAY_BUFFER, Indices);
  gl.attribute("Position", 3, offsetof(Vertex, position));
  gl.attribute("SourceColor", 4, offsetof(Vertex, color));
  gl.attribute("TexCoordIn", 2, offsetof(Vertex, textureCoordinate));
  GLuint texture = 0;
  gl.glGenTextures(1, &texture);
  gl.glActiveTexture(GL_TEXTURE0);
  gl.glBindTexture(GL_TEXTURE_2D, texture);
  gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  gl.glUniform1i(gl.glGetUniformLocation(gl.program, "Texture"), 0);
  gl.glUniform1i(gl.glGetUniformLocation(gl.program, "ProccesedWidth"), kProccesedWidth);
  gl.glUniform1i(gl.glGetUniformLocation(gl.program, "TotalWidth"), kTotalWidth);
  gl.glEnable(GL_BLEND);
  gl.glBlendFunc(GL_ONE, GL_ZERO);
  gl.glViewport(0, 0, kTotalWidth, kTotalWidth);
  unbind();
  return isLinked != 0;
}

// The display belongs to the process; the picker's context uses it too.
BarePass::~BarePass() {
  unbind();
  if (context_ != nullptr) eglDestroyContext(display_, context_);
}

bool BarePass::bind() const {
  return eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_) != EGL_FALSE;
}

void BarePass::unbind() const {
  eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

void BarePass::run(const std::uint8_t* pixels) {
  driver_->glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, kTotalWidth, kTotalWidth, 0, GL_RGBA,
                        GL_UNSIGNED_BYTE, pixels);
  driver_->glDrawElements(GL_TRIANGLES, sizeof Indices, GL_UNSIGNED_BYTE, nullptr);
  driver_->glReadPixels(0, 0, kTotalWidth, kTotalWidth, GL_RGBA, GL_UNSIGNED_BYTE, frame_.data());
}

}  // namespace bench
