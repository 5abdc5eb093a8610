// The rows of the settings pane: a specifier for each setting, over one store.
#pragma once

#include <string>
#include <vector>

#include "objc/strong.h"
#include "platform/Preferences.h"
#include "prefs/keys.h"

namespace varnix::cli {

struct PaneRow {
  const settings::Key* key;
  Strong<PSSpecifier> specifier;
};

/// Everything goes through the exported store's bridge for panes, as in the Settings application.
class PaneRows {
 public:
  /// The library is loaded. Throws Failure where it exports no store.
  PaneRows();

  const std::vector<PaneRow>& all() const { return rows_; }

  /// What the row shows: the stored value, else its default; autoreleased.
  NSObject* value(const PaneRow& row) const;

  /// Changes the setting: the file is written and everybody is told. Throws Failure for no such
  /// key and for a file that cannot be read, UsageError for a value that is not of the key's kind.
  void set(const std::string& key, const std::string& text);

 private:
  Strong<NSObject> store_;
  std::vector<PaneRow> rows_;
};

}  // namespace varnix::cli
