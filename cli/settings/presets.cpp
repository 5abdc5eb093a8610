#include "settings/presets.h"

#include <strings.h>

#include <iostream>

#include "common/errors.h"
#include "common/nearest.h"
#include "common/swatches.h"
#include "prefs/presets.h"

namespace varnix::cli {

namespace {

const settings::Preset& presetOf(const std::string& name) {
  for (const settings::Preset& preset : settings::kPresets) {
    if (strcasecmp(preset.name, name.c_str()) == 0) return preset;
  }
  throw UsageError("no such preset", name + didYouMean(name, presetNames()));
}

}  // namespace

std::vector<std::string> presetNames() {
  std::vector<std::string> names;
  for (const settings::Preset& preset : settings::kPresets) names.emplace_back(preset.name);
  return names;
}

void listPresets() {
  constexpr std::size_t kNameWidth = 12;
  for (const settings::Preset& preset : settings::kPresets) {
    std::cout << padded(preset.name, kNameWidth) << preset.dye;
    for (std::size_t i = 0; i < settings::kElementCount; ++i) {
      if (const char* own = preset.own[i])
        std::cout << "  " << settings::kElements[i].key << ' ' << (*own == '\0' ? "off" : own);
    }
    std::cout << '\n';
  }
}

std::vector<Entry> entriesOfPreset(const std::string& name) {
  std::vector<Entry> entries;
  settings::eachSetting(presetOf(name), [&](const char* key, const char* suffix, const char* color,
                                            long long number) {
    entries.push_back(
        {std::string(key) + suffix, color != nullptr ? Value(std::string(color)) : Value(number)});
  });
  return entries;
}

}  // namespace varnix::cli
