// A picture of an analysis, for people: one card for each image.
#pragma once

#include <utility>

#include "pick/analysis.h"

namespace varnix::cli::pick {

/// How many cards a picture can hold.
std::size_t maximumCards();

/// The size at which an image is shown, in the picture's pixels: its longer side fills the room.
std::pair<unsigned, unsigned> previewSize(unsigned width, unsigned height);

/// PNG, the cards one below another. Images with an error have no card; empty if there is no card.
/// Throws std::runtime_error.
std::string drawCards(const std::vector<Analysis>& images);

}  // namespace varnix::cli::pick
