// What is broken in one slice.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "macho/error.h"
#include "rules/rule.h"

namespace varnix::device {

struct RuleName {
  std::string_view name, sentence;
};

struct Broken {
  std::string slice;      ///< "armv7", "arm64", or "file" for the whole.
  std::string_view rule;  ///< Its name.
  std::string what;       ///< The first place, and how many more there are.
};

inline constexpr RuleName kWhole = {
    "file.whole", "Everything that the file points to exists, and can be read to its end."};

enum class Asked : uint8_t { all, platformAlone };

/// Applies rules, and collects those that are broken.
class Findings {
 public:
  Findings(std::string slice, Asked asked, std::vector<Broken>& broken)
      : slice_(std::move(slice)), asked_(asked), broken_(broken) {}

  /// Whether all of them hold.
  template <class Of>
  bool apply(std::span<const RuleOf<Of>> rules, const Of& of) {
    const size_t before = broken_.size();
    for (const RuleOf<Of>& rule : rules) {
      if (asked_ == Asked::platformAlone && rule.asker != Asker::platform) continue;
      std::string first;
      size_t count = 0;
      const bool isWhole = survives(rule.name, [&] {
        rule.check(of, [&](const std::string& wrong) {
          if (count++ == 0) first = wrong;
        });
      });
      if (count > 1) first += " (and " + std::to_string(count - 1) + " more)";
      if (count > 0) add(rule.name, first);
      if (!isWhole) break;
    }
    return broken_.size() == before;
  }

  /// False, with a finding, if `work` reads something that does not exist.
  template <class Work>
  bool survives(std::string_view what, const Work& work) {
    try {
      work();
      return true;
    } catch (const Error& error) {
      add(kWhole.name, std::string(what) + ": " + error.what());
      return false;
    }
  }

 private:
  void add(std::string_view rule, const std::string& what);

  std::string slice_;
  Asked asked_;
  std::vector<Broken>& broken_;
};

}  // namespace varnix::device
