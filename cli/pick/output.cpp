#include "pick/output.h"

#include "common/escaped.h"
#include "common/json.h"
#include "common/swatches.h"

namespace varnix::cli {

namespace {

using pick::Analysis;
using pick::hex;

Json jsonOf(const Analysis& image) {
  if (!image.error.empty()) return {{"file", image.file}, {"error", image.error}};
  Json runnersUp = Json::array();
  for (const pick::CountedColor& other : image.runnersUp) {
    runnersUp.push_back({{"color", hex(other.color)}, {"count", other.count}});
  }
  return {{"file", image.file},
          {"background", hex(image.background)},
          {"primary", hex(image.primary)},
          {"secondary", hex(image.secondary)},
          {"important", hex(image.important)},
          {"average", hex(image.average)},
          {"rule", image.rule},
          {"saturated", image.isSaturated},
          {"runnersUp", runnersUp}};
}

constexpr std::size_t kNameWidth = 12;
constexpr std::size_t kColorWidth = 11;

std::string textOf(const Analysis& image, bool withSwatches) {
  std::string text = escaped(image.file) + '\n';
  auto add = [&](const char* name, const pick::Color& color, const std::string& note) {
    text += padded(name, kNameWidth) + (withSwatches ? swatch(hex(color)) : "");
    text += note.empty() ? hex(color) : padded(hex(color), kColorWidth) + note;
    text += '\n';
  };
  add("background", image.background, "");
  add("primary", image.primary, "");
  add("secondary", image.secondary, "");
  add("important", image.important,
      std::string("from ") + image.rule + (image.isSaturated ? ", saturated" : ""));
  add("average", image.average, "");
  const char* name = "runners-up";
  for (const pick::CountedColor& other : image.runnersUp) {
    add(name, other.color, std::to_string(other.count));
    name = "";
  }
  return text;
}

}  // namespace

std::string pickedJson(const pick::Answer& answer) {
  Json images = Json::array();
  for (const Analysis& image : answer.images) images.push_back(jsonOf(image));
  return dump(images, 2) + '\n';
}

std::string pickedText(const pick::Answer& answer, bool withSwatches) {
  std::string text;
  for (const Analysis& image : answer.images) {
    if (!image.error.empty()) continue;
    if (!text.empty()) text += '\n';
    text += textOf(image, withSwatches);
  }
  return text;
}

}  // namespace varnix::cli
