// A page of the hosted Settings application as text: what its user sees.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Preferences/pages.h"

namespace varnix::cli {

struct ShownRow {
  std::size_t number;  ///< on its page, from 1
  host::settings::Row row;
  std::string key;    ///< of its setting, or another name that does not depend on the language
  std::string title;  ///< empty for a picture alone
  std::string value;  ///< what it says besides its title
  std::vector<std::string> colors;  ///< that it shows, as "#rrggbb..."
  std::optional<bool> isOn;         ///< of its switch; unset without one
  bool isTicked, isLink, isButton, isEnabled;
};

struct ShownSection {
  std::string header, footer;
  std::vector<ShownRow> rows;
};

struct ShownPage {
  std::vector<std::string> path;        ///< the titles of the pages, this one last
  std::string barColor;                 ///< "#rrggbbaa"; empty for the system's
  bool hasBarButton;                    ///< at the bar's right
  std::optional<std::string> searched;  ///< what its field holds; unset without a field
  std::vector<ShownSection> sections;

  std::vector<const ShownRow*> rows() const;
  std::string title() const { return path.empty() ? "" : path.back(); }
};

/// The page on top.
ShownPage shownPage();

/// A row of that number, key or title. Case does not matter if only one fits. Throws Failure for
/// none, with the nearest, and for several.
const ShownRow& rowNamed(const ShownPage& page, const std::string& name);
/// The same; null for none.
const ShownRow* findRow(const ShownPage& page, const std::string& name);

/// Whether one text contains the other, ignoring the case of Latin letters.
bool containsText(const std::string& text, const std::string& part);
bool isSameText(const std::string& one, const std::string& other);

}  // namespace varnix::cli
