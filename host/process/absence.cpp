#include "process/absence.h"

#include <dlfcn.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "runtime/runtime.h"

namespace host {

namespace {

using runtime::Hidden;

std::vector<std::string>& functions() {
  static auto* names = new std::vector<std::string>;
  return *names;
}

std::vector<std::string>& missing() {
  static auto* names = new std::vector<std::string>;
  return *names;
}

/// The stand-in's own code, and that of frameworks on every phone, finds these by name.
constexpr const char* kIndispensable[] = {
    "NSObject", "NSString",     "NSNumber",       "NSArray",    "NSDictionary", "NSBundle",
    "CGColor",  "CGColorSpace", "CGDataProvider", "CGGradient", "CGContext",    "CGImage",
};

/// The methods of the root class are indispensable too.
bool isIndispensable(const Absence& absence) {
  if (absence.kind != Absence::Kind::classOrFunction) return absence.owner == "NSObject";
  return std::ranges::find(kIndispensable, absence.name) != std::end(kIndispensable);
}

bool isWord(const std::string& text) {
  return !text.empty() && text.find_first_of("[] .") == text.npos;
}

std::optional<Absence> readMethod(const std::string& text) {
  const auto blank = text.find(' ');
  if (!text.ends_with(']') || blank == text.npos) return {};
  const auto kind =
      text.front() == '-' ? Absence::Kind::instanceMethod : Absence::Kind::classMethod;
  Absence method{kind, text.substr(2, blank - 2), text.substr(blank + 1)};
  method.name.pop_back();
  if (!isWord(method.owner) || !isWord(method.name)) return {};
  return method;
}

/// The superclass that has the method, or nil.
Class ownerAbove(const Absence& method) {
  SEL selector = sel_registerName(method.name.c_str());
  Class cls = method.kind == Absence::Kind::classMethod ? objc_getMetaClass(method.owner.c_str())
                                                        : objc_getClass(method.owner.c_str());
  objc_method* found = class_getInstanceMethod(cls, selector);
  if (found == nullptr) return nullptr;
  while (class_getInstanceMethod(class_getSuperclass(cls), selector) == found)
    cls = class_getSuperclass(cls);
  return cls;
}

[[noreturn]] void refuse(const std::string& text, const Absence& absence) {
  if (absence.kind == Absence::Kind::variable)
    throw std::runtime_error("the class has no such variable: " + text);
  if (Class owner = ownerAbove(absence))
    throw std::runtime_error("the method is inherited from " + std::string(class_getName(owner)) +
                             ": " + text);
  throw std::runtime_error("the class has no such method: " + text);
}

/// Returns whether it existed.
bool hideClassOrFunction(const std::string& name) {
  const bool isClass = objc_getClass(name.c_str()) != nullptr;
  const bool isFunction = dlsym(RTLD_DEFAULT, name.c_str()) != nullptr;
  // A name that does not exist yet may become either.
  if (isClass || !isFunction) runtime::hideClass(name);
  if (isFunction || !isClass) functions().push_back(name);
  return isClass || isFunction;
}

}  // namespace

std::optional<Absence> readAbsence(const std::string& text) {
  if (text.starts_with("-[") || text.starts_with("+[")) return readMethod(text);
  const auto dot = text.find('.');
  if (dot == text.npos) {
    if (!isWord(text)) return {};
    return Absence{Absence::Kind::classOrFunction, "", text};
  }
  Absence variable{Absence::Kind::variable, text.substr(0, dot), text.substr(dot + 1)};
  if (!isWord(variable.owner) || !isWord(variable.name)) return {};
  return variable;
}

void leaveOut(const std::string& text) {
  const auto absence = readAbsence(text);
  if (!absence) throw std::runtime_error("not a class, method, variable or function: " + text);
  if (isIndispensable(*absence)) throw std::runtime_error("no process can do without it: " + text);
  auto hidden = Hidden::done;
  if (absence->kind == Absence::Kind::classOrFunction) {
    if (!hideClassOrFunction(text)) hidden = Hidden::later;
  } else if (absence->kind == Absence::Kind::variable) {
    hidden = runtime::hideVariable(absence->owner, absence->name);
  } else {
    hidden = runtime::hideMethod(absence->owner, absence->name,
                                 absence->kind == Absence::Kind::classMethod);
  }
  if (hidden == Hidden::nothing) refuse(text, *absence);
  if (hidden == Hidden::later) missing().push_back(text);
}

const std::vector<std::string>& notHereYet() { return missing(); }

const std::vector<std::string>& absentFunctions() { return functions(); }

bool isAbsentFunction(std::string_view name) {
  const auto& names = functions();
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace host
