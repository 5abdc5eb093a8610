#include "gallery/page/theme_page.h"

#include <cctype>
#include <string_view>

#include "gallery/page/html_text.h"

namespace varnix::cli::gallery {

namespace {

constexpr std::string_view kStyle = R"(
:root { color-scheme: light dark; font: 1rem/1.5 system-ui, sans-serif; }
body { max-width: 90rem; margin: 0 auto; padding: 1.5rem; overflow-wrap: anywhere; }
h1 { margin: 0 0 1rem; font-size: 1.5rem; }
h2 { margin: 2rem 0 0.75rem; font-size: 1.125rem; }
table { border-collapse: collapse; font-size: 0.875rem; }
th, td { padding: 0.25rem 1.5rem 0.25rem 0; text-align: left; font-weight: 400; vertical-align: top; }
code, pre { font: 0.875rem/1.5 ui-monospace, monospace; }
.swatch { display: inline-block; width: 1em; height: 1em; margin-right: 0.5em; border: 1px solid #8888; border-radius: 0.25em; vertical-align: -0.125em; }
.screens { display: grid; grid-template-columns: repeat(auto-fill, minmax(min(15rem, 100%), 1fr)); gap: 1.5rem; }
figure { margin: 0; }
img { display: block; width: 100%; height: auto; border-radius: 1rem; box-shadow: 0 0 0 1px #8884; }
figcaption { margin-top: 0.5rem; font-size: 0.875rem; }
pre { padding: 1rem; border: 1px solid #8886; border-radius: 0.5rem; white-space: pre-wrap; }
summary { cursor: pointer; }
)";

/// A colour's text between quotation marks; empty for any other value.
std::string_view colorIn(std::string_view value) {
  if (value.size() < 3 || !value.starts_with("\"#") || value.back() != '"') return {};
  value = value.substr(1, value.size() - 2);
  for (const char c : value.substr(1)) {
    if (std::isxdigit(static_cast<unsigned char>(c)) == 0) return {};
  }
  return value;
}

std::string rowFor(std::string_view line) {
  constexpr std::string_view kBetween = " = ";
  const std::size_t at = line.find(kBetween);
  const std::string_view key = line.substr(0, at);
  const std::string_view value =
      at == line.npos ? std::string_view() : line.substr(at + kBetween.size());
  std::string swatch;
  if (const auto color = colorIn(value); !color.empty())
    swatch = "<span class=\"swatch\" style=\"background:" + std::string(color) + "\"></span>";
  return "<tr><th scope=\"row\"><code>" + htmlText(key) + "</code></th><td>" + swatch + "<code>" +
         htmlText(value) + "</code></td></tr>\n";
}

std::string figureFor(const PagePicture& picture) {
  std::string name = picture.title;
  if (!picture.wallpaper.empty()) name += ", " + picture.wallpaper + " wallpaper";
  return "<figure><img width=\"375\" height=\"667\" alt=\"" + htmlText(name) + "\" src=\"" +
         picture.address + "\"><figcaption>" + htmlText(name) + "</figcaption></figure>\n";
}

}  // namespace

std::string themePage(const PageTheme& theme) {
  const std::string name = htmlText(theme.name);
  std::string page =
      "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
      name + "</title>\n<link rel=\"icon\" href=\"data:,\">\n<style>" + std::string(kStyle) +
      "</style>\n</head>\n<body>\n<main>\n<h1>" + name + "</h1>\n<div class=\"screens\">\n";
  for (const PagePicture& picture : theme.pictures) page += figureFor(picture);
  page += "</div>\n<h2>Settings</h2>\n<table><tbody>\n";
  for (const std::string& line : theme.lines) page += rowFor(line);
  page +=
      "</tbody></table>\n<h2>On your phone</h2>\n<details><summary>Copy this text, and choose "
      "Paste Settings in the settings of Varnix</summary>\n<pre>" +
      htmlText(theme.text) + "</pre>\n</details>\n</main>\n</body>\n</html>\n";
  return page;
}

}  // namespace varnix::cli::gallery
