#include "gallery/screens/answers.h"

#include "gallery/screens/surfaces.h"

namespace varnix::screens {

namespace {

template <class T>
const T* find(const Answers& answers, const std::string& name) {
  const auto found = answers.values.find(name);
  return found == answers.values.end() ? nullptr : std::get_if<T>(&found->second);
}

}  // namespace

std::optional<Color> Answers::color(const std::string& name) const {
  const auto* text = find<std::string>(*this, name);
  auto color = text == nullptr ? std::nullopt : parseColor(*text);
  if (color) color->dyes = surfaceOfAnswer(name);
  return color;
}

Color Answers::colorOr(const std::string& name, const Color& platform) const {
  return color(name).value_or(platform);
}

std::vector<Color> Answers::colors(const std::string& name) const {
  std::vector<Color> found;
  while (const auto next = color(name + " " + std::to_string(found.size()))) found.push_back(*next);
  return found;
}

std::optional<std::string> Answers::text(const std::string& name) const {
  const auto* found = find<std::string>(*this, name);
  return found == nullptr ? std::nullopt : std::optional(*found);
}

bool Answers::flag(const std::string& name) const {
  const bool* truth = find<bool>(*this, name);
  return truth != nullptr && *truth;
}

double Answers::number(const std::string& name) const {
  const double* value = find<double>(*this, name);
  return value == nullptr ? 0 : *value;
}

}  // namespace varnix::screens
