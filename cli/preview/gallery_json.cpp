#include "preview/gallery_json.h"

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Foundation/property_list.h"
#include "common/answer_json.h"
#include "common/json.h"
#include "contrast/of_theme.h"
#include "objc/autorelease_pool.h"
#include "settings/file.h"
#include "theme/difference.h"

namespace varnix::cli {

namespace {

/// The worst of the places that processes with this row have. An object that was set to another
/// colour first is on no screen.
Json contrastOf(const Json& row, const std::set<std::string>& processes, const Json& legibility) {
  Json worst;
  auto reach = [](const Json& one) {
    return one["ratio"].get<double>() / one["needed"].get<double>();
  };
  for (const Json& one : legibility) {
    const bool isIt = one["class"] == row["class"] && one["property"] == row["property"] &&
                      processes.contains(one["process"].get<std::string>());
    if (isIt && (worst.is_null() || reach(one) < reach(worst))) worst = one;
  }
  return worst;
}

/// Rows that several processes have in common are listed once.
Json surfacesOf(const AskedTab& asked, const Materials& materials, const Json& legibility) {
  Json rows = Json::array();
  std::map<std::string, std::size_t> listed;
  std::vector<std::set<std::string>> processesOf;
  std::set<std::string> processes;
  for (const auto* screen : materials.screens) {
    if (!processes.insert(screen->bundle).second) continue;
    const std::string& bundle = screen->bundle;
    for (Json& row :
         comparedAnswers(*asked.before.at(bundle).surfaces, *asked.after.at(bundle).surfaces)) {
      const auto [known, isNew] = listed.emplace(dump(row), rows.size());
      if (isNew) {
        row["process"] = bundle;
        rows.push_back(std::move(row));
        processesOf.emplace_back();
      }
      processesOf[known->second].insert(bundle);
    }
  }
  std::set<std::string> shown;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Json& row = rows[i];
    row["contrast"] = nullptr;
    if (row["before"] == row["after"]) continue;
    const auto name = dump(Json{row["process"], row["class"], row["property"]});
    const bool isOther = row["case"].get<std::string>().find("set to") != std::string::npos;
    if (!isOther || !shown.contains(name))
      row["contrast"] = contrastOf(row, processesOf[i], legibility);
    shown.insert(name);
  }
  return rows;
}

Json screenJson(const Tab& tab, const varnix::screens::Screen& screen, const Materials& materials) {
  Json json{{"id", screen.id}, {"title", screen.title}};
  for (const auto& [wallpaper, scene] : materials.scenes) {
    json[wallpaper] = {{"before", pictureFile(tab, screen, wallpaper, "before")},
                       {"after", pictureFile(tab, screen, wallpaper, "after")}};
  }
  return json;
}

/// Empty for settings that cannot be read, which count as none.
Json settingsJson(const Tab& tab) {
  const objc::AutoreleasePool pool;
  Json lines = Json::array();
  auto* stored = objc::as<NSDictionary>(host::propertyListFromFile(tab.root + kSettingsPath));
  for (std::string& line : settingLines(stored)) lines.push_back(std::move(line));
  return lines;
}

}  // namespace

Json galleryJson(const std::vector<Tab>& tabs, const std::vector<AskedTab>& asked,
                 const Materials& materials, const PageChoice& choice) {
  Json all = Json::array();
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    Json screens = Json::array();
    for (const auto* screen : materials.screens)
      screens.push_back(screenJson(tabs[i], *screen, materials));
    all.push_back(
        {{"id", tabs[i].id},
         {"title", tabs[i].title},
         {"summary", tabs[i].summary},
         {"file", tabs[i].file},
         {"settings", settingsJson(tabs[i])},
         {"screens", screens},
         {"surfaces", surfacesOf(asked[i], materials,
                                 legibilityOf(tabs[i], asked[i], materials, choice.advises))}});
  }
  return {{"follows", choice.follows}, {"tabs", all}};
}

}  // namespace varnix::cli
