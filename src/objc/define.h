// Class definitions as constant data: OBJC_CLASS emits the platform's metadata for a struct, so
// that nothing runs when the library is loaded.
#pragma once

#include <array>

#include "objc/member.h"
#include "objc/own_class.h"

namespace objc {
namespace detail {

template <class... L>
struct Concat;
template <>
struct Concat<> {
  using Type = List<>;
};
template <class... A>
struct Concat<List<A...>> {
  using Type = List<A...>;
};
template <class... A, class... B, class... Rest>
struct Concat<List<A...>, List<B...>, Rest...> {
  using Type = typename Concat<List<A..., B...>, Rest...>::Type;
};

/// Bytes of T that a derived struct cannot reuse: its size without the padding at its end.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
template <class T>
struct Tail : T {
  char next;
};
template <class T>
consteval std::size_t dataSize() {
  if constexpr (std::is_void_v<T>) return 0;
  else return offsetof(Tail<T>, next);
}
#pragma GCC diagnostic pop

/// The entries of a list, one after the other. Each keeps its own function type.
template <class... M>
struct Entries;
template <class Last>
struct Entries<Last> {
  static consteval Entries make() { return {Last::entry()}; }
  decltype(Last::entry()) last;
};
template <class First, class... Rest>
  requires(sizeof...(Rest) > 0)
struct Entries<First, Rest...> {
  static consteval Entries make() { return {First::entry(), Entries<Rest...>::make()}; }
  decltype(First::entry()) first;
  Entries<Rest...> rest;
};

template <class L>
struct MethodList;
template <>
struct MethodList<List<>> {
  static constexpr void* address() { return nullptr; }
};
template <class... M>
struct MethodList<List<M...>> {
  struct Data {
    ListHeader header;
    Entries<M...> entries;
  };
  static_assert(sizeof(Data) == sizeof(ListHeader) + sizeof...(M) * sizeof(MethodEntry<IMP>));
  static inline constinit Data data{{sizeof(MethodEntry<IMP>), sizeof...(M)},
                                    Entries<M...>::make()};
  static constexpr void* address() { return &data; }
};

template <std::size_t N>
struct Offsets {
  std::array<std::int32_t, N> at{};
  std::uint32_t end = 0;
};

/// Lays out the members in the order of the table, as the C++ compiler does: each after the one
/// before, aligned.
template <class Base, class... I>
consteval auto layOut() {
  Offsets<sizeof...(I)> offsets;
  constexpr std::array<std::size_t, sizeof...(I)> sizes{sizeof(typename I::Type)...};
  constexpr std::array<std::size_t, sizeof...(I)> alignments{alignof(typename I::Type)...};
  std::size_t at = dataSize<Base>();
  for (std::size_t i = 0; i < sizeof...(I); ++i) {
    at = (at + alignments[i] - 1) / alignments[i] * alignments[i];
    offsets.at[i] = static_cast<std::int32_t>(at);
    at += sizes[i];
  }
  offsets.end = static_cast<std::uint32_t>(at);
  return offsets;
}

consteval std::uint32_t log2(std::size_t power) {
  std::uint32_t exponent = 0;
  while ((std::size_t{1} << exponent) < power) ++exponent;
  return exponent;
}

/// Whether all zeros, as in a new instance, are the member's empty state.
template <class M>
inline constexpr bool kStartsAsZeros = std::is_trivially_default_constructible_v<M>;
template <class T>
inline constexpr bool kStartsAsZeros<Strong<T>> = true;
template <class T>
inline constexpr bool kStartsAsZeros<Published<T>> = true;

template <class Base, class L>
struct IvarList;
template <class Base, class... I>
struct IvarList<Base, List<I...>> {
  static constexpr auto kLayout = layOut<Base, I...>();
  /// The words that the run-time corrects when the superclass is larger than at build time.
  static inline constinit auto offsets = kLayout.at;
  struct Data {
    ListHeader header{sizeof(IvarEntry), sizeof...(I)};
    IvarEntry entries[sizeof...(I) == 0 ? 1 : sizeof...(I)];
  };
  template <std::size_t... N>
  static constexpr Data make(std::index_sequence<N...>) {
    return {.entries = {IvarEntry{&offsets[N], kStored<I::kName>.text, kStored<I::kTypes>.text,
                                  log2(alignof(typename I::Type)), sizeof(typename I::Type)}...}};
  }
  static inline constinit Data data = make(std::index_sequence_for<I...>{});
  static constexpr void* address() {
    if constexpr (sizeof...(I) == 0) return nullptr;
    else return &data;
  }

  static constexpr bool kDestructs = !(std::is_trivially_destructible_v<typename I::Type> && ...);
  static constexpr bool kConstructs = !(kStartsAsZeros<typename I::Type> && ...);

  /// The variable of that row in an instance, wherever the run-time put it.
  template <class Row>
  static typename Row::Type& in(NSObject* self) {
    std::size_t index = 0;
    static_cast<void>(((std::is_same_v<Row, I> || (++index, false)) || ...));
    return *reinterpret_cast<typename Row::Type*>(reinterpret_cast<char*>(self) + offsets[index]);
  }

