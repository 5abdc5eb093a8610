// Makes what a pass needs in the picker's context, if the context does not have it yet. Nothing is
// deleted; everything goes with the context.
#include "objc/association.h"
#include "picker/CQColorPicker_object.h"
#include "picker/frame_size.h"
#include "picker/quad.h"
#include "picker/shaders.h"

namespace varnix {

namespace {

/// If the fragment shader fails, the vertex shader has no program and waits for the next request
/// under this key of the context.
SEL waitingShaderKey() { return objc::Selector<"waitingVertexShader">::get(); }

GLuint waitingShader(EAGLContext* context) {
  auto* name = objc::associated<NSNumber>(context, waitingShaderKey());
  const auto shader = static_cast<GLuint>(send(name, NSNumber::longLongValue));
  return glIsShader(shader) != GL_FALSE ? shader : 0;
}

void keepWaitingShader(EAGLContext* context, GLuint shader) {
  if (context == nullptr) return;
  objc::associate(context, waitingShaderKey(), NSNumber::numberWithLongLong(shader),
                  AssociationPolicy::retain);
}

/// What a pass without a program leaves in the frame, instead of an earlier image's pixels.
bool failWithBlackFrame() {
  glUseProgram(0);
  glClearColor(0, 0, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT);
  return false;
}

GLuint uniform(GLuint program, const char* name) {
  return static_cast<GLuint>(glGetUniformLocation(program, name));
}
GLuint attribute(GLuint program, const char* name) {
  return static_cast<GLuint>(glGetAttribLocation(program, name));
}

void setupStorage(GLuint& renderbuffer, GLenum format, GLenum attachment) {
  if (glIsRenderbuffer(renderbuffer) != GL_FALSE) return;
  glGenRenderbuffers(1, &renderbuffer);
  glBindRenderbuffer(GL_RENDERBUFFER, renderbuffer);
  glRenderbufferStorage(GL_RENDERBUFFER, format, kTotalWidth, kTotalWidth);
  glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, renderbuffer);
}

template <class Table>
void setupBuffer(GLuint& buffer, GLenum target, const Table& table) {
  if (glIsBuffer(buffer) != GL_FALSE) return;
  glGenBuffers(1, &buffer);
  glBindBuffer(target, buffer);
  glBufferData(target, sizeof table, &table, GL_STATIC_DRAW);
}

}  // namespace

void ColorPicker::setupOpenGL() {
  if (!send(self(), CQColorPicker::setupContext)) return;
  send(self(), CQColorPicker::setupFrameBuffer);
  send(self(), CQColorPicker::setupRenderBuffer);
  send(self(), CQColorPicker::setupDepthBuffer);
  send(self(), CQColorPicker::setupOpenGLForDominantColor);
  send(self(), CQColorPicker::setupVBOs);
}

bool ColorPicker::setupContext() {
  if (_context == nullptr) {
    _context = Strong<EAGLContext>::adopt(
        send(objc::alloc<EAGLContext>(), EAGLContext::initWithAPI, kEAGLRenderingAPIOpenGLES2));
  }
  if (_context == nullptr) {
    NSLog("Failed to initialize OpenGLES 2.0 context"_ns);
  } else if (EAGLContext::setCurrentContext(_context)) {
    return true;
  } else {
    NSLog("Failed to set current OpenGL context"_ns);
  }
  // The rest of the pass must not reach someone else's context.
  EAGLContext::setCurrentContext(nullptr);
  return false;
}

void ColorPicker::setupFrameBuffer() {
  if (!isContextCurrent()) return;
  GLint bound = 0;
  glGetIntegerv(GL_FRAMEBUFFER_BINDING, &bound);
  if (bound != 0) return;
  GLuint framebuffer = 0;
  glGenFramebuffers(1, &framebuffer);
  glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
}

void ColorPicker::setupRenderBuffer() {
  if (!isContextCurrent()) return;
  setupStorage(_colorRenderBuffer, GL_RGBA8_OES, GL_COLOR_ATTACHMENT0);
}

void ColorPicker::setupDepthBuffer() {
  if (!isContextCurrent()) return;
  setupStorage(_depthRenderBuffer, GL_DEPTH_COMPONENT16, GL_DEPTH_ATTACHMENT);
}

void ColorPicker::setupVBOs() {
  if (!isContextCurrent()) return;
  setupBuffer(_vertexBuffer, GL_ARRAY_BUFFER, Vertices);
  setupBuffer(_indexBuffer, GL_ELEMENT_ARRAY_BUFFER, Indices);
}

bool ColorPicker::setupOpenGLForDominantColor() {
  if (!isContextCurrent()) return false;
  if (glIsProgram(_program) != GL_FALSE) return true;
  auto compile = [this](GLuint* shader, GLenum type, const char* source) {
    return send(self(), CQColorPicker::compileShader, shader, type,
                NSString::stringWithUTF8String(source));
  };
  GLuint vertexShader = waitingShader(_context);
  if (vertexShader == 0 && !compile(&vertexShader, GL_VERTEX_SHADER, kDominantVertexShaderString)) {
    return failWithBlackFrame();
  }
  GLuint fragmentShader = 0;
  if (!compile(&fragmentShader, GL_FRAGMENT_SHADER, kDominantFragmentShaderString)) {
    keepWaitingShader(_context, vertexShader);
    return failWithBlackFrame();
  }
  _program = glCreateProgram();
  glAttachShader(_program, vertexShader);
  glAttachShader(_program, fragmentShader);
  if (!send(self(), CQColorPicker::linkProgram, _program)) {
    if (vertexShader != 0) glDeleteShader(vertexShader);
    if (fragmentShader != 0) glDeleteShader(fragmentShader);
    if (_program != 0) glDeleteProgram(_program);
    _program = 0;
    return failWithBlackFrame();
  }
  glUseProgram(_program);
  _positionSlot = attribute(_program, "Position");
  _colorSlot = attribute(_program, "SourceColor");
  _texCoordSlot = attribute(_program, "TexCoordIn");
  glEnableVertexAttribArray(_positionSlot);
  glEnableVertexAttribArray(_colorSlot);
  glEnableVertexAttribArray(_texCoordSlot);
  _textureUniform = uniform(_program, "Texture");
  _proccesedWidthSlot = uniform(_program, "ProccesedWidth");
  _totalWidthSlot = uniform(_program, "TotalWidth");
  return true;
}

bool ColorPicker::compileShader(GLuint* shader, GLenum type, NSString* source) {
  const char* text = send(source, NSString::UTF8String);
  if (text == nullptr || !isContextCurrent()) return false;
  *shader = glCreateShader(type);
  glShaderSource(*shader, 1, &text, nullptr);
  glCompileShader(*shader);
  GLint compiled = 0;
  glGetShaderiv(*shader, GL_COMPILE_STATUS, &compiled);
  if (compiled == 0) glDeleteShader(*shader);
  return compiled != 0;
}

bool ColorPicker::linkProgram(GLuint program) {
  if (!isContextCurrent()) return false;
  glLinkProgram(program);
  GLint linked = 0;
  glGetProgramiv(program, GL_LINK_STATUS, &linked);
  return linked != 0;
}

}  // namespace varnix
