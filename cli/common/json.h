// JSON for those who make it or look into it.
#pragma once

#include <nlohmann/json.hpp>

#include "common/json_forward.h"
