// How well the theme on the page can be read, and what would help.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "common/json_forward.h"
#include "contrast/legibility.h"
#include "studio/painter.h"
#include "studio/session.h"

namespace varnix::cli {

/// For several threads at once, one of which measures.
class Reader {
 public:
  Reader(Session& session, Painter& painter) : session_(session), painter_(painter) {}

  /// {"revision", "rows"}, with Legibility's rows for the newest settings. Of the view only the
  /// situation counts. Throws std::runtime_error if the settings change meanwhile.
  Json rows(const View& view);
  /// The settings that help a surface, {KEY: VALUE}, or null. Throws the same, and UsageError if
  /// there is no such surface.
  Json advice(const View& view, const std::string& process, const std::string& surface);

 private:
  struct Measured {
    long revision;
    bool plays, isInFront;
    std::unique_ptr<Legibility> legibility;
  };

  Legibility& measured(const View& view);
  bool isNewest();

  Session& session_;
  Painter& painter_;
  std::mutex mutex_;
  Measured last_{};
};

}  // namespace varnix::cli
