// Prints pages of the hosted Settings application.
#pragma once

#include <string>
#include <vector>

#include "pane/shown_page.h"

namespace varnix::cli {

/// What a page looks like in a terminal.
struct PrintedPage {
  std::string all;                 ///< everything
  std::vector<std::string> lines;  ///< what its bars and rows show
};

PrintedPage printed(const ShownPage& page, bool withSwatches);

/// The rows that contain the text, or are below a header or above a footer that does.
std::string rowsWith(const ShownPage& page, const std::string& text, bool withSwatches);

/// What is new: nothing for equal pages, a line for each row that differs, else the whole page.
/// Each line begins with the mark.
std::string changes(const PrintedPage& before, const PrintedPage& after, const std::string& mark);

}  // namespace varnix::cli
