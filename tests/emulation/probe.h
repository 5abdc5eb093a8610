// A small library for the device and the test that runs it: what they exchange.
#pragma once

#include "objc/define.h"

struct ProbeLarge {
  long a, b, c;
};
OBJC_STRUCT(ProbeLarge, long, long, long);
