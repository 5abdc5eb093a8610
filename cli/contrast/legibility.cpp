#include "contrast/legibility.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <mutex>
#include <numeric>
#include <set>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <tuple>

#include "common/json.h"
#include "contrast/shades.h"
#include "gallery/materials/screens_module.h"

namespace varnix::cli {

using drawing::Place;
using drawing::Reading;

namespace {

void require(const std::function<bool()>& goesOn) {
  if (!goesOn()) throw std::runtime_error("overtaken by another change");
}

const Place* placeIn(const std::vector<Reading>& readings, std::string_view surface) {
  const auto found = std::ranges::find(readings, surface, &Reading::surface);
  return found == readings.end() ? nullptr : &found->worst;
}

bool looksSame(const Place& one, const Place& other) {
  constexpr double kSame = 1e-6;
  return one.ink == other.ink && one.ground == other.ground &&
         std::abs(one.contrast - other.contrast) < kSame;
}

bool haveSameAnswers(const std::vector<varnix::screens::Layer>& one,
                     const std::vector<varnix::screens::Layer>& other) {
  return std::ranges::equal(one, other,
                            [](const auto& a, const auto& b) { return *a.answers == *b.answers; });
}

std::string nameOf(const Knob& knob) { return knob.key + ' ' + knob.typeKey; }

/// A colour that differs clearly.
drawing::ByteColor farFrom(const drawing::ByteColor& color) { return shadesOf(color).back(); }

}  // namespace

Legibility::Legibility(Sights sights, Ask ask, NSDictionary* settings, const Answers& before,
                       const Answers& after)
    : sights_(std::move(sights)),
      ask_(std::move(ask)),
      settings_(Strong<NSObject>::retain(settings)),
      before_(sights_, ask_, ""),
      present_(sights_, ask_, ""),
      all_(sightsOf(sights_)),
      order_(all_.size()),
      knobs_(knobsOf(settings)) {
  before_.know(before);
  present_.know(after);
  std::iota(order_.begin(), order_.end(), 0);
}

void Legibility::measure(unsigned threads, const std::function<bool()>& goesOn) {
  read_.assign(all_.size(), {});
  std::atomic<std::size_t> next = 0;
  std::mutex mutex;
  std::exception_ptr failure;
  auto work = [&] {
    for (std::size_t i = next++; i < all_.size(); i = next++) {
      try {
        require(goesOn);
        read_[i] = present_.read(all_[i]);
      } catch (...) {
        const std::lock_guard lock(mutex);
        failure = std::current_exception();
        next = all_.size();
      }
    }
  };
  {
    std::vector<std::jthread> workers;
    for (unsigned i = 1; i < threads; ++i) workers.emplace_back(work);
    work();
  }
  if (failure != nullptr) std::rethrow_exception(failure);

  readings_.clear();
  for (std::size_t i = 0; i < all_.size(); ++i) take(readings_, all_[i], read_[i]);
  // Only what the library changes is judged.
  std::set<SurfaceReadings::key_type> dyed;
  for (const auto& [screen, wallpaper] : all_) {
    const auto& before = before_.answers(*screen, wallpaper).values;
    for (const auto& [name, answer] : present_.answers(*screen, wallpaper).values) {
      const auto was = before.find(name);
      if (was != before.end() && was->second == answer) continue;
      if (const char* surface = screensModule().surfaceOf(*screen, name))
        dyed.emplace(screen->bundle, surface);
    }
  }
  std::erase_if(readings_, [&](const auto& entry) { return !dyed.contains(entry.first); });
  // Where something is wrong now, another colour will first go wrong too. The pages of settings
  // come last, since asking them takes longest.
  std::ranges::sort(order_, {}, [&](std::size_t i) {
    const bool isLast = std::string_view(all_[i].screen->bundle) == "com.apple.Preferences";
    const bool isFine =
        std::ranges::all_of(read_[i], [](const Reading& one) { return holds(one.worst); });
    return std::tuple(isLast, isFine, i);
  });
}

bool Legibility::touches(const Knob& knob, const SurfaceReading& reading,
                         const std::string& surface) {
  Probe& probe =
      probes_.try_emplace(nameOf(knob), Probe{attemptWith(knob, farFrom(knob.present)), {}})
          .first->second;
  const Sight& sight = reading.sight;
  if (haveSameAnswers(probe.attempt.layers(sight), present_.layers(sight))) return false;
  const auto [read, isNew] = probe.read.try_emplace({sight.screen->id, sight.wallpaper});
  if (isNew) read->second = probe.attempt.read(sight);
  const Place* place = placeIn(read->second, surface);
  return place == nullptr || !looksSame(*place, reading.place);
}

Attempt Legibility::attemptWith(const Knob& knob, const drawing::ByteColor& color) const {
  return {sights_, ask_,
          settingsWith(static_cast<NSDictionary*>(settings_.get()), knob.entriesFor(color))};
}

bool Legibility::holdsIn(Attempt& attempt, std::size_t sight) {
  const Sight& looked = all_[sight];
  if (haveSameAnswers(attempt.layers(looked), present_.layers(looked))) return true;
  return std::ranges::all_of(attempt.read(looked), [&](const Reading& one) {
    if (holds(one.worst)) return true;
    const Place* was = placeIn(read_[sight], one.surface);
    return was != nullptr && looksSame(one.worst, *was);
  });
}

std::optional<drawing::ByteColor> Legibility::shadeThatHolds(const Knob& knob,
                                                             const std::function<bool()>& goesOn) {
  for (const drawing::ByteColor& shade : shadesOf(knob.present)) {
    Attempt attempt = attemptWith(knob, shade);
    const auto failed = std::ranges::find_if(order_, [&](std::size_t sight) {
      require(goesOn);
      return !holdsIn(attempt, sight);
    });
    if (failed == order_.end()) return shade;
    std::rotate(order_.begin(), failed, failed + 1);
  }
  return {};
}

Advice Legibility::adviceFor(const std::string& process, const std::string& surface,
                             const std::function<bool()>& goesOn) {
  const auto reading = readings_.find({process, surface});
  if (reading == readings_.end() || holds(reading->second.place)) return {};
  for (const Knob& knob : knobs_) {
    require(goesOn);
    if (!touches(knob, reading->second, surface)) continue;
    auto found = found_.find(nameOf(knob));
    if (found == found_.end())
      found = found_.emplace(nameOf(knob), shadeThatHolds(knob, goesOn)).first;
    if (found->second) return {knob.entriesFor(*found->second)};
  }
  return {};
}

Json adviceJson(const Advice& advice) {
  Json changes;
  for (const auto& [key, value] : advice.entries)
    std::visit([&, &name = key](const auto& plain) { changes[name] = plain; }, value);
  return changes;
}

Json Legibility::json(bool advises, const std::function<bool()>& goesOn) {
  Json rows = Json::array();
  for (const auto& [name, reading] : readings_) {
    const auto& [process, surface] = name;
    const std::size_t blank = surface.find(' ');
    Json row{{"process", process},
             {"class", surface.substr(0, blank)},
             {"property", surface.substr(blank + 1)},
             {"holds", holds(reading.place)}};
    row.update(readingJson(reading));
    if (advises && !holds(reading.place)) {
      row["advice"] = adviceJson(adviceFor(process, surface, goesOn));
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace varnix::cli
