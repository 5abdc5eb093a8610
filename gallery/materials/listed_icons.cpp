#include "gallery/materials/listed_icons.h"

#include <utility>

namespace varnix::cli {

namespace {

/// The sample's icon for an application that every phone has.
constexpr std::pair<const char*, const char*> kOnEveryPhone[] = {
    {"com.example.browser", "com.apple.mobilesafari"},
    {"com.example.mail", "com.apple.mobilemail"},
    {"com.example.maps", "com.apple.Maps"},
    {"com.example.music", "com.apple.Music"},
    {"com.example.notes", "com.apple.mobilenotes"},
    {"com.example.photos", "com.apple.mobileslideshow"},
    {"com.example.settings", "com.apple.Preferences"},
};

}  // namespace

std::map<std::string, std::string> iconsFor(const std::string& bundle,
                                            std::map<std::string, std::string> icons) {
  if (bundle != "com.apple.Preferences") return icons;
  for (const auto& [sample, identifier] : kOnEveryPhone) {
    if (auto node = icons.extract(sample)) icons.try_emplace(identifier, std::move(node.mapped()));
  }
  return icons;
}

}  // namespace varnix::cli
