// The entries of a class's table: methods, class methods, instance variables, properties.
#pragma once

#include <new>

#include "objc/encoding.h"
#include "objc/metadata.h"
#include "objc/published.h"

namespace objc {

template <class... T>
struct List {};

namespace detail {

/// Turns a function of ours into an implementation that the messenger can call.
template <auto Fn, class Type = decltype(Fn)>
struct Thunk;

template <auto Fn, class T, class R, class... A>
struct Thunk<Fn, R (T::*)(A...)> {
  using Signature = R(A...);
  static constexpr auto kTypes = kMethodEncoding<R, A...>;
  static Traveling<R> call(T* self, SEL, Traveling<A>... arguments) {
    return (self->*Fn)(A(arguments)...);
  }
  static constexpr auto kCall = &call;
};

/// A function that takes receiver and selector is its own implementation.
template <auto Fn, class Self, class R, class... A>
struct Thunk<Fn, R (*)(Self*, SEL, A...)> {
  using Signature = R(A...);
  static constexpr auto kTypes = kMethodEncoding<R, A...>;
  static constexpr auto kCall = Entry<Fn>::kCall;
};

template <auto Fn, class Self, class R, class... Named>
struct Thunk<Fn, R (*)(Self*, SEL, Named..., ...)> {
  static constexpr auto kTypes = kMethodEncoding<R, Named...>;
  static constexpr auto kCall = Fn;
};

template <auto Fn, class Type = decltype(Fn)>
struct ClassThunk;

/// A static member function is called without the class that received the message.
template <auto Fn, class R, class... A>
struct ClassThunk<Fn, R (*)(A...)> {
  using Signature = R(A...);
  static constexpr auto kTypes = kMethodEncoding<R, A...>;
  static Traveling<R> call(Class, SEL, Traveling<A>... arguments) { return Fn(A(arguments)...); }
  static constexpr auto kCall = &call;
};

template <auto Fn, class R, class... A>
struct ClassThunk<Fn, R (*)(Class, SEL, A...)> : Thunk<Fn> {};

template <auto Fn, class R, class... Named>
struct ClassThunk<Fn, R (*)(Class, SEL, Named..., ...)> : Thunk<Fn> {};

template <class Pointer>
struct MemberOf;
template <class T, class M>
struct MemberOf<M T::*> {
  using Owner = T;
  using Type = M;
};

/// The type of an instance variable as others see it: a Strong<T> is a T*.
template <class M>
struct Held {
  using Type = M;
};
template <class T>
struct Held<Strong<T>> {
  using Type = T*;
};
template <class T>
struct Held<Published<T>> {
  using Type = T*;
};

template <class M>
inline constexpr bool kIsPublished = false;
template <class T>
inline constexpr bool kIsPublished<Published<T>> = true;

template <class M>
consteval auto ivarEncoding() {
  if constexpr (std::is_class_v<M> &&
                std::is_same_v<decltype(kStructEncoding<M>), const std::nullptr_t>) {
    return FixedString("?");  // a C++ type, which the platform's compiler encodes like this too
  } else {
    return kEncoding<M>;
  }
}

/// The type part of a property's attributes: for an object it includes the class's name.
template <class V>
consteval auto propertyType() {
  if constexpr (kEncoding<V>.size() == 1 && kEncoding<V>.text[0] == '@') {
    using Pointee = std::remove_pointer_t<V>;
    if constexpr (std::is_same_v<Pointee, NSObject>) return FixedString("T@");
    else return "T@\"" + kClassName<Pointee> + "\"";
  } else {
    return "T" + kEncoding<V>;
  }
}

template <FixedString Name>
consteval auto setterName() {
  auto name = "set" + Name + ":";
  char& first = name.text[3];
  if (first >= 'a' && first <= 'z') first = static_cast<char>(first - 'a' + 'A');
  return name;
}

}  // namespace detail

/// An instance method. Types overrides the derived encoding where an interface fixes one.
template <FixedString Name, auto Fn, FixedString Types = detail::Thunk<Fn>::kTypes>
struct Method {
  static constexpr auto entry() {
    return MethodEntry{kStored<Name>.text, kStored<Types>.text, detail::Thunk<Fn>::kCall};
  }

  using InstanceMethods = List<Method>;
  using ClassMethods = List<>;
  using Ivars = List<>;
  using Properties = List<>;
};

/// A class method: a static member function, or a function of class, selector and arguments.
template <FixedString Name, auto Fn, FixedString Types = detail::ClassThunk<Fn>::kTypes>
struct ClassMethod {
  static constexpr auto entry() {
    return MethodEntry{kStored<Name>.text, kStored<Types>.text, detail::ClassThunk<Fn>::kCall};
  }

