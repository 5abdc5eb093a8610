// What the stand-in's run-time offers beyond the platform's C interface, for the host process,
// tests and benchmarks.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
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
  /// What C++ handlers see of an object that compiled code throws.
  Exception(std::string name, const std::string& reason, NSObject* object);
  const std::string& name() const { return name_; }
  const std::string& reason() const { return reason_; }
  /// The same as an NSException, made when it is first asked for.
  NSObject* object() const;

 private:
  std::string name_;
  std::string reason_;
  mutable std::shared_ptr<NSObject> object_;
};

/// Hides a class from look-up by name in this process. Its subclasses and instances stay. There
/// need not be a class of that name.
HOST_EXPORT void hideClass(std::string_view name);

/// The result of a request to leave out a method or variable: it is left out; it will be, if a
/// class of that name is loaded; or the class is here and has none of its own.
enum class Hidden { done, later, nothing };

/// Leaves out a method that a class has itself. The class then has what it inherits, or none. The
/// method may be added again.
HOST_EXPORT Hidden hideMethod(const std::string& className, const std::string& selector,
                              bool classMethod);

/// Leaves out an instance variable: it cannot be found by name, but the class's own code still has
/// it.
HOST_EXPORT Hidden hideVariable(const std::string& className, const std::string& variable);

/// Makes a class's instances larger, as a later version of the platform may. Call it before a
/// binary with subclasses is loaded, and before the class has instances.
HOST_EXPORT void growClass(std::string_view name, std::uint32_t bytes);

/// What the injection framework saves for a method that it replaces, and when. All save the same
/// for a class's own method. An inherited method is one that the class does not have itself.
enum class Hooking {
  dynamic,   ///< what the superclass has at each call; saved before the replacement is live
  snapshot,  ///< what the superclass has at that moment; saved before the replacement is live
  late,      ///< the same, but the replacement is live for a moment before anything is saved
};

/// "dynamic", "snapshot" or "late"; nothing for any other word.
HOST_EXPORT std::optional<Hooking> hookingNamed(std::string_view name);

/// How this process hooks: as was set, else as $VARNIX_HOOKING says, else dynamic. Throws
/// std::runtime_error if the variable holds any other word.
HOST_EXPORT Hooking hooking();
HOST_EXPORT void setHooking(Hooking hooking);

/// The injection framework's function, with a function that may change the saved implementation
/// before it is stored. An empty one stores it unchanged.
HOST_EXPORT void hookMessage(Class cls, SEL selector, IMP replacement, IMP* saved,
                             const std::function<IMP(IMP)>& adapt);

/// A method that a class has itself.
struct ListedMethod {
  std::string className;
  std::string selector;
  std::string types;  ///< as in the class
  bool classMethod;
  std::vector<std::string> superclasses;  ///< the class's, nearest first
  std::string binary;                     ///< the path of the class's binary, "?" for none
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
  std::string types;  ///< only for an addition
};

/// Calls the observer after each successful class_addMethod and MSHookMessageEx, on the thread
/// that makes the change. An empty observer ends it.
HOST_EXPORT void observeChanges(std::function<void(const Change&)> observer);

/// A message that is sent to an object other than nil, or to a class.
struct Message {
  std::string_view className;
  std::string_view selector;
  bool toClass;
  Class cls;  ///< the class whose methods are searched: for a class its metaclass
};

/// Calls the observer before each message, on the thread that sends it. The observer must not send
/// any. Meanwhile sends are slow: every one is looked up. An empty observer ends it.
HOST_EXPORT void observeMessages(std::function<void(const Message&)> observer);

struct Counts {
  std::uint64_t messages = 0;     ///< messages sent to objects other than nil
  std::uint64_t lookUps = 0;      ///< classes, selectors and instance variables looked up by name
  std::uint64_t allocations = 0;  ///< instances created
};

/// Starts counting from zero. Meanwhile sends are slow: every one is looked up.
HOST_EXPORT void startCounting();
/// Stops counting and returns the counts since the start.
HOST_EXPORT Counts stopCounting();

}  // namespace host::runtime
