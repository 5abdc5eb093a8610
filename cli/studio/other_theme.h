// A second theme, with which the page compares the one that it works on.
#pragma once

#include <mutex>
#include <string>

#include "common/json_forward.h"
#include "studio/painter.h"
#include "studio/session.h"

namespace varnix::cli {

/// For several threads at once.
class OtherTheme {
 public:
  /// Takes {"preset": NAME}, {"position": a state of the theme's history} or {"saved": true}, which
  /// is the theme's file. Throws UsageError.
  void take(const Json& choice, Session& session, const std::string& file);
  /// Takes a property list of settings, which is in that file. Throws UsageError.
  void takeList(const std::string& file);

  /// Nothing was taken as long as the revision is 0.
  Shown shown() const;

 private:
  void put(std::string bytes);

  mutable std::mutex mutex_;
  Shown shown_;
};

}  // namespace varnix::cli
