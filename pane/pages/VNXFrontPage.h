// The first page of the settings.
#pragma once

#include "platform/Preferences.h"

struct VNXFrontPage : objc::View<VNXFrontPage, PSListController> {};
