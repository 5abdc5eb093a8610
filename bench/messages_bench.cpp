// A cached send against a direct call, and a dyed question against a cached send.
#include <benchmark/benchmark.h>

#include "hosted.h"
#include "objc/autorelease_pool.h"
#include "runtime/runtime.h"

namespace {

constexpr int kQuestions = 64;

/// Questions for a pool of their own, so that colours go as they do between events.
void ask(UIView* view) {
  objc::AutoreleasePool pool;
  for (int i = 0; i < kQuestions; ++i) benchmark::DoNotOptimize(send(view, UIView::tintColor));
}

void CachedSend(benchmark::State& state) {
  UIView* view = bench::dyedView();
  for (auto _ : state) benchmark::DoNotOptimize(send<bool>(view, "isOpaque"_sel));
  using IsOpaque = bool (*)(UIView*, SEL);
  IsOpaque volatile direct =
      reinterpret_cast<IsOpaque>(class_getMethodImplementation(view->isa, "isOpaque"_sel));
  const double ratio = bench::cachedSend() / bench::bestOf(200, 2000, [&] {
                         benchmark::DoNotOptimize(direct(view, nullptr));
                       });
  state.counters["direct_calls"] = ratio;
  bench::report("cached send, in direct calls", ratio, bench::Goal::atMost(8));
}

void DyedTintColor(benchmark::State& state) {
  UIView* view = bench::dyedView();
  for (auto _ : state) ask(view);
  state.SetItemsProcessed(state.iterations() * kQuestions);
  host::runtime::startCounting();
  send(view, UIView::tintColor);
  const host::runtime::Counts counts = host::runtime::stopCounting();
  const double question = bench::tintColorQuestion();
  state.counters["messages_and_look_ups"] = static_cast<double>(counts.messages + counts.lookUps);
  state.counters["allocations"] = static_cast<double>(counts.allocations);
  state.counters["cached_sends"] = question / bench::cachedSend();
  bench::report("tintColor question, messages and look-ups",
                static_cast<double>(counts.messages + counts.lookUps), bench::Goal::atMost(25));
  bench::report("tintColor question, allocations", static_cast<double>(counts.allocations),
                bench::Goal::atMost(1));
  bench::report("tintColor question, in cached sends", question / bench::cachedSend(),
                bench::Goal::atMost(80));
}

}  // namespace

double bench::cachedSend() {
  UIView* view = dyedView();
  return bestOf(200, 2000, [view] { benchmark::DoNotOptimize(send<bool>(view, "isOpaque"_sel)); });
}

double bench::tintColorQuestion() {
  UIView* view = dyedView();
  return bestOf(100, 20, [view] { ask(view); }) / kQuestions;
}

void bench::registerMessages() {
  benchmark::RegisterBenchmark("CachedSend", CachedSend);
  benchmark::RegisterBenchmark("DyedTintColor", DyedTintColor);
}
