// Runs the benchmarks and prints what was measured beside what is wanted. Times are only printed:
// nothing fails on them.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "hosted.h"
#include "objc/autorelease_pool.h"
#include "process/process.h"

namespace bench {

namespace {

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
    bench::registerIconColor();
    benchmark::RunSpecifiedBenchmarks();
  }
  std::filesystem::remove_all(bench::root);
  bench::printTable();
}
