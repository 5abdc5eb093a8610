// Reloading a file of 500 entries, compared with the time libplist itself takes to read it.
#include <benchmark/benchmark.h>
#include <plist/plist.h>

#include <fstream>
#include <sstream>

#include "Foundation/property_list.h"
#include "hosted.h"
#include "objc/autorelease_pool.h"

namespace {

std::string entries() {
  std::ostringstream text;
  text << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n";
  for (int i = 0; i < 500; ++i) {
    const std::string app = "com.example.application" + std::to_string(i);
    if (i % 3 == 0) text << "\t<key>" << app << "_enabled</key>\n\t<true/>\n";
    if (i % 3 == 1) text << "\t<key>" << app << "_global_color</key>\n\t<string>#112233</string>\n";
    if (i % 3 == 2)
      text << "\t<key>" << app << "_cc_color_type</key>\n\t<integer>" << i << "</integer>\n";
  }
  return text.str() + "</dict>\n</plist>\n";
}

/// The same file as libplist writes it, as XML or binary.
std::string formatted(bool binary) {
  const std::string xml = entries();
  if (!binary) return xml;
  plist_t tree = nullptr;
  plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &tree);
  char* bytes = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(tree, &bytes, &length);
  std::string result(bytes, length);
  plist_to_xml_free(bytes);
  plist_free(tree);
  return result;
}

void readWithLibplist() {
  std::ifstream file(bench::settingsFile(), std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  const std::string bytes = text.str();
  plist_t tree = nullptr;
  plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &tree);
  plist_free(tree);
}

void Reload(benchmark::State& state, bool binary) {
  const std::string before = [] {
    std::ostringstream text;
    text << std::ifstream(bench::settingsFile()).rdbuf();
    return text.str();
  }();
  bench::dyedView();
  host::writeFile(bench::settingsFile(), formatted(binary), false);
  auto* manager =
      send<NSObject*>(send<NSObject*>(objc_getClass("VNXManager"), "alloc"_sel), "init"_sel);
  auto* store = send<NSObject*>(manager, "prefsMan"_sel);
  auto reload = [store] {
    objc::AutoreleasePool pool;
    send<void>(store, "updateCurrentImplementation"_sel);
  };
  for (auto _ : state) reload();
  const double ratio = bench::bestOf(300, 1, reload) / bench::bestOf(300, 1, readWithLibplist);
  state.counters["libplist_reads"] = ratio;
  bench::report(std::string("reload of 500 entries, ") + (binary ? "binary" : "XML") +
                    ", in libplist's reads",
                ratio, bench::Goal::atMost(2));
  host::writeFile(bench::settingsFile(), before, false);
}

}  // namespace

void bench::registerReload() {
  benchmark::RegisterBenchmark("Reload/XML", Reload, false);
  benchmark::RegisterBenchmark("Reload/binary", Reload, true);
}
