#include "gallery/screens/list_page.h"

#include <cstdint>
#include <memory>

#include <glib.h>

#include "drawing/hex.h"

namespace varnix::screens {

namespace {

// Each field is named once, for both directions: Writer and Reader have the same functions.

class Writer {
 public:
  explicit Writer(Answers& answers) : values_(answers.values) {}

  void text(const std::string& name, const std::string& text) {
    if (!text.empty()) values_[name] = text;
  }
  void text(const std::string& name, const std::optional<std::string>& text) {
    if (text) values_[name] = *text;
  }
  void bytes(const std::string& name, const std::string& bytes) {
    if (bytes.empty()) return;
    const std::unique_ptr<char, decltype(&g_free)> encoded(
        g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size()), &g_free);
    values_[name] = std::string(encoded.get());
  }
  void number(const std::string& name, double value, double usual) {
    if (value != usual) values_[name] = value;
  }
  void number(const std::string& name, const std::optional<double>& value) {
    if (value) values_[name] = *value;
  }
  void flag(const std::string& name, bool value) {
    if (value) values_[name] = true;
  }
  void flag(const std::string& name, const std::optional<bool>& value) {
    if (value) values_[name] = *value;
  }
  void color(const std::string& name, const std::optional<Color>& color) {
    auto byte = [](double part) { return static_cast<std::uint8_t>(part * 255 + 0.5); };
    if (color)
      values_[name] =
          drawing::hex(byte(color->red), byte(color->green), byte(color->blue), byte(color->alpha));
  }
  template <class T, class F>
  void list(const std::string& name, const std::vector<T>& items, F function) {
    if (!items.empty()) values_[name] = static_cast<double>(items.size());
    for (std::size_t i = 0; i < items.size(); ++i)
      function(name + " " + std::to_string(i) + " ", items[i]);
  }

 private:
  std::map<std::string, Answer>& values_;
};

class Reader {
 public:
  explicit Reader(const Answers& answers) : answers_(answers) {}

  void text(const std::string& name, std::string& text) const {
    text = answers_.text(name).value_or("");
  }
  void text(const std::string& name, std::optional<std::string>& text) const {
    text = answers_.text(name);
  }
  void bytes(const std::string& name, std::string& bytes) const {
    const auto encoded = answers_.text(name);
    if (!encoded) return;
    gsize length = 0;
    const std::unique_ptr<guchar, decltype(&g_free)> decoded(
        g_base64_decode(encoded->c_str(), &length), &g_free);
    bytes.assign(reinterpret_cast<const char*>(decoded.get()), length);
  }
  void number(const std::string& name, double& value, double usual) const {
    value = has(name) ? answers_.number(name) : usual;
  }
  void number(const std::string& name, std::optional<double>& value) const {
    if (has(name)) value = answers_.number(name);
  }
  void flag(const std::string& name, bool& value) const { value = answers_.flag(name); }
  void flag(const std::string& name, std::optional<bool>& value) const {
    if (has(name)) value = answers_.flag(name);
  }
  void color(const std::string& name, std::optional<Color>& color) const {
    color = answers_.color(name);
  }
  template <class T, class F>
  void list(const std::string& name, std::vector<T>& items, F function) const {
    items.resize(static_cast<std::size_t>(answers_.number(name)));
    for (std::size_t i = 0; i < items.size(); ++i)
      function(name + " " + std::to_string(i) + " ", items[i]);
  }

 private:
  bool has(const std::string& name) const { return answers_.values.contains(name); }

  const Answers& answers_;
};

template <class Way, class Image>
void passImage(Way& way, const std::string& name, Image& image) {
  way.bytes(name, image.png);
  way.number(name + " scale", image.scale, 1);
  way.number(name + " x", image.x);
  way.number(name + " y", image.y);
}

template <class Way, class Row>
void passRow(Way& way, const std::string& name, Row& row) {
  way.number(name + "height", row.height, 44);
  way.text(name + "title", row.title);
  way.text(name + "subtitle", row.subtitle);
  way.text(name + "value", row.value);
  passImage(way, name + "image", row.image);
  way.color(name + "title colour", row.titleColor);
  way.flag(name + "disabled", row.isDisabled);
  way.flag(name + "opens", row.opens);
  way.flag(name + "ticked", row.isTicked);
  way.flag(name + "on", row.isOn);
  way.color(name + "switch", row.switchOn);
  way.color(name + "disc", row.disc);
  way.color(name + "tick", row.tickColor);
}

template <class Way, class Page>
void passPage(Way& way, Page& page) {
  way.text("title", page.title);
  way.text("back", page.back);
  way.color("status bar", page.statusBar);
  way.color("bar", page.bar);
  way.color("title colour", page.titleColor);
  passImage(way, "action", page.action);
  way.text("search", page.search);
  way.color("picked", page.picked);
  way.text("alert title", page.alert.title);
  way.text("alert message", page.alert.message);
  way.list("alert button", page.alert.buttons,
           [&](const std::string& button, auto& title) { way.text(button + "title", title); });
  way.list("group", page.groups, [&](const std::string& group, auto& shown) {
    way.text(group + "header", shown.header);
    way.text(group + "footer", shown.footer);
    way.list(group + "row", shown.rows,
             [&](const std::string& row, auto& shownRow) { passRow(way, row, shownRow); });
  });
}

}  // namespace

Answers answersOf(const ListPage& page) {
  Answers answers;
  Writer writer(answers);
  passPage(writer, page);
  return answers;
}

ListPage pageOf(const Answers& answers) {
  ListPage page;
  Reader reader(answers);
  passPage(reader, page);
  return page;
}

}  // namespace varnix::screens
