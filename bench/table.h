// The measurements, beside the goals.
#pragma once

#include <string>

namespace bench {

struct Goal {
  enum class Kind { none, atMost, atLeast };

  static constexpr Goal none() { return {Kind::none, 0}; }
  static constexpr Goal atMost(double value) { return {Kind::atMost, value}; }
  static constexpr Goal atLeast(double value) { return {Kind::atLeast, value}; }

  Kind kind;
  double value;
};

/// A row of the table; a later report of the same measure replaces the earlier one.
void report(const std::string& measure, double value, Goal goal);

/// Prints the rows in the order in which they were reported.
void printTable();
/// The rows as JSON: [{"measure", "value", "goal", "held"}]. The last two are there only with a
/// goal.
std::string tableAsJson();

}  // namespace bench
