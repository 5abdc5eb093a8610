#include "studio/tables.h"

#include <iterator>
#include <set>
#include <string>

#include "common/json.h"
#include "gallery/materials/screens_module.h"
#include "prefs/keys.h"
#include "prefs/presets.h"
#include "settings/presets.h"

namespace varnix::cli {

namespace {

const char* kindWord(settings::Kind kind) {
  switch (kind) {
    case settings::Kind::boolean:
      return "boolean";
    case settings::Kind::integer:
      return "integer";
    case settings::Kind::colorType:
      return "colorType";
    case settings::Kind::color:
      return "color";
    case settings::Kind::data:
      return "data";
  }
  return "";
}

Json settingJson(const settings::Key& key) {
  return {{"key", key.name},
          {"kind", kindWord(key.kind)},
          {"fallback", key.fallback},
          {"meaning", key.meaning}};
}

/// "Status bar" of "status bar".
std::string titled(std::string text) {
  if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 32);
  return text.substr(0, text.find(';'));
}

Json elementsJson() {
  Json elements = Json::array();
  for (std::size_t i = 0; i < settings::kElementCount; ++i) {
    const settings::Element& element = settings::kElements[i];
    // The table has two keys for each element, after the general ones.
    const std::size_t at = std::size(settings::detail::kGeneralKeys) + 2 * i;
    elements.push_back({{"key", element.key},
                        {"title", titled(element.typeMeaning)},
                        {"type", settingJson(settings::kKeys[at])},
                        {"color", settingJson(settings::kKeys[at + 1])}});
  }
  return elements;
}

Json presetsJson() {
  Json presets = Json::array();
  for (const settings::Preset& preset : settings::kPresets) {
    Json values = Json::object();
    for (const auto& [key, value] : entriesOfPreset(preset.name))
      std::visit([&, &name = key](const auto& plain) { values[name] = plain; }, value);
    presets.push_back({{"name", preset.name}, {"dye", preset.dye}, {"settings", values}});
  }
  return presets;
}

}  // namespace

Json tablesJson() {
  Json general = Json::array(), screens = Json::array(), applications = Json::array(),
       forms = Json::array();
  for (const settings::Key& key : settings::detail::kGeneralKeys)
    general.push_back(settingJson(key));
  for (const auto& form : settings::kApplicationForms) {
    forms.push_back({{"prefix", form.prefix},
                     {"suffix", form.suffix},
                     {"kind", kindWord(form.kind)},
                     {"meaning", form.meaning}});
  }
  std::set<std::string> listed;
  for (const auto* screen : screensModule().screens) {
    screens.push_back({{"id", screen->id}, {"title", screen->title}, {"bundle", screen->bundle}});
    if (screen->kind == host::ProcessKind::application && listed.insert(screen->bundle).second)
      applications.push_back({{"id", screen->bundle}, {"title", screen->title}});
  }
  return {{"general", general},       {"elements", elementsJson()}, {"forms", forms},
          {"presets", presetsJson()}, {"screens", screens},         {"applications", applications}};
}

}  // namespace varnix::cli
