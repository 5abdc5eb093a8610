// What the stand-in's run-time offers beyond the platform's C interface: for the host process,
// tests and benchmarks.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"
#include "objc/runtime.h"

namespace host::runtime {

/// An Objective-C exception on its way through C++ frames.
class HOST_EXPORT Exception : public std::runtime_error {
 public:
  Exception(std::string name, const std::string& reason)
      : std::runtime_error(name + ": " + reason), name_(std::move(name)), reason_(reason) {}
  const std::string& name() const { return name_; }
  const std::string& reason() const { return reason_; }

 private:
  std::string name_;
  std::string reason_;
};

/// Hides a class from look-up by name in this process; its subclasses and instances stay. A name
/// that no class has is fine.
HOST_EXPORT void hideClass(std::string_view name);

/// What became of a method or variable that is to be left out: it is; it will be, should a class of
/// that name come; or the class is here and has none of its own.
enum class Hidden { done, later, nothing };

/// Leaves out a method that a class has itself: it then has what it inherits, or none. Adding it
/// anew is fine.
HOST_EXPORT Hidden hideMethod(const std::string& className, const std::string& selector,
                              bool classMethod);

/// Leaves out an instance variable: nobody finds it by name, the class's own code has it still.
HOST_EXPORT Hidden hideVariable(const std::string& className, const std::string& variable);

/// Makes a class's instances larger, as a later version of the platform does. Of use before a
/// binary with subclasses of it is loaded, and before it has instances.
HOST_EXPORT void growClass(std::string_view name, std::uint32_t bytes);

/// What the injection framework saves of a method that it replaces, and when. An own method's
/// implementation is the same in all; an inherited method is one that the class does not have
/// itself.
enum class Hooking {
  dynamic,   ///< of an inherited one what the superclass has at each call; saved before it is live
  snapshot,  ///< what the superclass has at that moment; saved before it is live
  late,      ///< the same, but the replacement is live for a moment before anything is saved
};

/// "dynamic", "snapshot" or "late"; nothing for any other word.
HOST_EXPORT std::optional<Hooking> hookingNamed(std::string_view name);

/// How this process hooks: as it was set, else as $VARNIX_HOOKING says, else dynamic. Throws
/// std::runtime_error where the variable holds another word.
HOST_EXPORT Hooking hooking();
HOST_EXPORT void setHooking(Hooking hooking);

/// The injection framework's call, with what is to become of the saved implementation before it is
/// stored. An empty function stores it as it is.
HOST_EXPORT void hookMessage(Class cls, SEL selector, IMP replacement, IMP* saved,
                             const std::function<IMP(IMP)>& adapt);

/// A method that a class has itself.
struct ListedMethod {
  std::string className;
  std::string selector;
  std::string types;  ///< as the class has them
  bool classMethod;
  std::vector<std::string> superclasses;  ///< of the class, from the nearest up
  std::string binary;                     ///< the path of the class's, "?" for none
};

/// Every method of every class of this process, in no order.
HOST_EXPORT std::vector<ListedMethod> allMethods();

/// A method that was added to a class or replaced in one.
struct Change {
  enum class Kind { add, hook };
  Kind kind;
  std::string className;
  std::string selector;
  bool classMethod;   ///< on the metaclass
  std::string types;  ///< of an addition
};

/// Calls the observer after each successful class_addMethod and MSHookMessageEx, on the thread
/// that makes the change. An empty observer ends it.
HOST_EXPORT void observeChanges(std::function<void(const Change&)> observer);

/// A message that is sent to an object that is there, or to a class.
struct Message {
  std::string_view className;
  std::string_view selector;
  bool toClass;
  Class cls;  ///< whose methods are looked through: of a class its metaclass
};

/// Calls the observer before each message, on the thread that sends it; the observer sends none
/// itself. While it lasts, sends are slow: every one is looked up. An empty observer ends it.
HOST_EXPORT void observeMessages(std::function<void(const Message&)> observer);

struct Counts {
  std::uint64_t messages = 0;     ///< messages sent to objects that are there
  std::uint64_t lookUps = 0;      ///< classes, selectors and instance variables asked for by name
  std::uint64_t allocations = 0;  ///< instances created
};

/// Starts counting from zero. While it lasts, sends are slow: every one is looked up.
HOST_EXPORT void startCounting();
/// Stops counting and returns what was counted since the start.
HOST_EXPORT Counts stopCounting();

}  // namespace host::runtime
