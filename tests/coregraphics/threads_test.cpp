// Images, contexts and stacks of image contexts, used by many threads at once.
#include <thread>

#include "UIGraphics/UIGraphics.h"
#include "objc/autorelease_pool.h"
#include "support/bitmaps.h"
#include "support/hosted.h"

namespace {

constexpr int kThreads = 6;

template <class F>
void onManyThreads(F work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&work, i] {
      const objc::AutoreleasePool pool;
      work(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(GraphicsThreads, OneImageIsDrawnByManyAtOnce) {
  const test::Bytes bytes = test::premultipliedNoise(64 * 64);
  const test::Bitmap image(test::createImage(bytes, {.width = 64, .height = 64}));
  onManyThreads([&](int) {
    for (int turn = 0; turn < 50; ++turn) EXPECT_EQ(test::drawn(image), bytes);
  });
}

TEST(GraphicsThreads, OneImageIsShrunkByManyAtOnce) {
  const test::Bytes bytes(100 * 100 * 4, 200);
  const test::Bitmap image(test::createImage(bytes, {.width = 100, .height = 100}));
  onManyThreads([&](int) {
    for (int turn = 0; turn < 20; ++turn)
      EXPECT_EQ(test::drawn(image, 7, 7), test::Bytes(7 * 7 * 4, 200));
  });
}

class GraphicsThreadsHosted : public test::Hosted {};

TEST_F(GraphicsThreadsHosted, EachHasItsOwnStack) {
  start("com.example.app");
  UIGraphicsBeginImageContext({99, 1});
  onManyThreads([](int i) {
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    for (int turn = 1; turn <= 20; ++turn) {
      UIGraphicsBeginImageContext({static_cast<CGFloat>(i + 1), static_cast<CGFloat>(turn)});
      auto* image = UIGraphicsGetImageFromCurrentImageContext();
      const auto size = send<CGSize>(image, "size"_sel);
      EXPECT_EQ(size.width, i + 1);
      EXPECT_EQ(size.height, turn);
      if (turn % 2 == 0) UIGraphicsEndImageContext();
    }
    // Ten are left on the stack, and are released with the thread.
    EXPECT_EQ(CGBitmapContextGetHeight(UIGraphicsGetCurrentContext()), 19U);
  });
  EXPECT_EQ(CGBitmapContextGetWidth(UIGraphicsGetCurrentContext()), 99U);
  UIGraphicsEndImageContext();
}

}  // namespace
