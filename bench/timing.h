// Measures short times on a busy machine.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <vector>

namespace bench {

/// Whether the run only has to show that everything works.
inline bool isShort() {
  const char* wish = std::getenv("VARNIX_BENCH");
  return wish != nullptr && std::string_view(wish) == "short";
}

/// Nanoseconds of one call, in the fastest round: other processes can only slow it down.
template <class F>
double bestOf(int rounds, int calls, F call) {
  if (isShort()) rounds = 1;
  using Clock = std::chrono::steady_clock;
  double least = std::numeric_limits<double>::max();
  for (int round = 0; round < rounds; ++round) {
    const auto start = Clock::now();
    for (int i = 0; i < calls; ++i) call();
    const double each =
        std::chrono::duration<double, std::nano>(Clock::now() - start).count() / calls;
    least = std::min(least, each);
  }
  return least;
}

/// The middle value.
inline double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace bench
