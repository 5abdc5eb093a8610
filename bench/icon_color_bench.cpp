// Questions when the dye is the application icon's colour and the settings already hold it.
#include <benchmark/benchmark.h>

#include <chrono>

#include "Foundation/run_loop.h"
#include "hosted.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"

namespace {

constexpr CGFloat kGreen = 0.5;

/// A manager of our own. Notifications tell the library's manager what this one's store saves.
NSObject* manager() {
  static auto* made =
      send<NSObject*>(send<NSObject*>(objc_getClass("VNXManager"), "alloc"_sel), "init"_sel);
  return made;
}
NSObject* store() { return send<NSObject*>(manager(), "prefsMan"_sel); }

void notify() { send<void>(store(), "saveAndNotify"_sel); }

CGFloat green(UIColor* color) {
  CGFloat red = 0;
  CGFloat value = 0;
  CGFloat blue = 0;
  CGFloat alpha = 0;
  send<bool>(color, "getRed:green:blue:alpha:"_sel, &red, &value, &blue, &alpha);
  return value;
}

/// Makes the icon's colour the dye, as long as this object lives.
class IconColorAsDye {
 public:
  IconColorAsDye() {
    bench::dyedView();
    set(NSNumber::numberWithLongLong(1), "global_color_type"_ns);
    set(NSKeyedArchiver::archivedDataWithRootObject(UIColor::colorWithRed(0, kGreen, 0, 1)),
        "cached_icon_color_com.example.app"_ns);
    notify();
    waitUntil([] { return green(send(bench::dyedView(), UIView::tintColor)) == kGreen; });
  }
  ~IconColorAsDye() {
    for (NSString* key : {"global_color_type"_ns, "cached_icon_color_com.example.app"_ns})
      send<void>(store(), "removeObjectForKey:"_sel, key);
    notify();
    waitUntil([] { return green(send(bench::dyedView(), UIView::tintColor)) != kGreen; });
  }
  IconColorAsDye(const IconColorAsDye&) = delete;
  IconColorAsDye& operator=(const IconColorAsDye&) = delete;

 private:
  static void set(NSObject* value, NSString* key) {
    send<void>(store(), "setObject:forKey:"_sel, value, key);
  }
  template <class F>
  static void waitUntil(F condition) {
    host::MainRunLoop::instance().runUntil(condition, std::chrono::seconds(3));
  }
};

void IconColor(benchmark::State& state) {
  const objc::AutoreleasePool pool;
  const IconColorAsDye dye;
  if (green(send(bench::dyedView(), UIView::tintColor)) != kGreen) {
    state.SkipWithError("the dye is not the icon's colour");
    return;
  }
  auto ask = [] {
    const objc::AutoreleasePool inner;
    benchmark::DoNotOptimize(send<UIColor*>(manager(), "dye"_sel));
  };
  auto askAnew = [&] {
    send<void>(manager(), "setCachedIconColor:"_sel, static_cast<UIColor*>(nullptr));
    ask();
  };
  for (auto _ : state) ask();
  const double unarchived = bench::bestOf(200, 20, askAnew) / 1000;
  const double sends = bench::tintColorQuestion() / bench::cachedSend();
  state.counters["cached_sends"] = sends;
  state.counters["us_unarchived"] = unarchived;
  bench::report("tintColor question, icon's colour kept, in cached sends", sends,
                bench::Goal::atMost(60));
  bench::report("first question, icon's colour from the settings, us", unarchived,
                bench::Goal::none());
}

}  // namespace

void bench::registerIconColor() { benchmark::RegisterBenchmark("IconColor", IconColor); }
