// Graphics contexts: when one is available, which is current, and how long it lives.
#include <dirent.h>

#include <cstdlib>
#include <thread>

#include "OpenGLES/gl.h"
#include "objc/autorelease_pool.h"
#include "platform/OpenGLES.h"
#include "support/hosted.h"

namespace {

EAGLContext* newContext(NSUInteger api = kEAGLRenderingAPIOpenGLES2) {
  return send<EAGLContext*>(objc::alloc<EAGLContext>(), "initWithAPI:"_sel, api);
}

NSObject* current() { return send<NSObject*>(objc_getClass("EAGLContext"), "currentContext"_sel); }

class Context : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }
};

TEST_F(Context, IsMadeForItsApiAlone) {
  for (NSUInteger api : {0, 1, 3, 4, 99}) EXPECT_EQ(newContext(api), nullptr) << api;
  auto context = Strong<EAGLContext>::adopt(newContext());
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(send<NSUInteger>(context.get(), "API"_sel), 2U);
}

TEST_F(Context, IsCurrentOnceItWasMadeSo) {
  auto context = Strong<EAGLContext>::adopt(newContext());
  EXPECT_EQ(current(), nullptr);
  EXPECT_TRUE(EAGLContext::setCurrentContext(context));
  EXPECT_EQ(current(), context);
  EXPECT_TRUE(EAGLContext::setCurrentContext(nullptr));
  EXPECT_EQ(current(), nullptr);
}

TEST_F(Context, OnlyWhatIsAContextBecomesCurrent) {
  auto context = Strong<EAGLContext>::adopt(newContext());
  EAGLContext::setCurrentContext(context);
  auto* neverInitialised = objc::alloc<EAGLContext>();
  auto* noContext = test::make<NSObject>("NSObject");
  EXPECT_FALSE(EAGLContext::setCurrentContext(neverInitialised));
  EXPECT_FALSE(send<bool>(objc_getClass("EAGLContext"), "setCurrentContext:"_sel, noContext));
  EXPECT_EQ(current(), context);
  objc_release(neverInitialised);
}

TEST_F(Context, IsKeptWhileItIsCurrent) {
  auto* context = newContext();
  EAGLContext::setCurrentContext(context);
  objc_release(context);
  GLuint texture = 0;
  glGenTextures(1, &texture);
  EXPECT_NE(texture, 0U);
}

TEST_F(Context, HoldsItsOwnObjects) {
  auto first = Strong<EAGLContext>::adopt(newContext());
  auto second = Strong<EAGLContext>::adopt(newContext());
  EAGLContext::setCurrentContext(first);
  const GLuint program = glCreateProgram();
  EXPECT_EQ(glIsProgram(program), GL_TRUE);
  EAGLContext::setCurrentContext(second);
  EXPECT_EQ(glIsProgram(program), GL_FALSE);
  EAGLContext::setCurrentContext(first);
  EXPECT_EQ(glIsProgram(program), GL_TRUE);
}

TEST_F(Context, WithoutOneCallsDoNothing) {
  GLuint name = 7;
  glGenTextures(1, &name);
  EXPECT_EQ(name, 7U);
  GLint value = 8;
  glGetIntegerv(GL_FRAMEBUFFER_BINDING, &value);
  EXPECT_EQ(value, 8);
  unsigned char pixel[4] = {1, 2, 3, 4};
  glReadPixels(0, 0, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
  EXPECT_EQ(pixel[0], 1);
  EXPECT_EQ(glCreateShader(GL_VERTEX_SHADER), 0U);
  EXPECT_EQ(glIsProgram(1), GL_FALSE);
}

TEST_F(Context, CannotBeHadWhereThereIsNone) {
  host::gl::setAvailable(false);
  EXPECT_EQ(newContext(), nullptr);
  host::gl::setAvailable(true);
  EXPECT_NE(Strong<EAGLContext>::adopt(newContext()), nullptr);
}

TEST_F(Context, CannotBeHadWithoutADriver) {
  setenv("LIBGL_DRIVERS_PATH", "/nonexistent", 1);
  EXPECT_EQ(newContext(), nullptr);
}

TEST_F(Context, MayBeRefused) {
  auto context = Strong<EAGLContext>::adopt(newContext());
  auto other = Strong<EAGLContext>::adopt(newContext());
  EAGLContext::setCurrentContext(other);
  host::gl::failActivation(true);
  EXPECT_FALSE(EAGLContext::setCurrentContext(context));
  EXPECT_EQ(current(), other);
  EXPECT_TRUE(EAGLContext::setCurrentContext(nullptr));
  EXPECT_EQ(current(), nullptr);
}

TEST_F(Context, AnUnknownRendererIsReported) {
  setenv("VARNIX_GL", "abacus", 1);
  EXPECT_NE(Strong<EAGLContext>::adopt(newContext()), nullptr);
  EXPECT_EQ(log(), std::vector<std::string>{"3 VARNIX_GL is neither gpu nor software: abacus"});
}

std::size_t openFiles() {
  std::size_t count = 0;
  DIR* folder = opendir("/proc/self/fd");
  while (readdir(folder) != nullptr) ++count;
  closedir(folder);
  return count;
}

TEST_F(Context, LeavesNothingOpen) {
  objc_release(newContext());
  const std::size_t before = openFiles();
  for (int i = 0; i < 200; ++i) objc_release(newContext());
  EXPECT_EQ(openFiles(), before);
}

}  // namespace
