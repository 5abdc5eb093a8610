// Calls between the library and this process, for either processor.
#pragma once

#include <string_view>

#include "abi/direction.h"
#if defined(__aarch64__)
#include "abi/signature.h"
#else
#include "abi/word_signature.h"
#endif

namespace varnix::device {

#if defined(__aarch64__)
using NativeSignature = CallSignature;
#else
using NativeSignature = WordSignature;
#endif

NativeSignature readNativeSignature(std::string_view encoding);

/// A function that takes such a call and makes it with the other convention. The target itself if
/// that works unchanged, and nil for nil. It lives for ever.
void* bridge(const NativeSignature& call, Direction direction, void* target);

}  // namespace varnix::device
