// Things that are done once in a process.
#include <atomic>

#include "objc/object.h"
#include "platform/Dispatch.h"

namespace {

// The values of a predicate. The platform requires that it starts with the first.
constexpr dispatch_once_t kNotBegun = 0;
constexpr dispatch_once_t kRunning = 1;
constexpr dispatch_once_t kDone = -1;

}  // namespace

extern "C" void dispatch_once(dispatch_once_t* predicate, dispatch_block_t block) {
  std::atomic_ref<dispatch_once_t> state(*predicate);
  dispatch_once_t seen = state.load(std::memory_order_acquire);
  while (seen != kDone) {
    if (seen == kNotBegun) {
      if (!state.compare_exchange_strong(seen, kRunning, std::memory_order_acquire)) continue;
      [&]() noexcept {
        (*block)();
      }();  // an exception ends the process, since nobody could try again
      state.store(kDone, std::memory_order_release);
      state.notify_all();
      return;
    }
    state.wait(seen, std::memory_order_acquire);
    seen = state.load(std::memory_order_acquire);
  }
}
