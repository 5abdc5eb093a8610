// A row that shows an element in its colour.
#pragma once

#include "platform/Preferences.h"

/// Its row has the element's index and the colour, or none.
struct VNXPictureCell : objc::View<VNXPictureCell, PSTableCell> {};
