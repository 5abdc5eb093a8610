// Loading the library, its initialiser included, against loading an empty one: time and memory in
// a child process a sample.
#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "hosted.h"

namespace {

struct Sample {
  double milliseconds;
  double kilobytes;
};

double privateKilobytes() {
  std::ifstream file("/proc/self/smaps_rollup");
  double sum = 0;
  for (std::string word; file >> word;) {
    double value = 0;
    if (word.starts_with("Private_") && file >> value) sum += value;
  }
  return sum;
}

Sample load(const char* library) {
  int ends[2];
  if (pipe(ends) != 0) return {};
  const pid_t child = fork();
  if (child == 0) {
    const double before = privateKilobytes();
    const auto start = std::chrono::steady_clock::now();
    if (dlopen(library, RTLD_NOW) == nullptr) _exit(1);
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    const Sample sample{time.count(), privateKilobytes() - before};
    _exit(write(ends[1], &sample, sizeof sample) == sizeof sample ? 0 : 1);
  }
  close(ends[1]);
  Sample sample{};
  if (read(ends[0], &sample, sizeof sample) != sizeof sample) sample = {-1, -1};
  close(ends[0]);
  waitpid(child, nullptr, 0);
  return sample;
}

Sample median(const char* library) {
  std::vector<double> times;
  std::vector<double> sizes;
  for (int i = 0; i < 51; ++i) {
    const Sample sample = load(library);
    times.push_back(sample.milliseconds);
    sizes.push_back(sample.kilobytes);
  }
  std::nth_element(times.begin(), times.begin() + 25, times.end());
  std::nth_element(sizes.begin(), sizes.begin() + 25, sizes.end());
  return {times[25], sizes[25]};
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
  state.counters["kB_more"] = ours.kilobytes - empty.kilobytes;
  bench::report("loading, ms more than an empty library", ours.milliseconds - empty.milliseconds,
                bench::Goal::atMost(1));
  bench::report("loading, private kB more than an empty library", ours.kilobytes - empty.kilobytes,
                bench::Goal::atMost(200));
  bench::report("stripped library, kB", strippedKilobytes(), bench::Goal::atMost(200));
}

}  // namespace

void bench::registerLoading() { benchmark::RegisterBenchmark("Loading", Loading)->Iterations(1); }
