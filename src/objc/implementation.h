// Classes of this binary, seen from inside: instance variables and the functions behind the
// messages. Everybody else sends to the view.
#pragma once

#include "objc/define.h"

namespace objc {

/// What a class's implementation derives from. Base is the implementation of its superclass, whose
/// instance variables come first.
template <class View, class Base = NSObject>
struct Implementation : Base {
  /// The object as others see it, for messages to itself.
  View* self() { return static_cast<View*>(static_cast<NSObject*>(this)); }
};

}  // namespace objc
