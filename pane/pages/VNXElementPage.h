// The page of one element.
#pragma once

#include "pages/VNXPage.h"

struct VNXElementPage : objc::View<VNXElementPage, VNXPage> {};
