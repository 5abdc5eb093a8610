#include "gallery/page/plain_page.h"

#include <set>
#include <string>
#include <string_view>

#include "common/json.h"
#include "gallery/page/html_text.h"

namespace varnix::cli::gallery {

namespace {

std::string html(const Json& value) { return htmlText(value.get_ref<const std::string&>()); }

/// The path as a relative address.
Json address(const std::string& path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string result;
  for (const char c : path) {
    if (c != '%' && c != '#' && c != '?') {
      result += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    result.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
  }
  return result;
}

std::string picture(const Json& side, const char* when) {
  return "<img loading=\"lazy\" width=\"375\" alt=\"" + std::string(when) + "\" src=\"" +
         html(address(side.at("path"))) + "\">\n";
}

/// What the address of the page with scripts says about a tab and a wallpaper.
std::string fragment(const Json& tab, const std::string& wallpaper) {
  return "tab=" + tab.at("id").get<std::string>() + "&wallpaper=" + wallpaper;
}

/// The first picture of each wallpaper in a tab is where links to them lead.
std::string figure(const Json& tab, const Json& screen, std::set<std::string>& linked) {
  std::string text;
  for (const char* wallpaper : {"light", "dark"}) {
    if (!screen.contains(wallpaper)) continue;
    const Json& pair = screen.at(wallpaper);
    const std::string id = fragment(tab, wallpaper);
    const bool isFirst = linked.insert(id).second;
    text += "<figure" + (isFirst ? " id=\"" + htmlText(id) + '"' : "") + ">\n" +
            picture(pair.at("before"), "Before") + picture(pair.at("after"), "After") +
            "<figcaption>" + html(screen.at("title")) + ", " + wallpaper +
            " wallpaper: before and after</figcaption>\n</figure>\n";
  }
  return text;
}

bool hasWallpaper(const Json& tab, const char* wallpaper) {
  for (const Json& screen : tab.at("screens")) {
    if (screen.contains(wallpaper)) return true;
  }
  return false;
}

}  // namespace

std::string plainPage(const Json& data) {
  std::string text = "<nav aria-label=\"Settings\"><ul>\n";
  for (const Json& tab : data.at("tabs")) {
    text += "<li>" + html(tab.at("title")) + ":";
    for (const char* wallpaper : {"light", "dark"}) {
      if (hasWallpaper(tab, wallpaper))
        text += " <a href=\"#" + html(address(fragment(tab, wallpaper))) + "\">" + wallpaper +
                " wallpaper</a>";
    }
    text += "</li>\n";
  }
  text += "</ul></nav>\n";
  std::set<std::string> linked;
  for (const Json& tab : data.at("tabs")) {
    text += "<section>\n<h2>" + html(tab.at("title")) + "</h2>\n<p>" + html(tab.at("summary")) +
            "</p>\n<p>Settings of <code>" + html(tab.at("file")) + "</code></p>\n<ul>\n";
    for (const Json& line : tab.at("settings"))
      text += "<li><code>" + html(line) + "</code></li>\n";
    text += "</ul>\n";
    for (const Json& screen : tab.at("screens")) text += figure(tab, screen, linked);
    text += "</section>\n";
  }
  return text;
}

}  // namespace varnix::cli::gallery
