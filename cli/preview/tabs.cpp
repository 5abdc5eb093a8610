#include "preview/tabs.h"

#include "gallery/materials/sample_files.h"
#include "settings/file.h"

namespace varnix::cli {

namespace {

struct Sample {
  const char* id;
  const char* title;
  const char* summary;
  const char* open;  ///< null for none
  bool plays = false;
};

constexpr Sample kSamples[] = {
    {"global", "Global colour", "One colour for everything that is dyed.", nullptr},
    {"icon", "Icon colour",
     "Every application takes the colour of its own icon; the system's panels take that of the "
     "application in front.",
     "com.example.music"},
    {"album", "Album art", "While a track plays, the system's panels take the colour of its cover.",
     nullptr, true},
    {"elements", "Own colours", "Every element has a colour of its own.", nullptr},
};

Tab userTab(const std::string& root, const std::string& artwork, const std::string& file) {
  return {"settings", "Your settings", "As they are stored.", root, artwork, std::nullopt, file};
}

}  // namespace

Tabs Tabs::samples(const std::string& artwork) {
  Tabs tabs;
  for (const Sample& sample : kSamples) {
    const std::string name = std::string("previews/") + sample.id + ".plist";
    auto& container = tabs.containers_.emplace_back(kSettingsPath, sampleFile(name));
    Tab tab{sample.id, sample.title, sample.summary, container.root(), "", std::nullopt, name};
    if (sample.plays) tab.artwork = artwork.empty() ? sampleFile("covers/dusk.png") : artwork;
    if (sample.open != nullptr) tab.open = sample.open;
    tabs.tabs_.push_back(std::move(tab));
  }
  return tabs;
}

Tabs Tabs::ofContainer(const std::string& root, const std::string& artwork) {
  Tabs tabs;
  tabs.tabs_.push_back(userTab(root, artwork, root + kSettingsPath));
  return tabs;
}

Tabs Tabs::ofFile(const std::string& settings, const std::string& artwork) {
  Tabs tabs;
  auto& container = tabs.containers_.emplace_back(kSettingsPath, settings);
  tabs.tabs_.push_back(userTab(container.root(), artwork, settings));
  return tabs;
}

}  // namespace varnix::cli