  using InstanceMethods = List<>;
  using ClassMethods = List<ClassMethod>;
  using Ivars = List<>;
  using Properties = List<>;
};

namespace detail {

template <auto Declared, auto Fn, bool IsOfClass = decltype(Declared)::kIsOfClass>
struct DeclaredMember {
  using Type = Method<decltype(Declared)::kName, Fn, decltype(Declared)::types()>;
  using Signature = typename Thunk<Fn>::Signature;
};
template <auto Declared, auto Fn>
struct DeclaredMember<Declared, Fn, true> {
  using Type = ClassMethod<decltype(Declared)::kName, Fn, decltype(Declared)::types()>;
  using Signature = typename ClassThunk<Fn>::Signature;
};

}  // namespace detail

/// The method behind a declared message. Its function has the declared types.
template <auto Declared, auto Fn>
struct Implements : detail::DeclaredMember<Declared, Fn>::Type {
  static_assert(std::is_same_v<typename detail::DeclaredMember<Declared, Fn>::Signature,
                               typename decltype(Declared)::Signature>,
                "the function takes and answers what the declaration says");
};

/// An instance variable: a data member of the struct.
template <FixedString Name, auto Member>
struct Ivar {
  using Type = typename detail::MemberOf<decltype(Member)>::Type;
  static constexpr auto kTypes = detail::ivarEncoding<typename detail::Held<Type>::Type>();
  static constexpr FixedString kName = Name;
  static constexpr auto kMember = Member;

  using InstanceMethods = List<>;
  using ClassMethods = List<>;
  using Ivars = List<Ivar>;
  using Properties = List<>;
};

namespace detail {

/// Reads a data member for others.
template <auto Member>
struct Reading {
  using Owner = typename MemberOf<decltype(Member)>::Owner;
  using Type = typename MemberOf<decltype(Member)>::Type;
  using Value = typename Held<Type>::Type;

  static Value get(Owner* self, SEL) {
    // Another thread may release it before the caller has used it.
    if constexpr (kIsPublished<Type>) return (self->*Member).read().autorelease();
    else return self->*Member;
  }
};

}  // namespace detail

/// An instance variable, called Stored, with a getter. Setters are methods of the class's own.
template <FixedString Name, auto Member, FixedString Stored = "_" + Name>
struct Readable {
  using InstanceMethods = List<Method<Name, &detail::Reading<Member>::get>>;
  using ClassMethods = List<>;
  using Ivars = List<Ivar<Stored, Member>>;
  using Properties = List<>;
};

/// How a property keeps its value.
enum class Storage { strong, copy, assign };
enum class Atomicity { nonatomic, atomic };
/// Whether the property's setter is made here, or is in the class's table.
enum class Setter { synthesized, custom };

/// A property with getter and setter for a data member. The member of a strong or copied property
/// is a Strong<T>, or a Published<T> if several threads use it.
template <FixedString Name, auto Member, Storage How = Storage::strong,
          Atomicity Guard = Atomicity::nonatomic, Setter Kind = Setter::synthesized>
struct Property : detail::Reading<Member> {
  using typename detail::Reading<Member>::Owner;
  using typename detail::Reading<Member>::Type;
  using typename detail::Reading<Member>::Value;

  static void set(Owner* self, SEL, Value value) { store(self, value); }

  /// Does what the setter does, for the class's own code that bypasses it.
  static void store(Owner* self, Value value) { storeAt(self->*Member, value); }

  static void storeAt(Type& place, Value value) {
    if constexpr (How == Storage::assign) {
      place = value;
    } else {
      using Kept = Strong<std::remove_pointer_t<Value>>;
      Kept kept = How == Storage::copy
                      ? Kept::adopt(static_cast<Value>(send(value, NSObject::copy)))
                      : Kept::retain(value);
      if constexpr (detail::kIsPublished<Type>) place.replace(std::move(kept));
      else place = std::move(kept);
    }
  }

  static constexpr FixedString kName = Name;
  static constexpr auto kAttributes = [] {
    constexpr auto type = detail::propertyType<Value>();
    constexpr auto ivar = ",V_" + Name;
    constexpr auto atomic = [] {
      if constexpr (Guard == Atomicity::nonatomic) return FixedString(",N");
      else return FixedString("");
    }();
    if constexpr (How == Storage::strong) return type + ",&" + atomic + ivar;
    else if constexpr (How == Storage::copy) return type + ",C" + atomic + ivar;
    else return type + atomic + ivar;
  }();

  using Getter = Method<Name, &detail::Reading<Member>::get>;
  using SetterMethod = Method<detail::setterName<Name>(), &set>;
  using InstanceMethods =
      std::conditional_t<Kind == Setter::synthesized, List<Getter, SetterMethod>, List<Getter>>;
  using ClassMethods = List<>;
  using Ivars = List<Ivar<"_" + Name, Member>>;
  using Properties = List<Property>;
};

/// A property whose accessors are declared messages.
template <auto Getter, auto SetterDeclared, auto Member, Storage How = Storage::strong,
          Atomicity Guard = Atomicity::nonatomic, Setter Kind = Setter::synthesized>
struct Accessors : Property<decltype(Getter)::kName, Member, How, Guard, Kind> {
  using Base = Property<decltype(Getter)::kName, Member, How, Guard, Kind>;
  using Value = typename Base::Value;
  static_assert(std::is_same_v<typename decltype(Getter)::Signature, Value()> &&
                    std::is_same_v<typename decltype(SetterDeclared)::Signature, void(Value)>,
                "both accessors have the member's type");
  static_assert(
      kSame<decltype(SetterDeclared)::kName, detail::setterName<decltype(Getter)::kName>()>,
      "the setter is called like the getter");
};

}  // namespace objc
