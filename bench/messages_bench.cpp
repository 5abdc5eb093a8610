// A cached send compared with a direct call, and a dyed question with a cached send.
#include <benchmark/benchmark.h>

#include "hosted.h"
#include "objc/autorelease_pool.h"
#include "prefs/KTPrefsManager.h"
#include "runtime/runtime.h"

namespace {

constexpr int kQuestions = 64;

constexpr objc::Message<UIView, "isOpaque", bool()> kIsOpaque{};

/// Asks in a pool of its own, so that colours are released as they are between events.
void ask(UIView* view) {
  objc::AutoreleasePool pool;
  for (int i = 0; i < kQuestions; ++i) benchmark::DoNotOptimize(send(view, UIView::tintColor));
}

void CachedSend(benchmark::State& state) {
  UIView* view = bench::dyedView();
  for (auto _ : state) benchmark::DoNotOptimize(send(view, kIsOpaque));
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

// The cost of a look-up beyond the dictionary's own: another thread may replace the view.
void Setting(benchmark::State& state) {
  bench::dyedView();
  static NSObject* manager =
      send<NSObject*>(send<NSObject*>(objc_getClass("VNXManager"), "alloc"_sel), "init"_sel);
  auto* store = send<KTPrefsManager*>(manager, "prefsMan"_sel);
  auto* view = send(store, KTPrefsManager::currentPrefsImplementation);
  auto each = [](auto look) {
    return [look] {
      objc::AutoreleasePool pool;
      for (int i = 0; i < kQuestions; ++i) benchmark::DoNotOptimize(look());
    };
  };
  const auto safe =
      each([store] { return send(store, KTPrefsManager::objectForKey, "enabled"_ns); });
  const auto plain = each([view] { return send(view, NSDictionary::objectForKey, "enabled"_ns); });
  for (auto _ : state) safe();
  state.SetItemsProcessed(state.iterations() * kQuestions);
  const double ratio = bench::bestOf(200, 50, safe) / bench::bestOf(200, 50, plain);
  state.counters["dictionary_look_ups"] = ratio;
  bench::report("look-up of a setting while others may replace it, in the dictionary's own", ratio,
                bench::Goal::none());
}

}  // namespace

double bench::cachedSend() {
  UIView* view = dyedView();
  return bestOf(200, 2000, [view] { benchmark::DoNotOptimize(send(view, kIsOpaque)); });
}

double bench::tintColorQuestion() {
  UIView* view = dyedView();
  return bestOf(100, 20, [view] { ask(view); }) / kQuestions;
}

void bench::registerMessages() {
  benchmark::RegisterBenchmark("CachedSend", CachedSend);
  benchmark::RegisterBenchmark("DyedTintColor", DyedTintColor);
  benchmark::RegisterBenchmark("Setting", Setting);
}
