// The thread's GL context belongs to the application: an analysis restores it, and calls GL
// functions only in a context of its own.
#include <dlfcn.h>

#include "objc/autorelease_pool.h"
#include "picker/CQColorPicker.h"
#include "support/hosted.h"
#include "support/pictures.h"

namespace {

int calls = 0;

template <class Function>
Function* next(const char* name) {
  ++calls;
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// The first GL calls of each step of an analysis. Everything in this process finds these before the
// platform's.
extern "C" {
void glGetIntegerv(GLenum name, GLint* value) {
  next<decltype(glGetIntegerv)>("glGetIntegerv")(name, value);
}
GLboolean glIsRenderbuffer(GLuint name) {
  return next<decltype(glIsRenderbuffer)>("glIsRenderbuffer")(name);
}
GLboolean glIsProgram(GLuint name) { return next<decltype(glIsProgram)>("glIsProgram")(name); }
GLboolean glIsShader(GLuint name) { return next<decltype(glIsShader)>("glIsShader")(name); }
GLuint glCreateShader(GLenum type) {
  return next<decltype(glCreateShader)>("glCreateShader")(type);
}
void glLinkProgram(GLuint name) { next<decltype(glLinkProgram)>("glLinkProgram")(name); }
void glValidateProgram(GLuint name) {
  next<decltype(glValidateProgram)>("glValidateProgram")(name);
}
GLboolean glIsBuffer(GLuint name) { return next<decltype(glIsBuffer)>("glIsBuffer")(name); }
GLboolean glIsTexture(GLuint name) { return next<decltype(glIsTexture)>("glIsTexture")(name); }
void glEnable(GLenum capability) { next<decltype(glEnable)>("glEnable")(capability); }
void glReadPixels(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                  void* pixels) {
  next<decltype(glReadPixels)>("glReadPixels")(x, y, width, height, format, type, pixels);
}
}

namespace {

using namespace test;

bool refuse(Class, SEL, NSObject*) { return false; }

class PickerContext : public Hosted {
 protected:
  void SetUp() override {
    application("");
    picker = objc::make<CQColorPicker>();
    calls = 0;
  }
  static Strong<EAGLContext> newContext() {
    return Strong<EAGLContext>::adopt(
        send(objc::alloc<EAGLContext>(), EAGLContext::initWithAPI, kEAGLRenderingAPIOpenGLES2));
  }
  CQColorScheme* analyse() {
    return send(picker, CQColorPicker::colorSchemeFromImage, plainPicture(200, 30, 60));
  }
  void expectBlack(CQColorScheme* scheme) {
    EXPECT_EQ(hex(send(scheme, CQColorScheme::backgroundColor)), "#000000ff");
    EXPECT_EQ(hex(send(scheme, CQColorScheme::primaryTextColor)), "#000000ff");
    EXPECT_EQ(hex(send(scheme, CQColorScheme::secondaryTextColor)), "#ffffffff");
  }
  static void refuseContexts() {
    class_replaceMethod(objc_getMetaClass("EAGLContext"), "setCurrentContext:"_sel,
                        reinterpret_cast<IMP>(&refuse), "B@:@");
  }
  static void makeNoContexts() {
    NSObject* (*nothing)(id, SEL, NSUInteger) = [](id self, SEL, NSUInteger) -> NSObject* {
      objc_release(self);
      return nullptr;
    };
    class_replaceMethod(objc_getClass("EAGLContext"), "initWithAPI:"_sel,
                        reinterpret_cast<IMP>(nothing), "@@:Q");
  }

  Strong<CQColorPicker> picker;
};

TEST_F(PickerContext, IsTheOneFromBefore) {
  auto mine = newContext();
  ASSERT_TRUE(EAGLContext::setCurrentContext(mine));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(hex(send(analyse(), CQColorScheme::backgroundColor)), "#c81e3cff");
    EXPECT_EQ(EAGLContext::currentContext(), mine);
  }
  EXPECT_GT(calls, 0);
}

TEST_F(PickerContext, IsNoneWhereThereWasNone) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(hex(send(analyse(), CQColorScheme::backgroundColor)), "#c81e3cff");
    EXPECT_EQ(EAGLContext::currentContext(), nullptr);
  }
}

// If the old context were freed meanwhile, there would be nothing to restore.
TEST_F(PickerContext, LivesAsLongAsItIsNeeded) {
  {
    objc::AutoreleasePool pool;
    auto mine = newContext();
    ASSERT_TRUE(EAGLContext::setCurrentContext(mine));
  }
  auto* before = EAGLContext::currentContext();
  ASSERT_NE(before, nullptr);
  analyse();
  EXPECT_EQ(EAGLContext::currentContext(), before);
}

TEST_F(PickerContext, IsLeftAloneInTheBackground) {
  auto mine = newContext();
  ASSERT_TRUE(EAGLContext::setCurrentContext(mine));
  send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel,
             UIApplicationStateBackground);
  EXPECT_EQ(analyse(), nullptr);
  EXPECT_EQ(EAGLContext::currentContext(), mine);
  EXPECT_EQ(calls, 0);
}

TEST_F(PickerContext, ThatCannotBeMadeIsCalledNoFunctionOf) {
  makeNoContexts();
  expectBlack(analyse());
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(EAGLContext::currentContext(), nullptr);
}

TEST_F(PickerContext, ThatCannotBeMadeLeavesTheOneFromBefore) {
  auto mine = newContext();
  ASSERT_TRUE(EAGLContext::setCurrentContext(mine));
  makeNoContexts();
  expectBlack(analyse());
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(EAGLContext::currentContext(), mine);
}

TEST_F(PickerContext, ThatCannotBecomeCurrentIsCalledNoFunctionOf) {
  refuseContexts();
  expectBlack(analyse());
  EXPECT_EQ(calls, 0);
}

TEST_F(PickerContext, OfSomebodyElseIsCalledNoFunctionOf) {
  auto mine = newContext();
  ASSERT_TRUE(EAGLContext::setCurrentContext(mine));
  refuseContexts();
  expectBlack(analyse());
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(EAGLContext::currentContext(), mine);
}

// Each step separately, as another extension might send it.
TEST_F(PickerContext, IsAskedForByEachStep) {
  ASSERT_EQ(EAGLContext::currentContext(), nullptr);
  send(picker, CQColorPicker::setupFrameBuffer);
  send(picker, CQColorPicker::setupRenderBuffer);
  send(picker, CQColorPicker::setupDepthBuffer);
  EXPECT_FALSE(send(picker, CQColorPicker::setupOpenGLForDominantColor));
  send(picker, CQColorPicker::setupVBOs);
  GLuint shader = 7;
  EXPECT_FALSE(
      send(picker, CQColorPicker::compileShader, &shader, 0x8b30, string("void main() {}")));
  EXPECT_EQ(shader, 7U);
  EXPECT_FALSE(send(picker, CQColorPicker::linkProgram, 1));
  EXPECT_FALSE(send(picker, CQColorPicker::validateProgram, 1));
  EXPECT_EQ(send(picker, CQColorPicker::setupTextureFromImage, plainPicture(200, 30, 60)), 0U);
  send(picker, CQColorPicker::renderDominant);
  EXPECT_EQ(hex(send(picker, CQColorPicker::colorWithBiggerCount, 4, 4)), "#000000ff");
  EXPECT_EQ(calls, 0);
}

}  // namespace
