// Implementations made of blocks.
#include <cstdlib>
#include <utility>

#include "Foundation/log.h"
#include "internal.h"
#include "objc/object.h"

namespace {
constexpr std::size_t kBlockStubs = 2048;
constexpr std::size_t kBlockStubBytes = 16;
}  // namespace

extern "C" {
/// The block of each stub; nil for a free one.
[[gnu::visibility("hidden")]] id objc_blockStubTable[kBlockStubs];
[[gnu::visibility("hidden")]] extern const char objc_blockStubs[];
}

namespace {

/// The block's place, or nil for an implementation that is not one of these.
id* blockOf(IMP implementation) {
  const auto* code = reinterpret_cast<const char*>(implementation);
  if (code < objc_blockStubs || code >= objc_blockStubs + kBlockStubs * kBlockStubBytes)
    return nullptr;
  return &objc_blockStubTable[static_cast<std::size_t>(code - objc_blockStubs) / kBlockStubBytes];
}

}  // namespace

extern "C" {

/// Calls the block with the receiver and the arguments, without the selector. Copies the block.
HOST_EXPORT IMP imp_implementationWithBlock(id block) {
  if (block == nullptr) return nullptr;
  id copy = static_cast<id>(_Block_copy(block));
  const std::scoped_lock guard(host::runtime::lock());
  for (std::size_t i = 0; i < kBlockStubs; ++i) {
    if (objc_blockStubTable[i] != nullptr) continue;
    objc_blockStubTable[i] = copy;
    return reinterpret_cast<IMP>(const_cast<char*>(objc_blockStubs + i * kBlockStubBytes));
  }
  host::log(host::LogLevel::error, "imp_implementationWithBlock: no stub is left");
  std::abort();
}

HOST_EXPORT id imp_getBlock(IMP implementation) {
  const std::scoped_lock guard(host::runtime::lock());
  const id* place = blockOf(implementation);
  return place == nullptr ? nullptr : *place;
}

/// False for an implementation that is not made of a block. Nothing may call it any more.
HOST_EXPORT bool imp_removeBlock(IMP implementation) {
  id block = nullptr;
  {
    const std::scoped_lock guard(host::runtime::lock());
    id* place = blockOf(implementation);
    if (place == nullptr || *place == nullptr) return false;
    block = std::exchange(*place, nullptr);
  }
  _Block_release(block);
  return true;
}
}
