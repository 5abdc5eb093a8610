#include "theme/difference.h"

#include <initializer_list>
#include <set>
#include <string_view>
#include <tuple>

#include "Foundation/text.h"
#include "pane/settings/kinds.h"
#include "settings/known_key.h"
#include "settings/property_text.h"

namespace varnix::cli {

namespace {

enum class Whose : unsigned char { everybody, application, nobody };

/// Where a key comes in the list.
struct Place {
  Whose whose = Whose::nobody;
  std::string application = {};
  std::size_t row = 0;
  std::string key = {};

  bool operator<(const Place& other) const {
    return std::tie(whose, application, row, key) <
           std::tie(other.whose, other.application, other.row, other.key);
  }
};

Place placeOf(const std::string& key) {
  Place place{.key = key};
  std::size_t longest = 0;
  std::size_t row = 0;
  // "ID_scope_enabled" ends like "ID_enabled" too: the longer ending counts.
  auto consider = [&](const std::string& ending) {
    if (ending.size() > longest && ending.size() < key.size() && key.ends_with(ending)) {
      longest = ending.size();
      place = {Whose::application, key.substr(0, key.size() - longest), row, key};
    }
    ++row;
  };
  for (const auto& form : settings::kApplicationForms) consider(form.suffix);
  for (std::size_t i = 0; i < settings::kKeys.size(); ++i) {
    if (key == settings::kKeys[i].name) return {Whose::everybody, "", i, key};
    consider(std::string("_") + settings::kKeys[i].name);
  }
  return place;
}

bool areSame(NSObject* one, NSObject* other) {
  return one != nullptr && other != nullptr && entryLine("", one) == entryLine("", other);
}

/// The keys of both, each once.
std::set<Place> placesIn(std::initializer_list<NSDictionary*> themes) {
  std::set<Place> places;
  for (NSDictionary* theme : themes) {
    pane::eachKey(theme, [&](NSString* key) {
      const std::string text(host::text(key));
      if (cli::kindOf(text) != settings::Kind::data) places.insert(placeOf(text));
    });
  }
  return places;
}

NSObject* valueAt(const Place& place, NSDictionary* theme) {
  return send(theme, NSDictionary::objectForKey, host::makeString(place.key));
}

}  // namespace

std::vector<std::string> settingLines(NSDictionary* theme) {
  std::vector<std::string> lines;
  for (const Place& place : placesIn({theme}))
    lines.push_back(entryLine(place.key, valueAt(place, theme)));
  return lines;
}

std::vector<std::string> differences(NSDictionary* one, NSDictionary* other) {
  std::vector<std::string> lines;
  for (const Place& place : placesIn({one, other})) {
    NSObject* before = valueAt(place, one);
    NSObject* after = valueAt(place, other);
    if (areSame(before, after)) continue;
    if (before != nullptr) lines.push_back("- " + entryLine(place.key, before));
    if (after != nullptr) lines.push_back("+ " + entryLine(place.key, after));
  }
  return lines;
}

}  // namespace varnix::cli
