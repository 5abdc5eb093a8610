#include "common/main_loop.h"

#include "Foundation/run_loop.h"

namespace varnix::cli {

void settleMainLoop() {
  constexpr int kTurns = 4;
  for (int turn = 0; turn < kTurns; ++turn) host::MainRunLoop::instance().drain();
}

}  // namespace varnix::cli