  template <class T>
  static id construct(T* self, SEL) {
    (::new (static_cast<void*>(&in<I>(self))) typename I::Type(), ...);
    return self;
  }
  template <class T>
  static void destruct(T* self, SEL) {
    destroyReversed<T, I...>(self);
  }

 private:
  template <class T>
  static void destroyReversed(T*) {}
  template <class T, class First, class... Rest>
  static void destroyReversed(T* self) {
    destroyReversed<T, Rest...>(self);
    using Type = typename First::Type;
    in<First>(self).~Type();
  }
};

template <class L>
struct PropertyList;
template <>
struct PropertyList<List<>> {
  static constexpr void* address() { return nullptr; }
};
template <class... P>
struct PropertyList<List<P...>> {
  struct Data {
    ListHeader header{sizeof(PropertyEntry), sizeof...(P)};
    PropertyEntry entries[sizeof...(P)]{{kStored<P::kName>.text, kStored<P::kAttributes>.text}...};
  };
  static inline constinit Data data{};
  static constexpr void* address() { return &data; }
};

}  // namespace detail

/// The instance variables of a class whose superclass may be larger than at build time, with rows
/// in the order of its table. MovingProperty reaches them through it.
template <class Base, class... Rows>
using MovingIvars = detail::IvarList<Base, List<Rows...>>;

/// A property of such a class. Its member gives name and type; it is never accessed directly.
template <class Place, FixedString Name, auto Member, Storage How = Storage::strong,
          Atomicity Guard = Atomicity::nonatomic>
struct MovingProperty : Property<Name, Member, How, Guard> {
  using Fixed = Property<Name, Member, How, Guard>;
  using Owner = typename Fixed::Owner;
  using Value = typename Fixed::Value;
  using Row = Ivar<"_" + Name, Member>;

  static Value get(Owner* self, SEL) { return Place::template in<Row>(self); }
  static void set(Owner* self, SEL, Value value) {
    Fixed::storeAt(Place::template in<Row>(self), value);
  }

  using InstanceMethods = List<Method<Name, &get>, Method<detail::setterName<Name>(), &set>>;
};

/// All metadata of one class except the two objects that carry its symbols. Base is the C++ struct
/// of the superclass; void for a root class.
template <FixedString Name, class T, class Base, class... Members>
struct Definition {
  using Ivars = detail::IvarList<Base, typename detail::Concat<typename Members::Ivars...>::Type>;
  static_assert((Ivars::kLayout.end + alignof(T) - 1) / alignof(T) * alignof(T) == sizeof(T) ||
                    (Ivars::kLayout.end == detail::dataSize<Base>() && sizeof(T) <= sizeof(void*)),
                "the table must name every data member");

  static constexpr auto constructMethods() {
    if constexpr (Ivars::kConstructs)
      return List<Method<".cxx_construct", &Ivars::template construct<T>>>{};
    else return List<>{};
  }
  static constexpr auto destructMethods() {
    if constexpr (Ivars::kDestructs)
      return List<Method<".cxx_destruct", &Ivars::template destruct<T>>>{};
    else return List<>{};
  }
  using InstanceMethods = detail::MethodList<
      typename detail::Concat<typename Members::InstanceMethods..., decltype(constructMethods()),
                              decltype(destructMethods())>::Type>;
  using ClassMethods =
      detail::MethodList<typename detail::Concat<typename Members::ClassMethods...>::Type>;
  using Properties =
      detail::PropertyList<typename detail::Concat<typename Members::Properties...>::Type>;

  static constexpr std::uint32_t kRoot = std::is_void_v<Base> ? kRootClass : 0;
  static constexpr std::uint32_t kStructors =
      Ivars::kConstructs ? kHasCxxStructors
                         : (Ivars::kDestructs ? kHasCxxStructors | kHasCxxDestructorOnly : 0);

  static inline constinit ClassRo classRo = [] {
    ClassRo ro{};
    ro.flags = kRoot | kStructors;
    ro.instanceStart = static_cast<std::uint32_t>(detail::dataSize<Base>());
    ro.instanceSize = Ivars::kLayout.end;
    ro.name = kStored<Name>.text;
    ro.methods = InstanceMethods::address();
    ro.ivars = Ivars::address();
    ro.properties = Properties::address();
    return ro;
  }();

  static inline constinit ClassRo metaclassRo = [] {
    ClassRo ro{};
    ro.flags = kMetaClass | kRoot;
    ro.instanceStart = sizeof(objc_class);
    ro.instanceSize = sizeof(objc_class);
    ro.name = kStored<Name>.text;
    ro.methods = ClassMethods::address();
    return ro;
  }();
};

/// All metadata of a category on a class that T mirrors.
template <FixedString Name, class... Members>
struct CategoryDefinition {
  using InstanceMethods =
      detail::MethodList<typename detail::Concat<typename Members::InstanceMethods...>::Type>;
  using ClassMethods =
      detail::MethodList<typename detail::Concat<typename Members::ClassMethods...>::Type>;

