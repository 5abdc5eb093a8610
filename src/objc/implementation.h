// The implementation of a class of this binary: instance variables, and the functions behind its
// messages. All other code sends messages to the view.
#pragma once

#include "objc/define.h"

namespace objc {

/// The base of every class's implementation. Base is the implementation of its superclass, whose
/// instance variables come first.
template <class View, class Base = NSObject>
struct Implementation : Base {
  /// The object through its view, for messages to itself.
  View* self() { return static_cast<View*>(static_cast<NSObject*>(this)); }
};

}  // namespace objc
