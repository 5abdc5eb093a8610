// Blocks: calling, copying and disposing; blocks that are never copied; blocks as objects.
#include "objc/block.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"
#include "runtime/send.h"

namespace {

/// How often a captured value was copied and destroyed.
struct Tally {
  int copies = 0;
  int ends = 0;
};

class Captured {
 public:
  explicit Captured(Tally& tally) : tally_(&tally) {}
  Captured(const Captured& other) : tally_(other.tally_) { ++tally_->copies; }
  Captured(Captured&& other) noexcept : tally_(std::exchange(other.tally_, nullptr)) {}
  Captured& operator=(const Captured&) = delete;
  ~Captured() {
    if (tally_ != nullptr) ++tally_->ends;
  }

 private:
  Tally* tally_;
};

template <class T>
T* copied(T* block) {
  return static_cast<T*>(_Block_copy(block));
}
id asObject(void* block) { return static_cast<id>(block); }
NSUInteger references(void* block) { return send<NSUInteger>(block, "retainCount"_sel); }

int doubled(int value) { return 2 * value; }

TEST(Block, IsCalledWithItsArguments) {
  auto sum = objc::makeBlock<double(int, double, CGSize)>(
      [factor = 2](int a, double b, CGSize size) { return factor * (a + b + size.height); });
  objc::Block<double(int, double, CGSize)> block = sum;
  EXPECT_EQ((*block)(1, 2.5, CGSize{0, 10}), 27.0);
}

TEST(Block, AnswersStructures) {
  auto grow = objc::makeBlock<CGRect(CGRect)>([](CGRect rect) {
    rect.size.width += 1;
    return rect;
  });
  objc::Block<CGRect(CGRect)> block = grow;
  EXPECT_EQ((*block)(CGRect{{1, 2}, {3, 4}}).size.width, 4);
  auto* heap = copied(block);
  EXPECT_EQ((*heap)(CGRect{{1, 2}, {3, 4}}).origin.y, 2);
  _Block_release(heap);
}

TEST(Block, OfAFunctionIsCalled) { EXPECT_EQ((*objc::globalBlock<&doubled>())(21), 42); }

TEST(Block, CarriesItsLayout) {
  auto onStack = objc::makeBlock<id(id, int)>([](id object, int) { return object; });
  objc::Block<id(id, int)> block = onStack;
  EXPECT_EQ(block->isa, static_cast<void*>(_NSConcreteStackBlock));
  EXPECT_EQ(block->flags, (1 << 25) | (1 << 30));
  const auto* descriptor = static_cast<const objc::BlockDescriptor*>(block->descriptor);
  EXPECT_EQ(descriptor->reserved, 0U);
  EXPECT_STREQ(descriptor->signature, "@@?@i");

  objc::Block<int(int)> global = objc::globalBlock<&doubled>();
  EXPECT_EQ(global->isa, static_cast<void*>(_NSConcreteGlobalBlock));
  EXPECT_EQ(global->flags, (1 << 28) | (1 << 30));
  EXPECT_STREQ(static_cast<const objc::PlainBlockDescriptor*>(global->descriptor)->signature,
               "i@?i");
}

std::string family(void* block) {
  std::string names;
  for (Class cls = object_getClass(block); cls != nullptr; cls = class_getSuperclass(cls))
    names += std::string(names.empty() ? "" : " ") + class_getName(cls);
  return names;
}

TEST(Block, IsOfThePlatformsClasses) {
  auto onStack = objc::makeBlock<void()>([held = std::make_shared<int>(1)] { (void)held; });
  objc::Block<void()> block = onStack;
  EXPECT_EQ(family(block), "__NSStackBlock__ __NSStackBlock NSBlock NSObject");
  auto* heap = copied(block);
  EXPECT_EQ(family(heap), "__NSMallocBlock__ __NSMallocBlock NSBlock NSObject");
  _Block_release(heap);
  EXPECT_EQ(family(objc::globalBlock<&doubled>()),
            "__NSGlobalBlock__ __NSGlobalBlock NSBlock NSObject");
}

TEST(Block, OnTheStackDestroysItsCaptureOnce) {
  Tally tally;
  {
    auto block = objc::makeBlock<void()>([held = Captured(tally)] { (void)held; });
  }
  EXPECT_EQ(tally.copies, 0);
  EXPECT_EQ(tally.ends, 1);
}

TEST(Block, IsCopiedOnceAndDisposedOfOnce) {
  Tally tally;
  objc::Block<void()> heap = nullptr;
  {
    auto onStack = objc::makeBlock<void()>([held = Captured(tally)] { (void)held; });
    objc::Block<void()> block = onStack;
    heap = copied(block);
    EXPECT_NE(heap, block);
    EXPECT_EQ(tally.copies, 1);
  }
  EXPECT_EQ(tally.ends, 1);
  // Copying a copy only retains it.
  EXPECT_EQ(copied(heap), heap);
  EXPECT_EQ(tally.copies, 1);
  _Block_release(heap);
  EXPECT_EQ(tally.ends, 1);
  _Block_release(heap);
  EXPECT_EQ(tally.ends, 2);
}

TEST(Block, ACopyOutlivesItsOriginal) {
  objc::Block<std::size_t()> heap = nullptr;
  {
    auto text = std::make_shared<std::string>("a text that needs memory of its own");
    auto onStack = objc::makeBlock<std::size_t()>([text] { return text->size(); });
    heap = copied(static_cast<objc::Block<std::size_t()>>(onStack));
  }
  EXPECT_EQ((*heap)(), 35U);
  _Block_release(heap);
}

TEST(Block, ACopyOwnsCapturedObjects) {
  auto object = Strong<NSObject>::adopt(objc::alloc<NSObject>());
  objc::Block<id()> heap = nullptr;
  {
    auto onStack = objc::makeBlock<id()>([object] { return object.get(); });
    EXPECT_EQ(references(object), 2U);
    heap = copied(static_cast<objc::Block<id()>>(onStack));
    EXPECT_EQ(references(object), 3U);
  }
  EXPECT_EQ(references(object), 2U);
  EXPECT_EQ((*heap)(), object.get());
  _Block_release(heap);
  EXPECT_EQ(references(object), 1U);
}

TEST(Block, CapturedStateBelongsToTheCopy) {
  auto onStack = objc::makeBlock<int()>([count = 0]() mutable { return ++count; });
  objc::Block<int()> block = onStack;
  EXPECT_EQ((*block)(), 1);
  auto* heap = copied(block);
  EXPECT_EQ((*heap)(), 2);
  EXPECT_EQ((*heap)(), 3);
  EXPECT_EQ((*block)(), 2);
  _Block_release(heap);
}

TEST(Block, AGlobalOneIsNeverCopied) {
  auto* block = objc::globalBlock<&doubled>();
  EXPECT_EQ(copied(block), block);
  EXPECT_EQ(send<id>(block, "copy"_sel), asObject(block));
  _Block_release(block);
  _Block_release(block);
  _Block_release(block);
  objc_retain(asObject(block));
  EXPECT_EQ((*block)(4), 8);
}

TEST(Block, NilIsCopiedAndReleased) {
  EXPECT_EQ(_Block_copy(nullptr), nullptr);
  _Block_release(nullptr);
}

TEST(Block, ACopyAnswersAsAnObject) {
  Tally tally;
  auto onStack = objc::makeBlock<void()>([held = Captured(tally)] { (void)held; });
  auto* heap = copied(static_cast<objc::Block<void()>>(onStack));
  EXPECT_TRUE(send(asObject(heap), NSObject::isKindOfClass, objc_getClass("NSBlock")));
  EXPECT_EQ(references(heap), 1U);
  EXPECT_EQ(send<id>(heap, "retain"_sel), asObject(heap));
  EXPECT_EQ(send<id>(heap, "copy"_sel), asObject(heap));
  EXPECT_EQ(references(heap), 3U);
  send<void>(heap, "release"_sel);
  {
    objc::AutoreleasePool pool;
    send<id>(heap, "autorelease"_sel);
    EXPECT_EQ(references(heap), 2U);
  }
  EXPECT_EQ(references(heap), 1U);
  EXPECT_EQ(tally.ends, 0);
  objc_release(asObject(heap));
  EXPECT_EQ(tally.ends, 1);
}

TEST(Block, OneOnTheStackIsCopiedByTheMessageToo) {
  auto onStack = objc::makeBlock<int(int)>([by = 3](int value) { return by * value; });
  objc::Block<int(int)> block = onStack;
  auto* heap = send<objc::Block<int(int)>>(block, "copy"_sel);
  EXPECT_NE(heap, block);
  EXPECT_EQ((*heap)(5), 15);
  send<void>(block, "release"_sel);  // does nothing: the stack owns it
  EXPECT_EQ((*block)(5), 15);
  objc_release(asObject(heap));
}

TEST(Block, ACopyIsKeptAsAnAssociatedObject) {
  Tally tally;
  auto owner = Strong<NSObject>::adopt(objc::alloc<NSObject>());
  {
    auto onStack = objc::makeBlock<void()>([held = Captured(tally)] { (void)held; });
    objc::Block<void()> block = onStack;
    objc_setAssociatedObject(owner, "handler"_sel.get(), asObject(block), AssociationPolicy{3});
  }
  EXPECT_EQ(tally.copies, 1);
  EXPECT_EQ(tally.ends, 1);
  owner = nullptr;
  EXPECT_EQ(tally.ends, 2);
}

/// What a compiler makes for a block whose captures need no help: flags without helpers.
TEST(Block, OneWithoutHelpersIsCopiedByItsBytes) {
  struct Plain {
    objc::BlockLayout<int(int)> layout;
    int captured;
  };
  static const objc::PlainBlockDescriptor descriptor{0, sizeof(Plain), "i@?i"};
  Plain plain{{&_NSConcreteStackBlock, objc::kBlockHasSignature, 0,
               [](objc::BlockLayout<int(int)>* block, int value) {
                 return value + reinterpret_cast<Plain*>(block)->captured;
               },
               &descriptor},
              40};
  auto* heap = copied(&plain);
  plain.captured = 0;
  EXPECT_EQ(heap->layout(2), 42);
  _Block_release(heap);
}

}  // namespace
