// Contexts and threads, as on the device: current for one thread, on several at once, never stuck.
#include <atomic>
#include <thread>
#include <vector>

#include "OpenGLES/gl.h"
#include "objc/autorelease_pool.h"
#include "platform/OpenGLES.h"
#include "support/hosted.h"

namespace {

class Threads : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }
  static Strong<EAGLContext> newContext() {
    return Strong<EAGLContext>::adopt(send<EAGLContext*>(
        objc::alloc<EAGLContext>(), "initWithAPI:"_sel, kEAGLRenderingAPIOpenGLES2));
  }
  static NSObject* current() {
    return send<NSObject*>(objc_getClass("EAGLContext"), "currentContext"_sel);
  }
  static void run(const std::function<void()>& function) {
    std::thread([&] {
      objc::AutoreleasePool pool;
      function();
    }).join();
  }
  /// Clears a frame of one pixel to that colour, and reads it back.
  static std::array<unsigned char, 4> clearedTo(float red, float green, float blue) {
    glClearColor(red, green, blue, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    std::array<unsigned char, 4> pixel{};
    glReadPixels(0, 0, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel.data());
    return pixel;
  }
  static void makeFrame() {
    GLuint framebuffer = 0;
    GLuint renderbuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glGenRenderbuffers(1, &renderbuffer);
    glBindRenderbuffer(GL_RENDERBUFFER, renderbuffer);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8_OES, 1, 1);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, renderbuffer);
  }
};

constexpr std::array<unsigned char, 4> kRed{255, 0, 0, 255};
constexpr std::array<unsigned char, 4> kBlue{0, 0, 255, 255};

TEST_F(Threads, EachHasACurrentContextOfItsOwn) {
  auto context = newContext();
  EAGLContext::setCurrentContext(context);
  run([&] {
    EXPECT_EQ(current(), nullptr);
    auto other = newContext();
    EAGLContext::setCurrentContext(other);
    EXPECT_EQ(current(), other);
  });
  EXPECT_EQ(current(), context);
}

TEST_F(Threads, OneContextServesOneAfterTheOther) {
  auto context = newContext();
  EAGLContext::setCurrentContext(context);
  makeFrame();
  EXPECT_EQ(clearedTo(1, 0, 0), kRed);
  // Neither thread released the context, nor does the one that ends.
  for (int i = 0; i < 5; ++i) {
    run([&] {
      ASSERT_TRUE(EAGLContext::setCurrentContext(context));
      EXPECT_EQ(clearedTo(0, 0, 1), kBlue);
    });
    EXPECT_EQ(clearedTo(1, 0, 0), kRed);
  }
}

TEST_F(Threads, AContextLivesAsLongAsAnyThreadHasIt) {
  auto context = newContext();
  run([&] {
    EAGLContext::setCurrentContext(context);
    makeFrame();
    context = nullptr;
    EXPECT_EQ(clearedTo(1, 0, 0), kRed);
  });
}

TEST_F(Threads, AnEndedThreadGivesItsContextUp) {
  run([] {
    EAGLContext::setCurrentContext(newContext().get());
    EXPECT_EQ(host::gl::contextCount(), 1U);
  });
  EXPECT_EQ(host::gl::contextCount(), 0U);
}

TEST_F(Threads, TwoContextsDrawAtTheSameTime) {
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int index = 0; index < 2; ++index) {
    threads.emplace_back([&wrong, index] {
      objc::AutoreleasePool pool;
      auto context = newContext();
      EAGLContext::setCurrentContext(context);
      makeFrame();
      for (int i = 0; i < 200; ++i) {
        const auto pixel = index == 0 ? clearedTo(1, 0, 0) : clearedTo(0, 0, 1);
        if (pixel != (index == 0 ? kRed : kBlue)) ++wrong;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST_F(Threads, CallsOnOneContextDoNotCollide) {
  auto context = newContext();
  std::vector<std::thread> threads;
  std::atomic<int> made{0};
  for (int index = 0; index < 4; ++index) {
    threads.emplace_back([&] {
      objc::AutoreleasePool pool;
      EAGLContext::setCurrentContext(context);
      for (int i = 0; i < 200; ++i) {
        GLuint texture = 0;
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        if (texture != 0) ++made;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(made, 800);
}

}  // namespace
