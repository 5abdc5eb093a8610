// Compares loading the library, including its initialiser, with loading an empty one: time and
// memory, each sample in a new child process.
#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "hosted.h"

namespace {

/// The private memory of this process, in kilobytes: pages that it wrote, and pages of files that
/// no other process uses at the moment.
struct Private {
  double dirty = 0, clean = 0;
};

struct Sample {
  double milliseconds = -1;
  Private memory{-1, -1};
};

Private privateMemory() {
  std::ifstream file("/proc/self/smaps_rollup");
  Private memory;
  for (std::string word; file >> word;) {
    if (word == "Private_Dirty:") file >> memory.dirty;
    if (word == "Private_Clean:") file >> memory.clean;
  }
  return memory;
}

/// Uses a new process: a forked one would copy our pages when it writes to them, and the copies
/// would count.
Sample load(const char* library) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe");
  std::FILE* child =
      popen(("'" + program + "' --load '" + library + "' '" + bench::root() + "'").c_str(), "r");
  Sample sample;
  if (child == nullptr) return sample;
  if (std::fscanf(child, "%lf %lf %lf", &sample.milliseconds, &sample.memory.dirty,
                  &sample.memory.clean) != 3)
    sample = {};
  pclose(child);
  return sample;
}

Sample median(const char* library) {
  constexpr std::size_t kSamples = 51;
  std::vector<Sample> samples(kSamples);
  // Pages of a newly linked file would count as written.
  ::sync();
  for (Sample& sample : samples) sample = load(library);
  const auto middle = [&samples](auto value) {
    std::vector<double> values(samples.size());
    std::transform(samples.begin(), samples.end(), values.begin(), value);
    std::nth_element(values.begin(), values.begin() + kSamples / 2, values.end());
    return values[kSamples / 2];
  };
  return {middle([](const Sample& sample) { return sample.milliseconds; }),
          {middle([](const Sample& sample) { return sample.memory.dirty; }),
           middle([](const Sample& sample) { return sample.memory.clean; })}};
}

double strippedKilobytes() {
  const auto copy =
      std::filesystem::temp_directory_path() / ("varnix-stripped-" + std::to_string(getpid()));
  const std::string command = "strip -o '" + copy.string() + "' '" VARNIX_LIBRARY "'";
  if (std::system(command.c_str()) != 0) return -1;
  const auto size = static_cast<double>(std::filesystem::file_size(copy)) / 1024;
  std::filesystem::remove(copy);
  return size;
}

void Loading(benchmark::State& state) {
  Sample ours{};
  Sample empty{};
  for (auto _ : state) {
    ours = median(VARNIX_LIBRARY);
    empty = median(VARNIX_EMPTY);
  }
  state.counters["ms_more"] = ours.milliseconds - empty.milliseconds;
  const double dirty = ours.memory.dirty - empty.memory.dirty;
  const double clean = ours.memory.clean - empty.memory.clean;
  state.counters["kB_more"] = dirty + clean;
  bench::report("loading, ms more than an empty library", ours.milliseconds - empty.milliseconds,
                bench::Goal::atMost(1));
  bench::report("loading, private kB more than an empty library", dirty + clean,
                bench::Goal::atMost(200));
  bench::report("  of those, written", dirty, bench::Goal::none());
  bench::report("stripped library, kB", strippedKilobytes(), bench::Goal::atMost(200));
}

}  // namespace

int bench::loadOnce(const char* library) {
  const Private before = privateMemory();
  const auto start = std::chrono::steady_clock::now();
  if (dlopen(library, RTLD_NOW) == nullptr) return 1;
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
  const Private after = privateMemory();
  std::printf("%f %f %f\n", time.count(), after.dirty - before.dirty, after.clean - before.clean);
  return 0;
}

void bench::registerLoading() { benchmark::RegisterBenchmark("Loading", Loading)->Iterations(1); }
