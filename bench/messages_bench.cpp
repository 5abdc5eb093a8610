// A cached send against a direct call, and a dyed question against a cached send.
#include <benchmark/benchmark.h>

#include <chrono>

#include "hosted.h"
#include "objc/autorelease_pool.h"
#include "runtime/runtime.h"

namespace {

using Clock = std::chrono::steady_clock;

/// Nanoseconds of one call, the best of many rounds: a busy machine only ever adds.
template <class F>
double best(F call, int rounds = 200, int calls = 2000) {
  double least = 1e9;
  for (int round = 0; round < rounds; ++round) {
    const auto start = Clock::now();
    for (int i = 0; i < calls; ++i) call();
    const double each =
        std::chrono::duration<double, std::nano>(Clock::now() - start).count() / calls;
    least = std::min(least, each);
  }
  return least;
}

double cachedSend() {
  UIView* view = bench::dyedView();
  return best([view] { benchmark::DoNotOptimize(send<bool>(view, "isOpaque"_sel)); });
}

void CachedSend(benchmark::State& state) {
  UIView* view = bench::dyedView();
  for (auto _ : state) benchmark::DoNotOptimize(send<bool>(view, "isOpaque"_sel));
  using IsOpaque = bool (*)(UIView*, SEL);
  IsOpaque volatile direct =
      reinterpret_cast<IsOpaque>(class_getMethodImplementation(view->isa, "isOpaque"_sel));
  const double ratio =
      cachedSend() / best([&] { benchmark::DoNotOptimize(direct(view, nullptr)); });
  state.counters["direct_calls"] = ratio;
  bench::report("cached send, in direct calls", ratio, 8);
}

/// Questions for a pool of their own, so that colours go as they do between events.
void ask(UIView* view) {
  constexpr int kQuestions = 64;
  objc::AutoreleasePool pool;
  for (int i = 0; i < kQuestions; ++i) benchmark::DoNotOptimize(view->tintColor());
}

void DyedTintColor(benchmark::State& state) {
  UIView* view = bench::dyedView();
  for (auto _ : state) ask(view);
  state.SetItemsProcessed(state.iterations() * 64);
  host::runtime::startCounting();
  view->tintColor();
  const host::runtime::Counts counts = host::runtime::stopCounting();
  const double question = best([view] { ask(view); }, 100, 20) / 64;
  state.counters["messages_and_look_ups"] = static_cast<double>(counts.messages + counts.lookUps);
  state.counters["allocations"] = static_cast<double>(counts.allocations);
  state.counters["cached_sends"] = question / cachedSend();
  bench::report("tintColor question, messages and look-ups",
                static_cast<double>(counts.messages + counts.lookUps), 25);
  bench::report("tintColor question, allocations", static_cast<double>(counts.allocations), 1);
  bench::report("tintColor question, in cached sends", question / cachedSend(), 80);
}

}  // namespace

void bench::registerMessages() {
  benchmark::RegisterBenchmark("CachedSend", CachedSend);
  benchmark::RegisterBenchmark("DyedTintColor", DyedTintColor);
}
