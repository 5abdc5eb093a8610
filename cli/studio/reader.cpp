#include "studio/reader.h"

#include "common/errors.h"
#include "common/json.h"
#include "objc/autorelease_pool.h"

namespace varnix::cli {

bool Reader::isNewest() { return session_.shown().revision == last_.revision; }

Legibility& Reader::measured(const View& view) {
  if (last_.legibility != nullptr && isNewest() && last_.plays == view.plays &&
      last_.isInFront == view.isInFront)
    return *last_.legibility;
  Strong<NSObject> settings;
  session_.with([&](Theme& theme) {
    last_.revision = theme.revision();
    settings = Strong<NSObject>::retain(dictionaryOf(theme.values()));
  });
  last_.plays = view.plays;
  last_.isInFront = view.isInFront;
  last_.legibility.reset();
  auto legibility =
      painter_.legibility(view, last_.revision, static_cast<NSDictionary*>(settings.get()));
  // One thread: the others draw what is looked at.
  legibility->measure(1, [this] { return isNewest(); });
  last_.legibility = std::move(legibility);
  return *last_.legibility;
}

Json Reader::rows(const View& view) {
  const objc::AutoreleasePool pool;
  const std::lock_guard lock(mutex_);
  Legibility& legibility = measured(view);
  return {{"revision", last_.revision},
          {"rows", legibility.json(false, [this] { return isNewest(); })}};
}

Json Reader::advice(const View& view, const std::string& process, const std::string& surface) {
  const objc::AutoreleasePool pool;
  const std::lock_guard lock(mutex_);
  Legibility& legibility = measured(view);
  if (!legibility.readings().contains({process, surface}))
    throw UsageError("no such surface", surface);
  return adviceJson(legibility.adviceFor(process, surface, [this] { return isNewest(); }));
}

}  // namespace varnix::cli
