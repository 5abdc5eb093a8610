#include "studio/routes.h"

#include <charconv>
#include <chrono>
#include <string_view>

#include "common/errors.h"
#include "common/json.h"
#include "gallery/studio/page_files.h"
#include "objc/autorelease_pool.h"
#include "settings/file.h"
#include "studio/tables.h"

namespace varnix::cli {

namespace {

using web::Request;
using web::Response;

/// Shorter than anything on the way would keep a silent connection.
constexpr std::chrono::seconds kNewsPatience{20};

struct Asked {
  const Request& request;
  Session& session;
  Painter& painter;

  std::string parameter(const std::string& name) const {
    const auto found = request.query.find(name);
    return found == request.query.end() ? "" : found->second;
  }
  long number(const std::string& name) const {
    const std::string text = parameter(name);
    long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
      throw UsageError("not a number", name);
    return value;
  }
  bool isOn(const std::string& name) const { return parameter(name) == "1"; }
  Json body() const { return Json::parse(request.body); }
};

Response json(const Json& value, int status = 200) {
  return {.status = status, .body = dump(value)};
}

Strong<NSObject> valueFrom(const std::string& key, const Json& value) {
  const auto kind = kindOf(key);
  if (!kind) throw UsageError("no such setting", key);
  const std::string text = value.is_string() ? value.get<std::string>() : value.dump();
  return Strong<NSObject>::retain(objectFor(valueFor(*kind, text, false)));
}

Response change(const Asked& asked) {
  const objc::AutoreleasePool pool;
  const Json body = asked.body();
  Theme::Change change;
  change.page = body.at("page").get<std::string>();
  change.label = body.value("label", "");
  change.group = body.value("group", "");
  change.base = body.at("revision").get<long>();
  for (const auto& [key, value] : body.at("changes").items()) {
    if (value.is_null()) change.removed.insert(key);
    else change.set[key] = valueFrom(key, value);
  }
  bool isDone = false;
  asked.session.with([&](Theme& theme) { isDone = theme.change(change); });
  return json(asked.session.json(), isDone ? 200 : 409);
}

Response goTo(const Asked& asked) {
  const auto position = asked.body().at("position").get<std::size_t>();
  bool isDone = false;
  asked.session.with([&](Theme& theme) { isDone = theme.goTo(position); });
  return json(asked.session.json(), isDone ? 200 : 404);
}

Response settle(const Asked& asked) {
  const auto keep = asked.body().at("keep").get<std::string>();
  if (keep != "theme" && keep != "file") throw UsageError("neither theme nor file", keep);
  asked.session.with([&](Theme& theme) { theme.settle(keep == "theme"); });
  return json(asked.session.json());
}

Response picture(const Asked& asked) {
  View view{.screen = asked.request.path.substr(asked.request.path.find('/') + 1),
            .wallpaper = asked.parameter("wallpaper"),
            .isBefore = asked.isOn("before"),
            .plays = asked.isOn("plays"),
            .isInFront = asked.isOn("front"),
            .scale = static_cast<int>(asked.number("scale"))};
  auto painted = asked.painter.paint(view, asked.number("revision"), asked.parameter("have"));
  if (painted.png.empty()) return {.status = 204, .type = "image/png", .tag = painted.tag};
  return {.type = "image/png", .body = std::move(painted.png), .tag = painted.tag};
}

Response themeNow(const Asked& asked) { return json(asked.session.json()); }
Response news(const Asked& asked) {
  return json(asked.session.news(asked.number("version"), kNewsPatience));
}
Response tables(const Asked&) { return json(tablesJson()); }
Response exported(const Asked& asked) {
  return {.type = "application/x-plist", .body = asked.session.shown().bytes};
}

struct Route {
  std::string_view method, path;  ///< a path that ends in "/" stands for all that begin with it
  Response (*answer)(const Asked& asked);
};

constexpr Route kRoutes[] = {
    {"GET", "theme", themeNow},   {"GET", "news", news},        {"GET", "tables", tables},
    {"GET", "export", exported},  {"POST", "changes", change},  {"POST", "history", goTo},
    {"POST", "conflict", settle}, {"GET", "picture/", picture},
};

bool fits(const Route& route, const Request& request) {
  return request.method == route.method &&
         (route.path.ends_with('/') ? request.path.starts_with(route.path)
                                    : request.path == route.path);
}

}  // namespace

Response answerPage(const Request& request, Session& session, Painter& painter) {
  if (request.method == "GET") {
    if (const auto* file = studio::pageFile(request.path))
      return {.type = file->type, .body = std::string(file->bytes)};
  }
  for (const Route& route : kRoutes) {
    if (!fits(route, request)) continue;
    try {
      return route.answer({request, session, painter});
    } catch (const UsageError& error) {
      return json({{"failure", error.what()}}, 400);
    } catch (const Json::exception&) {
      return json({{"failure", "not the JSON that is expected"}}, 400);
    } catch (const std::exception& error) {
      return json({{"failure", error.what()}}, 500);
    }
  }
  return {.status = 404, .type = "text/plain"};
}

}  // namespace varnix::cli
