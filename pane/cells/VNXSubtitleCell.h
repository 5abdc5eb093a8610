// A row that leads to another page, with a second line below its title.
#pragma once

#include "platform/Preferences.h"

struct VNXSubtitleCell : objc::View<VNXSubtitleCell, PSTableCell> {};
