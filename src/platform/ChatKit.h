// ChatKit, a private framework: the balloons of Messages.
#pragma once

#include "platform/UIKit.h"

struct CKColoredBalloonView : UIView {};
struct CKGradientView : UIView {};
