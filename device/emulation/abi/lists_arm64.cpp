#if defined(__aarch64__)

#include <array>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "abi/variadic.h"
#include "objc/runtime.h"

namespace varnix::device {

namespace {

/// Passes the method's named pointers, then those on the stack up to a nil, all as named arguments:
/// a caller and a variadic callee on Linux agree about those.
template <size_t Named>
class List {
 public:
  template <class... A>
  static void* send(A... named) {
    static_assert(sizeof...(A) == Named + 1);
    std::array<void*, Named + 1> given{named...};
    std::array<void*, kMost> all{};
    std::memcpy(all.data(), given.data(), Named * sizeof(void*));
    auto** unnamed = static_cast<void**>(given[Named]);
    void* last = all[Named - 1];
    for (size_t count = Named; last != nullptr; ++count) {
      if (count + 1 >= kMost) throw std::length_error("a list of too many arguments");
      all[count] = last = unnamed[count - Named];
    }
    return call(all, std::make_index_sequence<kMost>());
  }

 private:
  static constexpr size_t kMost = 40;

  template <size_t... I>
  static void* call(const std::array<void*, kMost>& all, std::index_sequence<I...>) {
    using Call = void* (*)(decltype(static_cast<void>(I), static_cast<void*>(nullptr))...);
    return reinterpret_cast<Call>(&objc_msgSend)(all[I]...);
  }
};

template <size_t Named, size_t... I>
void* listEntry(std::index_sequence<I...>) {
  using Call = void* (*)(decltype(static_cast<void>(I), static_cast<void*>(nullptr))...);
  Call call =
      &List<Named>::template send<decltype(static_cast<void>(I), static_cast<void*>(nullptr))...>;
  return reinterpret_cast<void*>(call);
}

/// The address of the unnamed arguments becomes one more named argument.
template <size_t Named>
void* list(void** registers, void* stack) {
  registers[Named] = stack;
  return listEntry<Named>(std::make_index_sequence<Named + 1>());
}

}  // namespace

void* listMessage(std::string_view selector, void** registers, void* stack) {
  if (selector == "arrayWithObjects:" || selector == "dictionaryWithObjectsAndKeys:" ||
      selector == "setWithObjects:" || selector == "appearanceWhenContainedIn:")
    return list<3>(registers, stack);
  if (selector == "initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:")
    return list<7>(registers, stack);
  return nullptr;
}

}  // namespace varnix::device

#endif
