#include "studio/routes.h"

#include <atomic>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "Foundation/file_contents.h"
#include "common/errors.h"
#include "common/json.h"
#include "common/output_file.h"
#include "gallery/studio/page_files.h"
#include "objc/autorelease_pool.h"
#include "settings/file.h"
#include "studio/exports.h"
#include "studio/tables.h"

namespace varnix::cli {

namespace {

using web::Request;
using web::Response;

/// Shorter than anything on the way would keep a silent connection.
constexpr std::chrono::seconds kNewsPatience{20};

/// For a program that takes a file.
class TemporaryFile {
 public:
  TemporaryFile(const std::string& folder, const std::string& bytes) {
    static std::atomic<unsigned> count = 0;
    path_ = folder + "/dropped-" + std::to_string(++count);
    writeOutput(path_, bytes);
  }
  ~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

struct Asked {
  const Request& request;
  const Workplace& place;

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
  /// What follows the route's own part.
  std::string rest() const { return request.path.substr(request.path.find('/') + 1); }
  Json state(Json theme) const {
    theme["materials"] = place.materials.json();
    return theme;
  }
  Json state() const { return state(place.session.json()); }
};

Response json(const Json& value, int status = 200) {
  return {.status = status, .body = dump(value)};
}

Strong<NSObject> valueFrom(const std::string& key, const Json& value) {
  const auto kind = kindOf(key);
  if (!kind) throw UsageError("no such setting", key);
  // Throws for a key that a property list cannot hold.
  objectFor(Value(key));
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
  asked.place.session.with([&](Theme& theme) { isDone = theme.change(change); });
  return json(asked.state(), isDone ? 200 : 409);
}

Response goTo(const Asked& asked) {
  const auto position = asked.body().at("position").get<std::size_t>();
  std::optional<PictureNames> pictures;
  asked.place.session.with([&](Theme& theme) {
    if (const PictureNames* found = theme.picturesAt(position)) pictures = *found;
  });
  // They must be there before anybody hears of the change.
  if (pictures && *pictures != asked.place.materials.names()) {
    asked.place.materials.use(*pictures);
    asked.place.painter.use(asked.place.materials.all());
  }
  bool isDone = false;
  asked.place.session.with([&](Theme& theme) { isDone = theme.goTo(position); });
  return json(asked.state(), isDone ? 200 : 404);
}

Response settle(const Asked& asked) {
  const auto keep = asked.body().at("keep").get<std::string>();
  if (keep != "theme" && keep != "file") throw UsageError("neither theme nor file", keep);
  asked.place.session.with([&](Theme& theme) { theme.settle(keep == "theme"); });
  return json(asked.state());
}

Response picture(const Asked& asked) {
  View view{.screen = asked.rest(),
            .wallpaper = asked.parameter("wallpaper"),
            .isBefore = asked.isOn("before"),
            .plays = asked.isOn("plays"),
            .isInFront = asked.isOn("front"),
            .isOther = asked.isOn("other"),
            .scale = static_cast<int>(asked.number("scale"))};
  if (view.isOther && asked.place.other.shown().revision == 0)
    throw UsageError("no theme", "nothing to compare with was chosen");
  auto painted = asked.place.painter.paint(view, asked.number("revision"), asked.parameter("have"));
  if (painted.png.empty()) return {.status = 204, .type = "image/png", .tag = painted.tag};
  return {.type = "image/png", .body = std::move(painted.png), .tag = painted.tag};
}

View situation(const Asked& asked) {
  return {.screen = {},
          .wallpaper = {},
          .isBefore = false,
          .plays = asked.isOn("plays"),
          .isInFront = asked.isOn("front"),
          .isOther = false};
}

Response contrast(const Asked& asked) { return json(asked.place.reader.rows(situation(asked))); }
Response advice(const Asked& asked) {
  return json({{"changes", asked.place.reader.advice(situation(asked), asked.parameter("process"),
                                                     asked.parameter("surface"))}});
}

Response otherNow(const Asked& asked) {
  return json({{"revision", asked.place.other.shown().revision}});
}
Response chooseOther(const Asked& asked) {
  asked.place.other.take(asked.body(), asked.place.session, asked.place.file.value_or(""));
  return otherNow(asked);
}
Response putOther(const Asked& asked) {
  const TemporaryFile file(asked.place.dropped, asked.request.body);
  asked.place.other.takeList(file.path());
  return otherNow(asked);
}

Response themeNow(const Asked& asked) { return json(asked.state()); }
Response news(const Asked& asked) {
  return json(asked.state(asked.place.session.news(asked.number("version"), kNewsPatience)));
}
Response tables(const Asked&) { return json(tablesJson()); }
Response exported(const Asked& asked) {
  return {.type = "application/x-plist", .body = asked.place.session.shown().bytes};
}
Response text(const Asked& asked) {
  return {.type = "text/plain; charset=utf-8", .body = exportedText(asked.place.session)};
}
Response page(const Asked& asked) {
  return {.type = "text/html; charset=utf-8",
          .body = exportedPage(asked.place.session, asked.place.painter, asked.place.file)};
}
Response sheet(const Asked& asked) {
  return {.type = "image/png",
          .body = exportedSheet(asked.place.session, asked.place.painter, asked.place.file)};
}

Response pick(const Asked& asked) {
  TemporaryFile file(asked.place.dropped, asked.request.body);
  try {
    Json picked = asked.place.painter.pick(file.path());
    picked.erase("file");
    return json(picked);
  } catch (const std::runtime_error& error) {
    throw UsageError("no colours can be picked", error.what());
  }
}

std::string labelOf(const std::string& place) {
  if (place == "cover") return "Album cover";
  if (place.starts_with("icon/")) return "Icon of " + place.substr(5);
  return place.ends_with("dark") ? "Dark wallpaper" : "Light wallpaper";
}

/// Afterwards all pictures are drawn with what there is.
Response redressed(const Asked& asked) {
  asked.place.painter.use(asked.place.materials.all());
  asked.place.session.with([&](Theme& theme) {
    theme.changePictures(labelOf(asked.rest()), asked.place.materials.names());
  });
  return json(asked.state());
}

Response putMaterial(const Asked& asked) {
  asked.place.materials.put(asked.rest(), asked.request.body);
  return redressed(asked);
}

Response removeMaterial(const Asked& asked) {
  if (!asked.place.materials.remove(asked.rest())) throw UsageError("nothing there", asked.rest());
  return redressed(asked);
}

Response material(const Asked& asked) {
  const auto bytes =
      host::fileContents(asked.place.materials.file(asked.rest()), web::kLargestBody);
  if (!bytes) throw UsageError("nothing there", asked.rest());
  return {.type = bytes->starts_with("\x89PNG") ? "image/png" : "image/jpeg", .body = *bytes};
}

struct Route {
  std::string_view method, path;  ///< a path that ends in "/" stands for all that begin with it
  Response (*answer)(const Asked& asked);
};

constexpr Route kRoutes[] = {
    {"GET", "theme", themeNow},
    {"GET", "news", news},
    {"GET", "tables", tables},
    {"GET", "export", exported},
    {"GET", "export/text", text},
    {"GET", "export/page", page},
    {"GET", "export/sheet", sheet},
    {"POST", "changes", change},
    {"POST", "history", goTo},
    {"POST", "conflict", settle},
    {"GET", "picture/", picture},
    {"POST", "other", chooseOther},
    {"PUT", "other", putOther},
    {"GET", "contrast", contrast},
    {"GET", "advice", advice},
    {"POST", "pick", pick},
    {"GET", "material/", material},
    {"PUT", "material/", putMaterial},
    {"DELETE", "material/", removeMaterial},
};

bool fits(const Route& route, const Request& request) {
  return request.method == route.method &&
         (route.path.ends_with('/') ? request.path.starts_with(route.path)
                                    : request.path == route.path);
}

}  // namespace

Response answerPage(const Request& request, const Workplace& workplace) {
  if (request.method == "GET") {
    if (const auto* file = studio::pageFile(request.path))
      return {.type = file->type, .body = std::string(file->bytes)};
  }
  for (const Route& route : kRoutes) {
    if (!fits(route, request)) continue;
    try {
      return route.answer({request, workplace});
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
