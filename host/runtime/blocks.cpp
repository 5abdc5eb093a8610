// Blocks as objects: their classes, copying and disposing.
#include <cstring>

#include "internal.h"
#include "objc/block.h"
#include "objc/define.h"

namespace {

/// The part of a block that all signatures share.
struct AnyBlock : NSObject {
  int flags;
  int reserved;
  void (*invoke)();
  const objc::BlockDescriptor* descriptor;

  AnyBlock* copy() { return static_cast<AnyBlock*>(_Block_copy(this)); }
  AnyBlock* keep() { return this; }
  void let() {}
};

/// A block on the heap: an ordinary object, counted like one.
struct MallocBlock : AnyBlock {
  void dealloc() {
    if ((flags & objc::kBlockHasCopyDispose) != 0) descriptor->dispose(this);
    object_dispose(this);
  }
};

}  // namespace

OBJC_CLASS_NAMED(NSBlock, NSObject, AnyBlock, NSObject, objc::Ivar<"flags", &AnyBlock::flags>,
                 objc::Ivar<"reserved", &AnyBlock::reserved>,
                 objc::Ivar<"invoke", &AnyBlock::invoke>,
                 objc::Ivar<"descriptor", &AnyBlock::descriptor>,
                 objc::Method<"copy", &AnyBlock::copy>)

// Blocks that the compiler emitted, or that are on a stack, are not counted.
OBJC_CLASS_NAMED(__NSGlobalBlock, NSBlock, AnyBlock, AnyBlock,
                 objc::Method<"retain", &AnyBlock::keep>, objc::Method<"release", &AnyBlock::let>,
                 objc::Method<"autorelease", &AnyBlock::keep>)
OBJC_CLASS_NAMED(__NSStackBlock, NSBlock, AnyBlock, AnyBlock,
                 objc::Method<"retain", &AnyBlock::keep>, objc::Method<"release", &AnyBlock::let>,
                 objc::Method<"autorelease", &AnyBlock::keep>)
OBJC_CLASS_NAMED(__NSMallocBlock, NSBlock, MallocBlock, AnyBlock,
                 objc::Method<"dealloc", &MallocBlock::dealloc>)
// The classes of blocks.
OBJC_CLASS_NAMED(__NSGlobalBlock__, __NSGlobalBlock, AnyBlock, AnyBlock)
OBJC_CLASS_NAMED(__NSStackBlock__, __NSStackBlock, AnyBlock, AnyBlock)
OBJC_CLASS_NAMED(__NSMallocBlock__, __NSMallocBlock, MallocBlock, MallocBlock)

// A block's class pointer is the address of one of these symbols: the classes' own.
asm(R"(
        .globl _NSConcreteGlobalBlock
        .set _NSConcreteGlobalBlock, OBJC_CLASS_$___NSGlobalBlock__
        .globl _NSConcreteStackBlock
        .set _NSConcreteStackBlock, OBJC_CLASS_$___NSStackBlock__
        .globl _NSConcreteMallocBlock
        .set _NSConcreteMallocBlock, OBJC_CLASS_$___NSMallocBlock__
)");

extern "C" {

void* _Block_copy(const void* block) {
  if (block == nullptr) return nullptr;
  auto* original = static_cast<AnyBlock*>(const_cast<void*>(block));
  if (original->isa == &objc_class___NSMallocBlock__) return objc_retain(original);
  if ((original->flags & objc::kBlockIsGlobal) != 0) return original;
  const std::size_t size = original->descriptor->size;
  const std::size_t head = class_getInstanceSize(&objc_class___NSMallocBlock__);
  auto* copy = static_cast<AnyBlock*>(
      class_createInstance(&objc_class___NSMallocBlock__, size > head ? size - head : 0));
  // Everything but the class is the original's; captured variables go through the copy helper.
  std::memcpy(reinterpret_cast<char*>(copy) + sizeof(Class),
              reinterpret_cast<char*>(original) + sizeof(Class), size - sizeof(Class));
  if ((original->flags & objc::kBlockHasCopyDispose) != 0)
    original->descriptor->copy(copy, original);
  return copy;
}

void _Block_release(const void* block) { objc_release(static_cast<id>(const_cast<void*>(block))); }
}
