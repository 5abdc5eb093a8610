#include "common/nearest.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace varnix::cli {

namespace {

constexpr std::size_t kLongestWord = 100;

std::string lowered(std::string_view word) {
  std::string result(word);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return result;
}

std::size_t distanceBetween(std::string_view a, std::string_view b) {
  std::vector<std::size_t> beforeLast;
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(last.begin(), last.end(), 0);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    beforeLast = last;
    last = row;
  }
  return last.back();
}

}  // namespace

std::optional<Nearest> nearest(std::string_view word, const std::vector<std::string>& known) {
  if (word.size() > kLongestWord) return {};
  const std::size_t most = std::min<std::size_t>(word.size() / 3, 3);
  const std::string meant = lowered(word);
  std::optional<Nearest> found;
  for (const std::string& candidate : known) {
    const std::size_t distance = distanceBetween(meant, lowered(candidate));
    if (distance > most || (found && distance >= found->distance)) continue;
    found = Nearest{candidate, distance};
  }
  return found;
}

std::string didYouMean(const std::optional<Nearest>& found) {
  return found ? " (did you mean " + found->word + "?)" : "";
}

std::string didYouMean(std::string_view word, const std::vector<std::string>& known) {
  return didYouMean(nearest(word, known));
}

}  // namespace varnix::cli
