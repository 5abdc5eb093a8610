// What a surface answers, as JSON.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "json.h"
#include "probe/surfaces.h"
#include "runtime/send.h"

namespace varnix::cli {

inline Json answerJson(const varnix::probe::Answer& answer) {
  if (const bool* truth = std::get_if<bool>(&answer)) return *truth;
  if (const auto* color = std::get_if<std::string>(&answer)) return *color;
  return nullptr;
}

/// "#rrggbbaa"; null for nil and for what is no colour.
inline Json colorJson(NSObject* color) { return answerJson(varnix::probe::colorAnswer(color)); }

/// Every surface of this process, or those of the classes alone: [{"class", "property", "case",
/// "answer"}], in the table's order.
inline Json surfaceAnswers(const std::vector<std::string>& classes = {}) {
  Json answers = Json::array();
  for (const auto& surface : varnix::probe::all()) {
    const bool isAsked = classes.empty() || std::find(classes.begin(), classes.end(),
                                                      surface.className) != classes.end();
    if (!isAsked || !varnix::probe::exists(surface)) continue;
    answers.push_back({{"class", surface.className},
                       {"property", surface.property},
                       {"case", surface.situation},
                       {"answer", answerJson(varnix::probe::ask(surface))}});
  }
  return answers;
}

}  // namespace varnix::cli
