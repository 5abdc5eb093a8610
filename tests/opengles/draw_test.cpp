// What is drawn, byte by byte, and how compiling and linking are made to fail.
#include <array>
#include <stdexcept>

#include "OpenGLES/gl.h"
#include "objc/autorelease_pool.h"
#include "platform/OpenGLES.h"
#include "support/hosted.h"

namespace {

using Pixel = std::array<unsigned char, 4>;
constexpr int kSide = 32;

constexpr char kVertexShader[] =
    "attribute vec2 place; varying vec2 at; "
    "void main() { at = place * 0.5 + 0.5; gl_Position = vec4(place, 0.0, 1.0); }";
constexpr char kTextureShader[] =
    "precision mediump float; varying vec2 at; uniform sampler2D image; "
    "void main() { gl_FragColor = texture2D(image, at); }";

class Draw : public test::Hosted {
 protected:
  void SetUp() override {
    start("com.example.app");
    context = Strong<EAGLContext>::adopt(send<EAGLContext*>(
        objc::alloc<EAGLContext>(), "initWithAPI:"_sel, kEAGLRenderingAPIOpenGLES2));
    ASSERT_TRUE(EAGLContext::setCurrentContext(context));
    GLuint names[2] = {};
    glGenFramebuffers(1, &names[0]);
    glBindFramebuffer(GL_FRAMEBUFFER, names[0]);
    glGenRenderbuffers(1, &names[1]);
    glBindRenderbuffer(GL_RENDERBUFFER, names[1]);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8_OES, kSide, kSide);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, names[1]);
    glViewport(0, 0, kSide, kSide);
  }
  static GLuint compiled(GLenum type, const char* source) {
    const GLuint shader = glCreateShader(type);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    return shader;
  }
  static bool compiles(GLenum type, const char* source) {
    GLint status = -1;
    glGetShaderiv(compiled(type, source), GL_COMPILE_STATUS, &status);
    return status != 0;
  }
  static GLuint linked() {
    const GLuint program = glCreateProgram();
    glAttachShader(program, compiled(GL_VERTEX_SHADER, kVertexShader));
    glAttachShader(program, compiled(GL_FRAGMENT_SHADER, kTextureShader));
    glLinkProgram(program);
    return program;
  }
  static bool links() {
    GLint status = -1;
    glGetProgramiv(linked(), GL_LINK_STATUS, &status);
    return status != 0;
  }
  static std::vector<Pixel> frame() {
    std::vector<Pixel> pixels(kSide * kSide);
    glReadPixels(0, 0, kSide, kSide, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
  }

  Strong<EAGLContext> context;
};

TEST_F(Draw, AFreshFrameIsZeros) {
  for (const Pixel& pixel : frame()) ASSERT_EQ(pixel, Pixel{});
}

TEST_F(Draw, ATextureReadsBackTexelForTexel) {
  std::vector<Pixel> texels;
  for (int i = 0; i < kSide * kSide; ++i) {
    texels.push_back({static_cast<unsigned char>(i), static_cast<unsigned char>(i / 4),
                      static_cast<unsigned char>(255 - i % 251),
                      static_cast<unsigned char>(i * 7)});
  }
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, kSide, kSide, 0, GL_RGBA, GL_UNSIGNED_BYTE,
               texels.data());
  const GLuint program = linked();
  glUseProgram(program);
  const float corners[] = {-1, -1, 1, -1, -1, 1, 1, 1};
  GLuint buffer = 0;
  glGenBuffers(1, &buffer);
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glBufferData(GL_ARRAY_BUFFER, sizeof corners, corners, GL_STATIC_DRAW);
  const auto place = static_cast<GLuint>(glGetAttribLocation(program, "place"));
  glEnableVertexAttribArray(place);
  glVertexAttribPointer(place, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
  glUniform1i(glGetUniformLocation(program, "image"), 0);
  const unsigned char order[] = {0, 1, 2, 2, 1, 3};
  GLuint indices = 0;
  glGenBuffers(1, &indices);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indices);
  glBufferData(GL_ELEMENT_ARRAY_BUFFER, sizeof order, order, GL_STATIC_DRAW);
  glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_BYTE, nullptr);
  EXPECT_EQ(frame(), texels);
}

TEST_F(Draw, ADrawWithoutAProgramLeavesTheFrame) {
  glClearColor(1, 0, 0, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  const unsigned char order[] = {0, 1, 2};
  glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_BYTE, order);
  for (const Pixel& pixel : frame()) ASSERT_EQ(pixel, (Pixel{255, 0, 0, 255}));
}

TEST_F(Draw, WhatIsNoCapabilityIsHarmless) {
  glEnable(GL_TEXTURE_2D);
  glEnableVertexAttribArray(static_cast<GLuint>(-1));
  EXPECT_TRUE(links());
}

TEST_F(Draw, OnlyTheChosenTypeFailsToCompile) {
  EXPECT_TRUE(compiles(GL_VERTEX_SHADER, kVertexShader));
  EXPECT_TRUE(compiles(GL_FRAGMENT_SHADER, kTextureShader));
  host::gl::failCompile(GL_FRAGMENT_SHADER);
  EXPECT_TRUE(compiles(GL_VERTEX_SHADER, kVertexShader));
  EXPECT_FALSE(compiles(GL_FRAGMENT_SHADER, kTextureShader));
  host::gl::failCompile(GL_VERTEX_SHADER);
  EXPECT_FALSE(compiles(GL_VERTEX_SHADER, kVertexShader));
  host::gl::failCompile(0);
  EXPECT_TRUE(compiles(GL_VERTEX_SHADER, kVertexShader));
}

TEST_F(Draw, LinkingFailsWhereItIsMadeTo) {
  EXPECT_TRUE(links());
  host::gl::failLink(true);
  EXPECT_FALSE(links());
  host::gl::failLink(false);
  EXPECT_TRUE(links());
}

TEST_F(Draw, CountsItsCalls) {
  EXPECT_THROW(host::gl::callCount("glFlushTheDrains"), std::invalid_argument);
  const auto all = host::gl::callCount();
  glActiveTexture(GL_TEXTURE0);
  glActiveTexture(GL_TEXTURE0);
  EXPECT_EQ(host::gl::callCount("glActiveTexture"), 2U);
  EXPECT_EQ(host::gl::callCount(), all + 2);
}

}  // namespace
