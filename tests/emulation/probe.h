// What a small library for the device and the test that runs it exchange.
#pragma once

#include "objc/define.h"

struct ProbeLarge {
  long a, b, c;
};
OBJC_STRUCT(ProbeLarge, long, long, long);

/// On 32-bit devices the second member begins right after the first.
struct ProbeMixed {
  int a;
  double b;
};
OBJC_STRUCT(ProbeMixed, int, double);
