#if defined(__aarch64__)

#include <array>
#include <cstdarg>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "Foundation/format.h"
#include "Foundation/log.h"
#include "Foundation/text.h"
#include "abi/variadic.h"
#include "platform/CoreFoundation.h"

// In functions.S: each adds the address of the unnamed arguments to the named ones.
extern "C" void varnix_NSLog();
extern "C" void varnix_CFLog();
extern "C" void varnix_logNotice(NSString* format, void* unnamed);
extern "C" void varnix_logLevel(std::int32_t level, CFStringRef format, void* unnamed);

namespace varnix::device {

namespace {

/// Linux's own list of arguments with every register used up.
std::string formatted(NSString* format, void* unnamed) {
  struct {
    void *stack, *generalTop, *vectorTop;
    int generalOffset, vectorOffset;
  } fields{unnamed, nullptr, nullptr, 0, 0};
  std::va_list arguments;
  static_assert(sizeof fields == sizeof arguments);
  std::memcpy(&arguments, &fields, sizeof fields);
  return host::format(host::text(format), arguments);
}

NSString* stringWithFormat(Class, SEL, NSString* format, void* unnamed) {
  return host::makeString(formatted(format, unnamed));
}

/// The method's named pointers, then those on the stack up to a nil, as arguments that are all
/// named: a caller and a variadic callee on Linux agree about those.
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
    using Entry = void* (*)(decltype(static_cast<void>(I), static_cast<void*>(nullptr))...);
    return reinterpret_cast<Entry>(&objc_msgSend)(all[I]...);
  }
};

template <size_t Named, size_t... I>
void* listEntry(std::index_sequence<I...>) {
  using Entry = void* (*)(decltype(static_cast<void>(I), static_cast<void*>(nullptr))...);
  Entry entry =
      &List<Named>::template send<decltype(static_cast<void>(I), static_cast<void*>(nullptr))...>;
  return reinterpret_cast<void*>(entry);
}

template <size_t Named>
VariadicMessage list() {
  return {listEntry<Named>(std::make_index_sequence<Named + 1>()), Named};
}

}  // namespace

void* variadicFunction(std::string_view name) {
  if (name == "NSLog") return reinterpret_cast<void*>(&varnix_NSLog);
  if (name == "CFLog") return reinterpret_cast<void*>(&varnix_CFLog);
  return nullptr;
}

VariadicMessage variadicMessage(std::string_view selector) {
  if (selector == "stringWithFormat:") return {reinterpret_cast<void*>(&stringWithFormat), 3};
  if (selector == "arrayWithObjects:" || selector == "dictionaryWithObjectsAndKeys:" ||
      selector == "appearanceWhenContainedIn:")
    return list<3>();
  if (selector == "initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:")
    return list<7>();
  return {};
}

}  // namespace varnix::device

using namespace varnix::device;

void varnix_logNotice(NSString* format, void* unnamed) {
  host::log(host::LogLevel::notice, formatted(format, unnamed));
}

void varnix_logLevel(std::int32_t level, CFStringRef format, void* unnamed) {
  host::log(static_cast<host::LogLevel>(level), formatted(format, unnamed));
}

#endif
