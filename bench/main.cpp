// Runs the benchmarks and prints what was measured beside the goals. Times are only printed; no
// time makes it fail.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "hosted.h"
#include "objc/autorelease_pool.h"
#include "process/process.h"

namespace bench {

namespace {

std::string container;

/// Writes the settings and becomes an application.
void start() {
  std::filesystem::create_directories(std::filesystem::path(settingsFile()).parent_path());
  std::ofstream(settingsFile())
      << "<plist "
         "version=\"1.0\"><dict><key>global_color</key><string>#112233</string></dict></plist>";
  host::ProcessOptions options;
  options.bundle = "com.example.app";
  options.root = container;
  host::startProcess(options);
}

}  // namespace

const std::string& root() { return container; }

const std::string& settingsFile() {
  static const std::string file =
      container + "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
  return file;
}

UIView* dyedView() {
  static UIView* view = [] {
    host::loadLibrary(VARNIX_LIBRARY);
    auto* made = send<UIView*>(objc::alloc<UIView>(), "init"_sel);
    send(made, UIView::tintColor);
    return made;
  }();
  return view;
}

}  // namespace bench

int main(int count, char** arguments) {
  if (count == 4 && std::string_view(arguments[1]) == "--load") {
    bench::container = arguments[3];
    bench::start();
    return bench::loadOnce(arguments[2]);
  }
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
  bench::container = (std::filesystem::temp_directory_path() / "varnix-bench-XXXXXX").string();
  if (mkdtemp(bench::container.data()) == nullptr) return 1;
  bench::start();
  {
    objc::AutoreleasePool pool;
    bench::registerLoading();
    bench::registerMessages();
    bench::registerReload();
    bench::registerIconColor();
    benchmark::RunSpecifiedBenchmarks();
  }
  std::filesystem::remove_all(bench::container);
  bench::printTable();
}
