// JSON for code that builds it or looks into it.
#pragma once

#include <nlohmann/json.hpp>

#include "common/json_forward.h"
