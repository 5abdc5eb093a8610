#include "contrast/print.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>

#include "common/json.h"
#include "contrast/of_theme.h"
#include "gallery/materials/materials.h"
#include "preview/sheet.h"
#include "preview/tabs.h"

namespace varnix::cli {

namespace {

std::string number(double value) {
  char text[16];
  std::snprintf(text, sizeof text, "%5.2f", value);
  return text;
}

std::string adviceText(const Json& advice) {
  if (advice.is_null()) return "no shade of its colour holds everywhere";
  std::string text;
  for (const auto& [key, value] : advice.items())
    text.append(text.empty() ? "" : ", ").append(key + " = " + value.dump());
  return text;
}

void printRow(const Json& row) {
  const bool isDone = row["holds"];
  auto word = [&](const char* name) { return row[name].get<std::string>(); };
  std::cout << "  " << number(row["ratio"]) << (isDone ? "  " : " <") << number(row["needed"])
            << "  " << word("class") << ' ' << word("property") << ": " << word("kind") << " on "
            << word("title");
  if (row["wallpaper"].is_string()) std::cout << ", " << word("wallpaper") << " wallpaper";
  std::cout << ", " << word("ink") << " on " << word("ground") << '\n';
  if (row.contains("advice")) std::cout << "                 " << adviceText(row["advice"]) << '\n';
}

}  // namespace

int printLegibility(const std::string& file, const LegibilityChoice& choice) {
  const Materials materials = gather({});
  const Tabs tabs = Tabs::ofFile(file, "");
  const auto asked = askTabs(materials, tabs.all());
  Json rows = legibilityOf(tabs.all().front(), asked.front(), materials, choice.advises);
  if (choice.asJson) {
    std::cout << dump(rows, 2) << '\n';
  } else {
    std::string process;
    for (const Json& row : rows) {
      const auto next = row["process"].get<std::string>();
      if (process != next) std::cout << (process = next) << '\n';
      printRow(row);
    }
  }
  return std::ranges::all_of(rows, [](const Json& row) { return row["holds"].get<bool>(); }) ? 0
                                                                                             : 1;
}

}  // namespace varnix::cli