  static constexpr CategoryData make(Class cls) {
    return {kStored<Name>.text,      cls,     InstanceMethods::address(),
            ClassMethods::address(), nullptr, nullptr};
  }
};

}  // namespace objc

#define OBJC_DEFINE_CLASS_(Name, Visibility, MetaIsa, MetaSuper, Super, ...)                       \
  OBJC_DECLARE_CLASS_SYMBOLS_(Name, Visibility)                                                    \
  constinit objc_class objc_metaclass_##Name{MetaIsa, MetaSuper, &_objc_empty_cache, nullptr,      \
                                             &objc::Definition<#Name, __VA_ARGS__>::metaclassRo};  \
  constinit objc_class objc_class_##Name{&objc_metaclass_##Name, Super, &_objc_empty_cache,        \
                                         nullptr, &objc::Definition<#Name, __VA_ARGS__>::classRo}; \
  OBJC_CLASS_LIST static constinit objc_class* objc_listed_##Name = &objc_class_##Name;

#define OBJC_SUBCLASS_(Name, Visibility, SuperAttributes, SuperName, ...)                     \
  OBJC_DECLARE_CLASS_SYMBOLS_(NSObject, )                                                     \
  OBJC_DECLARE_CLASS_SYMBOLS_(SuperName, SuperAttributes)                                     \
  OBJC_DEFINE_CLASS_(Name, Visibility, &objc_metaclass_NSObject, &objc_metaclass_##SuperName, \
                     &objc_class_##SuperName, __VA_ARGS__)

/// A class private to its binary: struct, superclass, then the members of its table.
#define OBJC_CLASS(T, Super, ...) \
  OBJC_SUBCLASS_(T, OBJC_HIDDEN, , Super, T, Super __VA_OPT__(, ) __VA_ARGS__)

/// A class that other binaries may link against.
#define OBJC_EXPORTED_CLASS(T, Super, ...) \
  OBJC_SUBCLASS_(T, OBJC_EXPORTED, , Super, T, Super __VA_OPT__(, ) __VA_ARGS__)

/// A class whose superclass may be missing in a process: then this class does not exist there
/// either.
#define OBJC_CLASS_IF_SUPERCLASS(T, Super, ...) \
  OBJC_SUBCLASS_(T, OBJC_HIDDEN, OBJC_WEAK, Super, T, Super __VA_OPT__(, ) __VA_ARGS__)

/// The same for a class that other binaries may link against.
#define OBJC_EXPORTED_CLASS_IF_SUPERCLASS(T, Super, ...) \
  OBJC_SUBCLASS_(T, OBJC_EXPORTED, OBJC_WEAK, Super, T, Super __VA_OPT__(, ) __VA_ARGS__)

/// A class whose implementation is a different struct from the view of its name, like the
/// platform's own classes: name, superclass's name, struct, struct of the superclass, members.
#define OBJC_CLASS_NAMED(Name, SuperName, T, Base, ...) \
  OBJC_SUBCLASS_(Name, OBJC_EXPORTED, , SuperName, T, Base __VA_OPT__(, ) __VA_ARGS__)

/// The same for a class that is private to its binary.
#define OBJC_PRIVATE_CLASS_NAMED(Name, SuperName, T, Base, ...) \
  OBJC_SUBCLASS_(Name, OBJC_HIDDEN, , SuperName, T, Base __VA_OPT__(, ) __VA_ARGS__)

/// The same for a class that others may link against, and whose superclass may be missing.
#define OBJC_CLASS_NAMED_IF_SUPERCLASS(Name, SuperName, T, Base, ...) \
  OBJC_SUBCLASS_(Name, OBJC_EXPORTED, OBJC_WEAK, SuperName, T, Base __VA_OPT__(, ) __VA_ARGS__)

/// A root class: it is the superclass of its own metaclass.
#define OBJC_ROOT_CLASS(Name, T, ...)                                                             \
  OBJC_DEFINE_CLASS_(Name, OBJC_EXPORTED, &objc_metaclass_##Name, &objc_class_##Name, nullptr, T, \
                     void __VA_OPT__(, ) __VA_ARGS__)

#define OBJC_CATEGORY_(ClassName, Name, Attributes, ...)                                         \
  OBJC_DECLARE_CLASS_SYMBOLS_(ClassName, Attributes)                                             \
  static constinit objc::CategoryData objc_category_##ClassName##_##Name =                       \
      objc::CategoryDefinition<#Name __VA_OPT__(, ) __VA_ARGS__>::make(&objc_class_##ClassName); \
  OBJC_CATEGORY_LIST static constinit objc::CategoryData* objc_listed_##ClassName##_##Name =     \
      &objc_category_##ClassName##_##Name;

/// A category: methods added to a class of another binary, or nothing if that class is missing.
#define OBJC_CATEGORY(ClassName, Name, ...) \
  OBJC_CATEGORY_(ClassName, Name, OBJC_WEAK __VA_OPT__(, ) __VA_ARGS__)

/// The same for a class of this binary.
#define OBJC_CATEGORY_OF_OWN(ClassName, Name, ...) \
  OBJC_CATEGORY_(ClassName, Name, __VA_OPT__(, ) __VA_ARGS__)
