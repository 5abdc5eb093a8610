// Walks through all pages of the hosted Settings application.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>

#include "Preferences/pages.h"

namespace test {

/// Calls the function on the page on top, then on each page behind its rows, and so on. Of several
/// applications it opens that of the given title alone.
inline void walkPages(const std::string& application, const std::function<void()>& visit) {
  namespace pages = host::settings;
  visit();
  std::set<std::string> walked;
  // A visit may change which rows there are, and their order.
  auto next = [&]() -> std::optional<pages::Row> {
    const bool isOfApplications = pages::searchField() != nullptr;
    for (const auto& section : pages::sections()) {
      for (const auto& row : section.rows) {
        const bool isPage = row.isLink() && row.isEnabled() && row.control() == nullptr;
        const bool isWanted = !isOfApplications || row.title() == application;
        if (isPage && isWanted && walked.insert(row.identifier()).second) return row;
      }
    }
    return {};
  };
  while (const auto row = next()) {
    pages::press(*row);
    walkPages(application, visit);
    pages::back();
  }
}

}  // namespace test
