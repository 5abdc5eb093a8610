// Calls of methods, recorded in order.
#pragma once

#include <string>
#include <vector>

#include "objc/hook.h"

namespace test {

inline std::vector<std::string>& calls() {
  static std::vector<std::string> names;
  return names;
}

/// Records calls of one method and passes them on: Recorded<"setupOpenGL", void()>.
template <objc::FixedString Name, class Signature>
class Recorded;

template <objc::FixedString Name, class R, class... A>
class Recorded<Name, R(A...)> {
 public:
  static void install(Class cls) {
    hook_.template install<&noted>(cls, objc::Selector<Name>::get());
  }

 private:
  static R noted(NSObject* self, SEL command, A... arguments) {
    calls().emplace_back(Name.text);
    return hook_.original(self, command, arguments...);
  }
  static inline constinit objc::Hook<objc::Message<NSObject, Name, R(A...)>{}> hook_;
};

}  // namespace test
