#include "table.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <vector>

namespace bench {

namespace {

struct Row {
  std::string measure;
  double value;
  Goal goal;

  bool isHeld() const {
    return goal.kind == Goal::Kind::atMost ? value <= goal.value : value >= goal.value;
  }
};

std::vector<Row> rows;

std::string text(const Goal& goal) {
  if (goal.kind == Goal::Kind::none) return "";
  char words[32];
  std::snprintf(words, sizeof words, "%s %g",
                goal.kind == Goal::Kind::atMost ? "<=" : ">=", goal.value);
  return words;
}

}  // namespace

void report(const std::string& measure, double value, Goal goal) {
  const auto place = std::find_if(rows.begin(), rows.end(),
                                  [&](const Row& row) { return row.measure == measure; });
  if (place == rows.end()) rows.push_back({measure, value, goal});
  else *place = {measure, value, goal};
}

void printTable() {
  std::printf("\n%-60s %10s %9s\n", "measure", "value", "goal");
  for (const Row& row : rows) {
    const char* verdict = row.isHeld() ? "held" : "MISSED";
    std::printf("%-60s %10.2f %9s  %s\n", row.measure.c_str(), row.value, text(row.goal).c_str(),
                row.goal.kind == Goal::Kind::none ? "" : verdict);
  }
}

std::string tableAsJson() {
  nlohmann::ordered_json table = nlohmann::ordered_json::array();
  for (const Row& row : rows) {
    nlohmann::ordered_json entry{{"measure", row.measure}, {"value", row.value}};
    if (row.goal.kind != Goal::Kind::none) {
      entry["goal"] = text(row.goal);
      entry["held"] = row.isHeld();
    }
    table.push_back(std::move(entry));
  }
  return table.dump(2) + "\n";
}

}  // namespace bench
