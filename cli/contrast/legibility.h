// Where the text and symbols of a theme cannot be read well, and which colours would help.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/json_forward.h"
#include "contrast/knobs.h"
#include "contrast/readings.h"
#include "objc/strong.h"

namespace varnix::cli {

/// A setting that would make a surface legible.
struct Advice {
  /// The settings to store; none if no shade of the colour holds.
  std::vector<Entry> entries;
};

/// {KEY: VALUE}, or null for none.
Json adviceJson(const Advice& advice);

class Legibility {
 public:
  using Answers = std::map<std::string, ProcessAnswer>;  ///< by process

  /// The answers are those without the library and with these settings, which may be nil.
  Legibility(Sights sights, Ask ask, NSDictionary* settings, const Answers& before,
             const Answers& after);
  Legibility(const Legibility&) = delete;
  Legibility& operator=(const Legibility&) = delete;

  /// Measures everything once, on as many threads. `goesOn` is asked now and then; if it says no,
  /// std::runtime_error is thrown.
  void measure(unsigned threads, const std::function<bool()>& goesOn);

  /// The worst place of each surface that is dyed.
  const SurfaceReadings& readings() const { return readings_; }

  /// A colour with which the surface holds. It is drawn before it is given: on every screen and
  /// wallpaper whatever looks different then must hold, or nothing is given. The shades of the
  /// colour that the surface has are tried, first for all that have it, then for the element alone.
  Advice adviceFor(const std::string& process, const std::string& surface,
                   const std::function<bool()>& goesOn);

  /// [{"process", "class", "property", "holds", and readingJson's members}]; with "advice" for
  /// those that do not hold, {KEY: VALUE} or null, if `advises`.
  Json json(bool advises, const std::function<bool()>& goesOn);

 private:
  /// The theme with a very different colour.
  struct Probe {
    Attempt attempt;
    std::map<std::pair<std::string, std::string>, std::vector<drawing::Reading>> read;
  };

  Attempt attemptWith(const Knob& knob, const drawing::ByteColor& color) const;
  bool touches(const Knob& knob, const SurfaceReading& reading, const std::string& surface);
  /// Nothing if no shade holds.
  std::optional<drawing::ByteColor> shadeThatHolds(const Knob& knob,
                                                   const std::function<bool()>& goesOn);
  bool holdsIn(Attempt& attempt, std::size_t sight);

  Sights sights_;
  Ask ask_;
  Strong<NSObject> settings_;
  Attempt before_, present_;
  std::vector<Sight> all_;
  std::vector<std::size_t> order_;  ///< in which sights are tried
  std::vector<std::vector<drawing::Reading>> read_;
  SurfaceReadings readings_;
  std::vector<Knob> knobs_;
  // Both by the knob's name.
  std::map<std::string, Probe> probes_;
  std::map<std::string, std::optional<drawing::ByteColor>> found_;
};

}  // namespace varnix::cli
