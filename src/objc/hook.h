// Replaced and added methods: rows of tables, and for each replaced method a slot with the
// original.
#pragma once

#include <array>
#include <span>

#include "objc/answers.h"
#include "objc/variable.h"

/// The injection framework's function. It does not touch *saved if the class has no such method.
extern "C" [[gnu::visibility("default")]] void MSHookMessageEx(Class cls, SEL selector,
                                                               IMP replacement, IMP* saved);

namespace objc {

/// The slot of one replaced method, by its declaration. T is the class whose method is replaced,
/// which may inherit it from the declaring class. A class method's receiver is a Class.
template <auto Declared, class T = typename decltype(Declared)::Class,
          class Signature = typename decltype(Declared)::Signature>
class Hook;

template <auto Declared, class T, class R, class... A>
class Hook<Declared, T, R(A...)> {
 public:
  using Declaration = decltype(Declared);
  using Target = T;
  using Self = std::conditional_t<Declaration::kIsOfClass, Class, T*>;
  using Function = R (*)(Self, SEL, A...);

  constexpr Hook() = default;
  Hook(const Hook&) = delete;
  Hook& operator=(const Hook&) = delete;

  /// Calls the implementation that was replaced.
  R original(Self self, SEL command, A... arguments) {
    return detail::call<R, A...>(__atomic_load_n(&saved_, __ATOMIC_RELAXED), self, command,
                                 arguments...);
  }

  /// Installs the replacement. The slot gets the present implementation first: a framework that
  /// saves it only after the replacement is live would leave the slot empty for a moment.
  template <auto Replacement>
  void install(Class cls, SEL selector) {
    if (objc_method* present = class_getInstanceMethod(cls, selector)) {
      saved_ = method_getImplementation(present);
    }
    MSHookMessageEx(cls, selector, reinterpret_cast<IMP>(detail::Entry<Replacement>::kCall),
                    &saved_);
  }

 private:
  IMP saved_ = nullptr;
};

/// Something private that a replacement relies on: its name, and whether it exists.
struct Need {
  const char* name;
  bool (*isMet)();
};

namespace detail {

template <class D>
consteval auto methodName() {
  constexpr auto sign = [] {
    if constexpr (D::kIsOfClass) return FixedString("+[");
    else return FixedString("-[");
  }();
  return sign + kClassName<typename D::Class> + " " + D::kName + "]";
}

template <class T, FixedString Name, class V>
consteval auto variableName(Variable<T, Name, V>) {
  return kClassName<T> + "." + Name;
}

}  // namespace detail

/// A method of the class that declares it.
template <auto Declared>
inline constexpr Need kNeedsMethod{
    kStored<detail::methodName<decltype(Declared)>()>.text,
    [] { return understands(classOf<typename decltype(Declared)::Class>(), Declared); }};

/// An instance variable; T is the class that has it.
template <class T, auto Declared>
inline constexpr Need kNeedsVariable{kStored<detail::variableName(Declared)>.text,
                                     [] { return hasVariable(classOf<T>(), Declared); }};

/// A C function that is imported weakly.
template <auto& Function, FixedString Name>
inline constexpr Need kNeedsFunction{kStored<Name>.text, [] { return &Function != nullptr; }};

/// A list of needs.
template <class... N>
constexpr std::array<Need, sizeof...(N)> needs(N... each) {
  return {each...};
}

/// A list followed by others.
template <std::size_t Count, class... N>
constexpr auto needs(const std::array<Need, Count>& first, N... others) {
  std::array<Need, Count + sizeof...(N)> all{};
  std::size_t next = 0;
  for (const Need& need : first) all[next++] = need;
  ((all[next++] = others), ...);
  return all;
}

/// A row of an installation table.
struct Replacement {
  const char* className;
  const char* selector;
  const char* types;  ///< ours; the platform's own must agree
  void (*install)(Class cls, SEL selector);
  const Need* firstNeed;
  std::uint8_t needCount;
  bool isOfClass;   ///< a method of the class itself
  bool isAddition;  ///< adds a method of ours; otherwise replaces one of the platform's

  std::span<const Need> needs() const { return {firstNeed, needCount}; }
};

namespace detail {

template <auto& Slot, auto Function>
void installHook(Class cls, SEL selector) {
  using S = std::remove_reference_t<decltype(Slot)>;
  static_assert(std::is_same_v<decltype(Function), typename S::Function>,
                "the replacement takes and answers what the declaration says");
  using D = typename S::Declaration;
  if constexpr (D::kIsOfClass) {
    OBJC_USES("hook + " + kClassName<typename S::Target> + " " + D::kName + " " + D::types());
  } else {
    OBJC_USES("hook - " + kClassName<typename S::Target> + " " + D::kName + " " + D::types());
  }
  Slot.template install<Function>(cls, selector);
}

/// An added method's function: it takes the receiver, the selector and the declared arguments.
template <class D, class Signature = typename D::Signature>
struct Added;
template <class D, class R, class... A>
struct Added<D, R(A...)> {
  using Self = std::conditional_t<D::kIsOfClass, Class, typename D::Class*>;
  using Function = R (*)(Self, SEL, A...);
};

template <auto Declared, auto Function, FixedString Types>
void installAddition(Class cls, SEL selector) {
  using D = decltype(Declared);
  static_assert(std::is_same_v<decltype(Function), typename Added<D>::Function>,
                "the method takes and answers what the declaration says");
  if constexpr (D::kIsOfClass) {
    OBJC_USES("add + " + kClassName<typename D::Class> + " " + D::kName + " " + Types);
  } else {
    OBJC_USES("add - " + kClassName<typename D::Class> + " " + D::kName + " " + Types);
  }
  class_addMethod(cls, selector, reinterpret_cast<IMP>(Entry<Function>::kCall),
                  kStored<Types>.text);
}

}  // namespace detail

/// The row of a replacement: its slot, and the new function. If one of the needs is not met, the
/// method stays as it is.
template <auto& Slot, auto Function>
constexpr Replacement replaced(std::span<const Need> needs = {}) {
  using S = std::remove_reference_t<decltype(Slot)>;
  using D = typename S::Declaration;
  return {kStored<kClassName<typename S::Target>>.text,
          kStored<D::kName>.text,
          kStored<D::types()>.text,
          &detail::installHook<Slot, Function>,
          needs.data(),
          static_cast<std::uint8_t>(needs.size()),
          D::kIsOfClass,
          false};
}

/// The row of a method of ours that is added to a platform class, unless it has one of that name.
/// The encoding is the declaration's, unless an interface fixes another.
template <auto Declared, auto Function, FixedString Types = decltype(Declared)::types()>
constexpr Replacement added(std::span<const Need> needs = {}) {
  using D = decltype(Declared);
  return {kStored<kClassName<typename D::Class>>.text,
          kStored<D::kName>.text,
          kStored<Types>.text,
          &detail::installAddition<Declared, Function, Types>,
          needs.data(),
          static_cast<std::uint8_t>(needs.size()),
          D::kIsOfClass,
          true};
}

}  // namespace objc
