// What most tests include, compiled once. Only a build's time depends on this list: each test
// includes what it uses.
#pragma once

#include <algorithm>
#include <functional>
#include <random>
#include <thread>

#include "support/hosted.h"
