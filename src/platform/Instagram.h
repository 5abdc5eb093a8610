// What the Instagram application has of its own.
#pragma once

#include "platform/UIKit.h"

struct IGStringStyle : NSObject {};
