#include "common/answer_json.h"

#include <algorithm>

#include "common/json.h"

namespace varnix::cli {

namespace {

Json answerTo(const Json& asked, const Json& surfaces) {
  for (const Json& surface : surfaces) {
    if (surface["class"] == asked["class"] && surface["property"] == asked["property"] &&
        surface["case"] == asked["case"]) {
      return surface["answer"];
    }
  }
  return nullptr;
}

}  // namespace

Json answerJson(const varnix::probe::Answer& answer) {
  if (const bool* truth = std::get_if<bool>(&answer)) return *truth;
  if (const auto* color = std::get_if<std::string>(&answer)) return *color;
  return nullptr;
}

Json colorJson(NSObject* color) { return answerJson(varnix::probe::colorAnswer(color)); }

Json surfaceAnswers(const std::vector<std::string>& classes) {
  Json answers = Json::array();
  for (const auto& surface : varnix::probe::all()) {
    const bool isAsked = classes.empty() || std::find(classes.begin(), classes.end(),
                                                      surface.className()) != classes.end();
    if (!isAsked || !varnix::probe::exists(surface)) continue;
    answers.push_back({{"class", surface.className()},
                       {"property", surface.property},
                       {"case", surface.situation},
                       {"answer", answerJson(varnix::probe::ask(surface))}});
  }
  return answers;
}

Json comparedAnswers(const Json& before, const Json& after) {
  Json surfaces = Json::array();
  for (const Json& surface : after) {
    surfaces.push_back({{"class", surface["class"]},
                        {"property", surface["property"]},
                        {"case", surface["case"]},
                        {"before", answerTo(surface, before)},
                        {"after", surface["answer"]}});
  }
  return surfaces;
}

}  // namespace varnix::cli
