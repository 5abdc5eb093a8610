// Blocks: calling those that we are given, and making our own callables into blocks.
#pragma once

#include <new>
#include <utility>

#include "objc/message.h"

namespace objc {

struct BlockDescriptor {
  unsigned long reserved;
  unsigned long size;
  void (*copy)(void* to, const void* from);
  void (*dispose)(const void* block);
  const char* signature;
};

/// The descriptor of a block without copy and dispose helpers: the same without the two.
struct PlainBlockDescriptor {
  unsigned long reserved;
  unsigned long size;
  const char* signature;
};

enum BlockFlags : int {
  kBlockHasCopyDispose = 1 << 25,
  kBlockIsGlobal = 1 << 28,
  kBlockHasSignature = 1 << 30,
};

template <class R, class... A>
struct BlockLayout<R(A...)> {
  const void* isa;
  int flags;
  int reserved;
  Traveling<R> (*invoke)(BlockLayout*, Traveling<A>...);
  const void* descriptor;

  R operator()(A... arguments) { return R(invoke(this, Traveling<A>(arguments)...)); }
};

/// A block of that signature, as messages and functions take and return it. Call it with
/// (*block)(arguments); the caller must check for nil.
template <class Signature>
using Block = BlockLayout<Signature>*;

/// A block around a callable, on the stack of its maker. A callee that keeps it must copy it.
template <class Signature, class F>
class StackBlock;

template <class R, class... A, class F>
class StackBlock<R(A...), F> {
 public:
  explicit StackBlock(F callable)
      : layout_{&_NSConcreteStackBlock, kBlockHasCopyDispose | kBlockHasSignature, 0, &invoke,
                &kDescriptor},
        callable_(std::move(callable)) {}
  StackBlock(const StackBlock&) = delete;
  StackBlock& operator=(const StackBlock&) = delete;

  operator Block<R(A...)>() { return &layout_; }

 private:
  static StackBlock* from(void* block) { return static_cast<StackBlock*>(block); }
  static Traveling<R> invoke(BlockLayout<R(A...)>* block, Traveling<A>... arguments) {
    return from(block)->callable_(A(arguments)...);
  }
  static void copy(void* to, const void* from) {
    ::new (static_cast<void*>(&StackBlock::from(to)->callable_))
        F(static_cast<const StackBlock*>(from)->callable_);
  }
  static void dispose(const void* block) { from(const_cast<void*>(block))->callable_.~F(); }

  static constexpr BlockDescriptor kDescriptor{0, sizeof(BlockLayout<R(A...)>) + sizeof(F), &copy,
                                               &dispose, kStored<kBlockEncoding<R, A...>>.text};

  BlockLayout<R(A...)> layout_;
  F callable_;
};

template <class Signature, class F>
StackBlock<Signature, F> makeBlock(F callable) {
  return StackBlock<Signature, F>(std::move(callable));
}

/// A block that outlives the call that received it: a copy, released with the last KeptBlock.
template <class Signature>
class KeptBlock;

template <class R, class... A>
class KeptBlock<R(A...)> {
 public:
  explicit KeptBlock(Block<R(A...)> block) : block_(copyOf(block)) {}
  KeptBlock(const KeptBlock& other) : block_(copyOf(other.block_)) {}
  KeptBlock& operator=(const KeptBlock&) = delete;
  ~KeptBlock() { _Block_release(block_); }

  R operator()(A... arguments) const { return (*block_)(arguments...); }

 private:
  static Block<R(A...)> copyOf(Block<R(A...)> block) {
    return static_cast<Block<R(A...)>>(_Block_copy(block));
  }

  Block<R(A...)> block_;
};

template <class Signature>
KeptBlock<Signature> keepBlock(Block<Signature> block) {
  return KeptBlock<Signature>(block);
}

namespace detail {

template <auto Fn>
struct GlobalBlock;

template <class R, class... A, R (*Fn)(A...)>
struct GlobalBlock<Fn> {
  static Traveling<R> invoke(BlockLayout<R(A...)>*, Traveling<A>... arguments) {
    return Fn(A(arguments)...);
  }
  static inline constinit PlainBlockDescriptor descriptor{0, sizeof(BlockLayout<R(A...)>),
                                                          kStored<kBlockEncoding<R, A...>>.text};
  static inline constinit BlockLayout<R(A...)> layout{
      &_NSConcreteGlobalBlock, kBlockIsGlobal | kBlockHasSignature, 0, &invoke, &descriptor};
};

}  // namespace detail

/// A block around a plain function. It lives as long as the process.
template <auto Fn>
constexpr auto globalBlock() {
  return &detail::GlobalBlock<Fn>::layout;
}

}  // namespace objc
