// What a small library for the device and the test that runs it exchange.
#pragma once

#include "objc/define.h"

struct ProbeLarge {
  long a, b, c;
};
OBJC_STRUCT(ProbeLarge, long, long, long);
