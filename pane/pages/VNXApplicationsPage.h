// All installed applications, with a field to search them.
#pragma once

#include "pages/VNXPage.h"

struct VNXApplicationsPage : objc::View<VNXApplicationsPage, VNXPage> {
  static constexpr Message<"searchBar:textDidChange:", void(UISearchBar*, NSString*)>
      textDidChange{};
  static constexpr Message<"searchBarSearchButtonClicked:", void(UISearchBar*)> searchPressed{};
  /// An application's icon has come.
  static constexpr Message<"varnixIconLoaded:", void(NSString* application)> iconLoaded{};
};
