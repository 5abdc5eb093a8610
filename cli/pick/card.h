// A picture of an analysis, for people: one card an image.
#pragma once

#include <utility>

#include "pick/analysis.h"

namespace varnix::cli::pick {

/// How many cards a picture can hold.
std::size_t maximumCards();

/// How large an image of that size is shown, in the picture's pixels; the longer side as long as
/// there is room.
std::pair<unsigned, unsigned> previewSize(unsigned width, unsigned height);

/// PNG, the cards below one another. Images with an error have none; empty where no image has one.
/// Throws std::runtime_error.
std::string drawCards(const std::vector<Analysis>& images);

}  // namespace varnix::cli::pick
