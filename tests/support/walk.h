// Walks through all pages of the hosted Settings application.
#pragma once

#include <functional>

#include "Preferences/pages.h"

namespace test {

/// Calls the function on the page on top, then on each page behind its rows, and so on. Of several
/// applications it opens that of the given title alone.
inline void walkPages(const std::string& application, const std::function<void()>& visit) {
  namespace pages = host::settings;
  visit();
  const bool isOfApplications = pages::searchField() != nullptr;
  const auto sections = pages::sections();
  for (std::size_t i = 0; i < sections.size(); ++i) {
    for (std::size_t j = 0; j < sections[i].rows.size(); ++j) {
      // The page may have made its rows anew.
      const pages::Row row = pages::sections().at(i).rows.at(j);
      if (!row.isLink() || !row.isEnabled() || row.control() != nullptr) continue;
      if (isOfApplications && row.title() != application) continue;
      pages::press(row);
      walkPages(application, visit);
      pages::back();
    }
  }
}

}  // namespace test
