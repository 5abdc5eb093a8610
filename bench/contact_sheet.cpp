// varnix-contact-sheet OUT.png < RESULTS: draws what `varnix pick --json` found: each picture with
// its three colours and the important one. Also prints how often each rule won.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "drawing/canvas.h"
#include "drawing/text.h"

namespace {

using Json = nlohmann::json;
using namespace varnix::drawing;

// In points, each drawn as two pixels.
constexpr double kScale = 2;
constexpr int kColumns = 8;
constexpr double kMargin = 16;
constexpr double kGap = 10;
constexpr double kCardWidth = 150;
constexpr double kImageHeight = 100;
constexpr double kImportantHeight = 26;
constexpr double kSwatchHeight = 22;
constexpr double kCaptionHeight = 18;
constexpr double kCardHeight = kImageHeight + kImportantHeight + kSwatchHeight + kCaptionHeight;
constexpr Color kPage = rgb(0xf2f2f5);
constexpr Color kCard = kWhite;
constexpr Color kCaption = rgb(0x595961);

/// From "#rrggbbaa", ignoring the alpha.
Color colorOf(const std::string& hex) {
  const auto color = parseColor(hex);
  if (!color) throw std::runtime_error("not a colour: " + hex);
  return color->withAlpha(1);
}

const Color& textColorOn(const Color& color) {
  constexpr double kBright = 0.55;
  return luma(color) > kBright ? kBlack : kWhite;
}

/// Centred, and shortened to fit.
void text(const Canvas& canvas, const std::string& words, const Box& box, double size,
          const Color& color) {
  constexpr double kPadding = 3;
  drawCentered(canvas, {box.middleX(), box.middleY()}, words,
               {size, color, Weight::regular, Align::center}, box.width - 2 * kPadding);
}

/// Null if the file cannot be read.
Surface pictureOf(const std::string& path) {
  constexpr Pixels kCovered{static_cast<int>(kCardWidth * kScale),
                            static_cast<int>(kImageHeight * kScale)};
  std::string problem;
  try {
    return readPicture(path, kCovered, problem);
  } catch (const std::runtime_error&) {
    return nullptr;
  }
}

void checkerboard(const Canvas& canvas, const Box& box) {
  constexpr double kSquare = 6;
  canvas.fill(box, rgb(0xf7f7f7));
  for (int row = 0; row * kSquare < box.height; ++row)
    for (int column = row % 2; column * kSquare < box.width; column += 2)
      canvas.fill({box.x + column * kSquare, box.y + row * kSquare,
                   std::min(kSquare, box.width - column * kSquare),
                   std::min(kSquare, box.height - row * kSquare)},
                  rgb(0xe3e3e6));
}

void drawPicture(const Canvas& canvas, const Surface& picture, const Box& box) {
  checkerboard(canvas, box);
  if (picture == nullptr) return;
  const double scale = std::min(box.width / widthOf(picture), box.height / heightOf(picture));
  canvas.picture(picture, around({box.middleX(), box.middleY()}, widthOf(picture) * scale,
                                 heightOf(picture) * scale));
}

/// The colour that was chosen has a dot beside its name.
void drawSwatches(const Canvas& canvas, const Json& result, Box box) {
  box.width /= 3;
  for (const char* rule : {"background", "primary", "secondary"}) {
    const std::string hex = result.at(rule);
    const Color color = colorOf(hex);
    canvas.fill(box, color);
    const bool isChosen = result.at("rule") == rule;
    text(canvas, (isChosen ? "\u2022 " : "") + hex.substr(0, 7), box, 7.5, textColorOn(color));
    box.x += box.width;
  }
}

void drawCard(const Canvas& canvas, const Json& result, const Box& card) {
  const std::string file = result.at("file");
  canvas.save();
  canvas.rectangle(card, 8);
  canvas.clip();
  canvas.fill(card, kCard);
  Box box{card.x, card.y, card.width, kImageHeight};
  drawPicture(canvas, pictureOf(file), box);
  const std::string hex = result.at("important");
  const Color important = colorOf(hex);
  box = {card.x, box.bottom(), card.width, kImportantHeight};
  canvas.fill(box, important);
  const std::string how = result.at("saturated").get<bool>() ? "  saturated" : "";
  text(canvas, hex.substr(0, 7) + how, box, 11, textColorOn(important));
  box = {card.x, box.bottom(), card.width, kSwatchHeight};
  drawSwatches(canvas, result, box);
  box = {card.x, box.bottom(), card.width, kCaptionHeight};
  text(canvas, std::filesystem::path(file).stem().string(), box, 8, kCaption);
  canvas.restore();
}

Canvas drawSheet(const std::vector<Json>& results) {
  const auto rows = static_cast<int>((results.size() + kColumns - 1) / kColumns);
  const double width = 2 * kMargin + kColumns * (kCardWidth + kGap) - kGap;
  const double height = 2 * kMargin + rows * (kCardHeight + kGap) - kGap;
  Canvas sheet(width, height, kScale);
  sheet.fill({0, 0, width, height}, kPage);
  for (int i = 0; i < static_cast<int>(results.size()); ++i) {
    const int column = i % kColumns;
    const int row = i / kColumns;
    drawCard(sheet, results[static_cast<std::size_t>(i)],
             {kMargin + column * (kCardWidth + kGap), kMargin + row * (kCardHeight + kGap),
              kCardWidth, kCardHeight});
  }
  return sheet;
}

int saturationPercent(const std::string& hex) {
  const Color color = colorOf(hex);
  const auto [least, most] = std::minmax({color.red, color.green, color.blue});
  return most > 0 ? static_cast<int>(100 * (most - least) / most) : 0;
}

void printSummary(const std::vector<Json>& results) {
  std::map<std::string, int> rules;
  int saturated = 0;
  int grey = 0;
  int black = 0;
  for (const Json& result : results) {
    ++rules[result.at("rule")];
    if (result.at("saturated").get<bool>()) ++saturated;
    const std::string important = result.at("important");
    if (saturationPercent(important) <= 10) ++grey;
    if (important.starts_with("#000000")) ++black;
  }
  std::printf("%zu pictures; chosen:", results.size());
  for (const auto& [rule, count] : rules) std::printf(" %s %d", rule.c_str(), count);
  std::printf("; saturated %d; grey %d, of them black %d\n", saturated, grey, black);
}

int run(const std::string& target) {
  std::vector<Json> results;
  for (const Json& result : Json::parse(std::cin)) {
    if (!result.contains("error")) results.push_back(result);
  }
  std::ofstream file(target, std::ios::binary);
  file << encodePng(drawSheet(results).surface());
  if (!file.flush()) {
    std::fprintf(stderr, "varnix-contact-sheet: cannot write %s\n", target.c_str());
    return 1;
  }
  printSummary(results);
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: varnix-contact-sheet OUT.png < RESULTS\n");
    return 2;
  }
  try {
    return run(arguments[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "varnix-contact-sheet: %s\n", error.what());
    return 1;
  }
}
