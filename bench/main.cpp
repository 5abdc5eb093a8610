// Runs the benchmarks and prints what was measured beside what is wanted. Times are only printed:
// nothing fails on them.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>

#include "hosted.h"
#include "objc/autorelease_pool.h"
#include "process/process.h"

namespace bench {

namespace {

struct Result {
  double value;
  double goal;
};
std::map<std::string, Result> results;
std::string root;

}  // namespace

const std::string& settingsFile() {
  static const std::string file =
      root + "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
  return file;
}

UIView* dyedView() {
  static UIView* view = [] {
    host::loadLibrary(VARNIX_LIBRARY);
    auto* made = send<UIView*>(objc::alloc<UIView>(), "init"_sel);
    made->tintColor();
    return made;
  }();
  return view;
}

void report(const std::string& measure, double value, double goal) {
  results[measure] = {value, goal};
}

}  // namespace bench

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
  bench::root = (std::filesystem::temp_directory_path() / "varnix-bench-XXXXXX").string();
  if (mkdtemp(bench::root.data()) == nullptr) return 1;
  std::filesystem::create_directories(std::filesystem::path(bench::settingsFile()).parent_path());
  std::ofstream(bench::settingsFile())
      << "<plist "
         "version=\"1.0\"><dict><key>global_color</key><string>#112233</string></dict></plist>";
  host::ProcessOptions options;
  options.bundle = "com.example.app";
  options.root = bench::root;
  host::startProcess(options);
  {
    objc::AutoreleasePool pool;
    bench::registerLoading();
    bench::registerMessages();
    bench::registerReload();
    benchmark::RunSpecifiedBenchmarks();
  }
  std::filesystem::remove_all(bench::root);
  std::printf("\n%-52s %10s %8s\n", "measure", "value", "goal");
  for (const auto& [measure, result] : bench::results) {
    std::printf("%-52s %10.2f %8.0f  %s\n", measure.c_str(), result.value, result.goal,
                result.value <= result.goal ? "held" : "MISSED");
  }
}
