// What fast enumeration calls when a collection changes under it.
#include <utility>

#include "internal.h"
#include "objc/object.h"

namespace {

using MutationHandler = void (*)(id);

std::atomic<MutationHandler>& mutationHandler() {
  static constinit std::atomic<MutationHandler> handler{nullptr};
  return handler;
}

}  // namespace

extern "C" {

/// Without a handler it raises.
HOST_EXPORT void objc_enumerationMutation(id collection) {
  if (MutationHandler handler = mutationHandler()) {
    handler(collection);
    return;
  }
  throw host::runtime::Exception("NSGenericException",
                                 std::string("Collection <") +
                                     class_getName(object_getClass(collection)) +
                                     "> was mutated while being enumerated.");
}

HOST_EXPORT void objc_setEnumerationMutationHandler(MutationHandler handler) {
  mutationHandler() = handler;
}
}
