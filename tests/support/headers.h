// The headers that most tests include, compiled once. This list only affects build time: each test
// still includes what it uses.
#pragma once

#include <algorithm>
#include <functional>
#include <random>
#include <thread>

#include "support/hosted.h"
